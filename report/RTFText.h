#pragma once

#include "platform/base/CString.h"
#include "platform/base/CStringArray.h"
#include "platform/base/Export.h"

/// Text functions for reports: escaping and scaling RTF, reading small integers that a person
/// typed, and filling arguments into messages. All are stateless. White space is that of ASCII;
/// integers wrap at 32 bits.

/// The text as RTF: a backslash before every backslash and brace, everything else as it is.
TESSALINK_API CString RTFEncode(const char* text);

/// Advances `pos` over white space.
TESSALINK_API void SkipBlanks(const char* text, int& pos);

/// Reads an integer at `pos`: blanks, a "-" with blanks after it, digits, blanks. Nonzero on
/// success; 0, with `pos` after the blanks and the sign, when no digit follows.
TESSALINK_API int ParseInt(const char* text, int& pos, int& value);

/// Reads the characters at `first` to `last`, both included, as digits between blanks, without a
/// sign. Nonzero when that is the whole field or the field is blank (`value` is then 0); on failure
/// `value` holds the digits so far. A field that reaches beyond the text
/// fails.
TESSALINK_API int ParseInt(const char* text, int first, int last, int& value);

/// The same, but a blank field sets `isBlank` to 1 and fails; otherwise `isBlank` is 0.
TESSALINK_API int ParseInt(const char* text, int first, int last, int& value, int& isBlank);

/// Multiplies the numbers of the RTF control words \fs, \fi, \li, \ri, \sa, \sb, \sl and \tx by
/// `factor`, truncating toward zero. The text must end in a delimiter: a number at the very end is
/// dropped.
TESSALINK_API void ScaleRTFText(double factor, CString& rtf);

/// Puts the string resource and a blank before each of the strings.
TESSALINK_API void PrefixStrings(unsigned int resourceId, CStringArray& strings);

/// Stores `text` with every "%1" replaced by the argument, searching from the start again after
/// each replacement: what the argument makes with its neighbors is replaced, too ("%11" with "10%"
/// gives "1010%"). Where that could go on without end, as the argument holds "%1" or begins with
/// "11" and ends in "%%", and where it would put in more than 64 MiB, each "%1" of `text` is
/// replaced once. `result` may be `text`; a null argument is an empty one.
TESSALINK_API void ReplaceTextA(CString& result, const CString& text, const char* argument);
/// The same with a string resource as the argument.
TESSALINK_API void ReplaceTextA(CString& result, const CString& text, unsigned int resourceId);
