#pragma once

#include <functional>
#include <vector>

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

/// Pictures as whole files. What is drawn on the context that the caller gets becomes the picture,
/// over white; its size is in units, of which `dpi` make an inch. A QGuiApplication must exist.
///
/// A size or resolution below 1, or a size above cMaxImageSide (PNG) or cMaxPageSide (PDF), raises
/// CInvalidArgException, and what the drawing raises passes through. Then, and after a fault of the
/// file, which raises CFileException, a file that was there stays as it was.
namespace tessalink {

/// Draws a picture.
using DrawPicture = std::function<void(CDC&)>;

/// The longest sides, in units, and for PDF in inches.
inline constexpr int cMaxImageSide = 16384;
inline constexpr int cMaxPageSide = 200;  ///< the longest side of a page, in inches

/// A picture of so many pixels; its bytes are the same from run to run.
TESSALINK_API std::vector<BYTE> pngOf(int width, int height, int dpi, const DrawPicture& draw);
/// As pngOf, into a file.
TESSALINK_API void savePng(const char* path, int width, int height, int dpi,
                           const DrawPicture& draw);

/// One page of this size, of lines, curves and text. The file tells the time at which it was made.
TESSALINK_API std::vector<BYTE> pdfOf(int width, int height, int dpi, const DrawPicture& draw);
/// As pdfOf, into a file.
TESSALINK_API void savePdf(const char* path, int width, int height, int dpi,
                           const DrawPicture& draw);

}  // namespace tessalink
