#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/base/Export.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/Geometry.h"

class CFile;
class MetaFile;

/// Pictures of reports for readers that show no metafiles.
namespace tessalink {

/// What a report has of a picture.
enum class PictureKinds {
    Metafile,  ///< lines and letters that any printer draws as finely as it can
    Png,       ///< pixels, which every reader shows
    Both       ///< the metafile, and for readers that don't know `\shppict` the PNG
};

/// The usual resolution of a report's PNG, in pixels per inch: sharp on screens, good in print.
inline constexpr int cReportPngDpi = 192;

/// The largest PNG: its longest side, and all of its pixels.
inline constexpr int cMaxPngSide = 16384;
inline constexpr double cMaxPngPixels = double{1u << 26};

/// Makes the PNG of a metafile: its frame fills so many pixels, over white. pngOf of tessalink::qt
/// and tessalink::win32 does that. What it throws passes through.
using PngMaker =
    std::function<std::vector<BYTE>(HENHMETAFILE picture, int width, int height, int dpi)>;

/// How pictures of reports are written.
struct ReportPictures {
    PictureKinds kinds = PictureKinds::Metafile;  ///< metafile, PNG or both
    int pngDpi = cReportPngDpi;                   ///< pixels of a PNG per inch
    PngMaker makePng = {};                        ///< needed for all kinds but Metafile
};

/// The pixels of a PNG of so many inches, at least 1 by 1; nothing when they are too many, and when
/// a length is no number.
TESSALINK_API std::optional<CSize> pngSize(double width, double height, int dpi);

/// Writes the picture in the kinds that are asked for, all in the same size in inches, with a text
/// alternative unless that is empty. For Metafile these are the bytes of savePictureAsRTF without
/// kinds. A PNG that is too large, or that nothing makes, raises CInvalidArgException before
/// anything is written; file faults pass through.
TESSALINK_API void savePictureAsRTF(const MetaFile& picture, CFile& file, double width,
                                    double height, std::string_view text,
                                    const ReportPictures& pictures);

}  // namespace tessalink
