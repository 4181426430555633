#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// Labels of one line with inline switches of the font: in the text a backslash and a letter select
/// the font of what follows, "\n" the normal one, "\i" the italic, "\b" the bold, and "\s" the
/// symbol font. A backslash with any other letter is dropped together with it; two backslashes
/// print one.

/// Prints the label at (x, y) in the context's text alignment and returns the width printed. A
/// label without a backslash is printed in the current font, and 0 is returned: who needs its width
/// measures it.
///
/// Text before the first switch has the current font. A null `normal` is the current font; a null
/// `italic` or `bold` is derived from the normal font when the label needs it, and so is the symbol
/// font, always. Afterwards font and alignment are as before. Without a context: 0.
TESSALINK_API int PrintFormatted(CDC* dc, int x, int y, const CString& text, CFont* normal,
                                 CFont* italic, CFont* bold);

/// The sum of the widths of the label's runs, each in the font of the switch before it; no fonts
/// are derived, a null font leaves the one before. Two backslashes are measured as nothing. The
/// font is as it was afterwards.
TESSALINK_API int CalcFormattedWidth(CDC* dc, const CString& text, CFont* normal, CFont* italic,
                                     CFont* bold, CFont* symbol);
/// The same without a symbol font.
TESSALINK_API int CalcFormattedWidth(CDC* dc, const CString& text, CFont* normal, CFont* italic,
                                     CFont* bold);

namespace tessalink {

/// The last switch of a font in the label, as its own text ("\\b"); empty without one. A line that
/// continues the label starts with it.
TESSALINK_API CString lastFontSwitch(const CString& label);

}  // namespace tessalink
