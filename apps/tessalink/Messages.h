#pragma once

#include <string>
#include <string_view>

#include "core/InputError.h"
#include "report/ParseException.h"

namespace tessalink::cli {

// What the command line's exit codes mean.
inline constexpr int cSuccess = 0;
inline constexpr int cInputFault = 1;  ///< a fault in a template, variables file or norm table
inline constexpr int cUsage = 2;       ///< wrong usage, or trouble with a file

/// Print to standard error "FILE:LINE:COLUMN: error: MESSAGE" (with a note for each level of
/// includes), or "tessalink: MESSAGE" for a file that can't be used.
void printFault(const ParseException& fault);
void printFault(const InputError& fault);
void printTrouble(const char* message);
/// Prints what a command was asked for to standard output; returns the exit code.
int printResult(const std::string& text);
/// Prints "FILE:LINE:COLUMN: KIND: MESSAGE".
void printAt(const TextPlace& place, const char* kind, const CString& message);

/// A text of the file system, which may be in any encoding, as UTF-8.
std::string readableName(std::string_view text);

/// What options call the program's code page: "windows-1252".
std::string codePageWord();

}  // namespace tessalink::cli
