#pragma once

namespace tessalink::test {

/// Changes a variable of the environment, or removes it.
void setVariable(const char* name, const char* value);
void removeVariable(const char* name);

/// The most memory that the process has had so far, in KiB.
long peakMemory();

}  // namespace tessalink::test
