#include "graphs/rtf/ReportPictures.h"

#include <algorithm>
#include <cmath>

#include "graphs/rtf/MetaFile.h"
#include "graphs/rtf/detail/PictureGroup.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/files/CFile.h"

namespace tessalink {

namespace {

using detail::PictureGroup;

void write(CFile& file, std::string_view text) {
    file.Write(text.data(), text.size());
}

void writeWithin(CFile& file, std::string_view place, const PictureGroup& picture) {
    write(file, place);
    writePicture(file, picture);
    write(file, detail::cPictureEnd);
}

std::vector<BYTE> pngOf(const MetaFile& picture, double width, double height,
                        const ReportPictures& pictures) {
    const auto size = pngSize(width, height, pictures.pngDpi);
    if (!size || !pictures.makePng) AfxThrowInvalidArgException();
    return pictures.makePng(picture.GetHandle(), size->cx, size->cy, pictures.pngDpi);
}

}  // namespace

std::optional<CSize> pngSize(double width, double height, int dpi) {
    const double columns = std::max(std::round(width * dpi), 1.0);
    const double rows = std::max(std::round(height * dpi), 1.0);
    // Comparisons with what is no number are false.
    const bool fits =
        columns <= cMaxPngSide && rows <= cMaxPngSide && columns * rows <= cMaxPngPixels;
    if (!fits || dpi < 1 || std::isnan(width) || std::isnan(height)) return std::nullopt;
    return CSize(static_cast<int>(columns), static_cast<int>(rows));
}

void savePictureAsRTF(const MetaFile& picture, CFile& file, double width, double height,
                      std::string_view text, const ReportPictures& pictures) {
    const PictureGroup metafile = {"emfblip", bytesOf(picture.GetHandle()), width, height, text};
    if (pictures.kinds == PictureKinds::Metafile) {
        return writeWithin(file, detail::cShownPicture, metafile);
    }
    const std::vector<BYTE> pixels = pngOf(picture, width, height, pictures);
    const PictureGroup png = {"pngblip", pixels, width, height, text};
    // Bare, since there are readers that pass over everything in \shppict.
    if (pictures.kinds == PictureKinds::Png) return writePicture(file, png);
    writeWithin(file, detail::cShownPicture, metafile);
    writeWithin(file, detail::cOtherPicture, png);
}

}  // namespace tessalink
