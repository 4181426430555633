#include "graphs/rtf/detail/PictureGroup.h"

#include <algorithm>
#include <array>

#include "graphs/rtf/MetaFile.h"
#include "graphs/rtf/PictureText.h"

namespace tessalink::detail {

namespace {

constexpr double cTwipsPerInch = 1440;
/// Bytes whose digits are written to a file at a time.
constexpr std::size_t cPiece = 32768;

unsigned unitsOf(double inches, double unitsPerInch) {
    return static_cast<unsigned>(rounded(inches * unitsPerInch));
}

void write(CFile& file, std::string_view text) {
    file.Write(text.data(), text.size());
}

}  // namespace

CString pictureStart(const PictureGroup& picture) {
    CString start;
    start.Format("\\%s\\picw%u\\pich%u\\picwgoal%u\\pichgoal%u\\sspicalign0 \r\n", picture.kind,
                 unitsOf(picture.width, cHundredthsPerInch),
                 unitsOf(picture.height, cHundredthsPerInch), unitsOf(picture.width, cTwipsPerInch),
                 unitsOf(picture.height, cTwipsPerInch));
    return "{\\pict" + pictureTextAsRTF(picture.text) + start;
}

void writePicture(CFile& file, const PictureGroup& picture) {
    write(file, pictureStart(picture).View());
    std::array<char, 2 * cPiece> digits;
    for (auto rest = picture.bytes; !rest.empty();) {
        const std::size_t count = std::min(rest.size(), cPiece);
        writeHexDigits(rest.data(), count, digits.data());
        file.Write(digits.data(), 2 * count);
        rest = rest.subspan(count);
    }
    write(file, cPictureEnd);
}

}  // namespace tessalink::detail
