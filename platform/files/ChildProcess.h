#pragma once

#include <string>
#include <vector>

#include "platform/base/Export.h"

namespace tessalink {

/// The path of a program in the folders of PATH; empty when there is none.
TESSALINK_API std::string findProgram(const std::string& name);

/// Runs a program, by its path and arguments, to its end, with nothing to read and its messages
/// thrown away. What interrupts this program lets it finish what is under way. CFileException when
/// it can't be started; how it ends is not told.
TESSALINK_API void runQuietly(std::vector<std::string> arguments);

}  // namespace tessalink
