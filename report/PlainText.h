#pragma once

#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// Plain text (what people type: names, answers, comments) as the value of a variable of a report.
///
/// A report copies the texts of variables into RTF as they are, and a template may run them by
/// \@EVAL. So that a name prints as it was typed, and nothing in it is taken for RTF or for a
/// command, it is escaped once, when it becomes a variable:
///
///     variables.SetValue("Name", tessalink::escapeText("{Ann} @ home"));
///     // \{Ann\} \'40 home
///
/// Graphs that are described in files turn these escapes back, and so must code of a host that
/// shows such a value anywhere but in RTF. RTFEncode escapes less: its texts must not come near
/// \@EVAL.
namespace tessalink {

/// Text in the code page as RTF without commands: a backslash before `\`, `{` and `}`; `\'40`,
/// `\'5b` and `\'5d` for `@`, `[` and `]`; every other byte as it is, line ends too, which RTF
/// passes over.
TESSALINK_API CString escapeText(std::string_view plain);
/// Of what a form gives.
inline CString escapeText(const CString& plain) {
    return escapeText(plain.View());
}
/// A null text is an empty one.
inline CString escapeText(const char* plain) {
    return escapeText(CString(plain));
}

/// The same for text in UTF-8. A character that the code page lacks becomes `\uN` with the nearest
/// letter behind it (see nearestLetter), after a blank when that is a digit or a blank. N is the
/// character's number as a signed number of 16 bits; beyond U+FFFF there are two, those of the
/// surrogates, the second with "?" behind it. What is no UTF-8 becomes U+FFFD.
TESSALINK_API CString escapeUtf8(std::string_view utf8);

/// The plain text, in the code page, of a text with these escapes: the reverse of escapeText. Of
/// `\uN` the letter behind it is left, or the character itself where the code page has it. All
/// else, other RTF included, stays as it is.
TESSALINK_API CString unescapeText(std::string_view text);

}  // namespace tessalink
