#pragma once

#include "report/ParseException.h"

class CFile;

namespace tessalink::cli {

/// When a fault comes from a command that a word processor has parted, prints a note that says so:
/// the one in which the fault is, or the last before it. `file` is the template that was read; what
/// the fault says of another file is looked up there. Whatever goes wrong meanwhile, no note is
/// printed.
void noteBrokenCommand(CFile& file, const ParseException& fault);

}  // namespace tessalink::cli
