#pragma once

#include <map>
#include <optional>
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
///     Street<TAB>text<TAB>7 {rear} Main St.
///
/// A `string` is RTF and stored as it is; a `text` is plain and stored as escapeText makes it
/// (report/PlainText.h), so that it prints as it stands here. Both may have the escapes \n, \r, \t
/// and \\. Numbers are decimal, an int within 32 bits, a double finite. A name is a word of
/// letters, digits and "_" that does not start with a digit and is at most
/// FileScanner::cMaxCommandWord characters long. Lines end in LF or CR LF; empty lines are skipped.
///
/// Bytes are in the program's code page unless the file starts with the byte-order mark of UTF-8 or
/// the caller says that it is UTF-8. A character that the code page lacks is then a fault in a
/// `string` and becomes \uN with its nearest letter in a `text` (escapeUtf8).
namespace tessalink {

/// What is wrong with a variables file, and where.
class TESSALINK_API VariablesError : public InputError {
    DECLARE_DYNAMIC(VariablesError)

public:
    /// As the base class.
    using InputError::InputError;
};

/// The largest variables file that is read, in bytes.
inline constexpr std::size_t cMaxVariablesFile = std::size_t{512} * 1024 * 1024;

/// The encoding of a variables file without a byte-order mark.
enum class VariablesEncoding { CodePage, Utf8 };

/// Where the values of variables stand, by name.
using VariablePlaces = std::map<CString, TextPlace>;

/// Adds the variables of `file`, from its position on, to the table, and to `places`, when given,
/// where their values stand. Throws VariablesError at the first fault, a name that the file has
/// twice and a file that is too large included, and CFileException; the table then holds the
/// variables before it.
///
/// Returns a doubt of which a program should warn: where the first letter beyond ASCII stands in a
/// file that was read in the code page although all of its letters are well-formed UTF-8. Lines and
/// columns count as in every TextPlace, columns behind a byte-order mark.
TESSALINK_API std::optional<TextPlace> readVariables(
    CFile& file, VarTable& variables, VariablePlaces* places = nullptr,
    VariablesEncoding encoding = VariablesEncoding::CodePage);

/// Whether a variables file may have a variable of that name.
TESSALINK_API bool isVariableName(std::string_view name);
/// Whether "@Name" is a command of the template language in letters of either case, so that a
/// variable of that name can't be printed.
TESSALINK_API bool isCommandName(std::string_view name);

/// Writes the table's numbers and texts in its order, in the code page, each text as a `string`,
/// which keeps its escapes; empty and pointer variables, and a double that is not finite, have no
/// form in the file and raise VariablesError. A double comes back bit for bit.
TESSALINK_API void writeVariables(const VarTable& variables, CFile& file);

}  // namespace tessalink
