#pragma once

#include <map>
#include <string_view>

#include "core/InputError.h"
#include "core/TextPlace.h"
#include "platform/base/Export.h"
#include "report/VarTable.h"

class CFile;

/// Variables of a report as a text file, one a line:
///
///     # a comment
///     Name<TAB>string<TAB>Ann Example\nsecond line
///     Age<TAB>int<TAB>34
///     Mean<TAB>double<TAB>3.25
///
/// Bytes are Windows-1252; a text may have the escapes \n, \r, \t and \\; lines end in LF or CR LF;
/// empty lines are skipped. A name is a word of letters, digits and "_" that does not start with a
/// digit and is at most FileScanner::cMaxCommandWord characters long. Numbers are decimal, an int
/// within 32 bits, a double finite.
namespace tessalink {

/// What is wrong with a variables file, and where.
class TESSALINK_API VariablesError : public InputError {
    DECLARE_DYNAMIC(VariablesError)

public:
    using InputError::InputError;
};

/// The largest variables file that is read, in bytes.
inline constexpr std::size_t cMaxVariablesFile = std::size_t{512} * 1024 * 1024;

/// Where the values of variables stand, by name.
using VariablePlaces = std::map<CString, TextPlace>;

/// Adds the variables of `file`, from its position on, to the table, and to `places`, when given,
/// where their values stand. Throws VariablesError at the first fault, a name that the file has
/// twice and a file that is too large included, and CFileException; the table then holds the
/// variables before it.
TESSALINK_API void readVariables(CFile& file, VarTable& variables,
                                 VariablePlaces* places = nullptr);

/// Whether a variables file may have a variable of that name.
TESSALINK_API bool isVariableName(std::string_view name);

/// Writes the table's numbers and texts in its order; empty and pointer variables, and a double
/// that is not finite, have no form in the file and raise VariablesError. A double comes back bit
/// for bit.
TESSALINK_API void writeVariables(const VarTable& variables, CFile& file);

}  // namespace tessalink
