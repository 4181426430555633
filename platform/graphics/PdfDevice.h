#pragma once

#include "platform/graphics/PictureDevice.h"

namespace tessalink {

/// Writes what is drawn as a PDF 1.4 of one page, as large as the sheet; viewers take at most 200
/// inches a side.
///
/// Texts are set in the base fonts that every viewer has: Helvetica for Arial, Times for Times New
/// Roman, Courier for Courier New, and Symbol, which has one style; other faces get Times when
/// their family has serifs, otherwise Helvetica. A character stands at most a quarter of a unit
/// from where it was placed, and texts can be selected and copied. No font is embedded, and nothing
/// tells when or where the picture was made.
///
/// With a title or a description the page is tagged as a figure, which screen readers announce by
/// the description. The page is compressed where the library was built with
/// TESSALINK_PDF_COMPRESSED.
class TESSALINK_API PdfDevice final : public PictureDevice {
public:
    /// CException when the program's code page is not 1252, whose letters alone the base fonts
    /// have.
    explicit PdfDevice(const PictureSheet& sheet);
};

}  // namespace tessalink
