#pragma once

namespace tessalink::test {

/// Names of files are the same in small and big letters, an open file keeps its name, and there are
/// no permissions for owner, group and others.
inline constexpr bool cIsWindows =
#ifdef _WIN32
    true;
#else
    false;
#endif

/// Changes a variable of the environment, or removes it.
void setVariable(const char* name, const char* value);
void removeVariable(const char* name);

/// The most memory that the process has had so far, in KiB.
long peakMemory();

}  // namespace tessalink::test
