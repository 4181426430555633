#pragma once

#include <string>
#include <vector>

#include "platform/base/Export.h"

namespace tessalink {

/// What a command line does first; returns its arguments, the program's name among them, in UTF-8.
///
/// Standard streams that are missing become empty ones that can't be written: a file that the
/// program opens must not become the one where messages go, and a lost result is noticed. They take
/// bytes as they are, and a console shows UTF-8. A limit of file sizes is a full disk: the write
/// fails.
TESSALINK_API std::vector<std::string> startProgram(int argc, char** argv);

}  // namespace tessalink
