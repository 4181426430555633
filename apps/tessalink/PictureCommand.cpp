#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/PictureModule.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/SvgDevice.h"
#include "platform/qt/QtImages.h"

namespace tessalink::cli {

namespace {

constexpr double cHundredthsPerInch = 2540;  // of a millimetre
constexpr double cMmPerInch = 25.4;
constexpr int cScreenDpi = 96;

struct DeletePicture {
    void operator()(HENHMETAFILE picture) const { DeleteEnhMetaFile(picture); }
};
using Picture = std::unique_ptr<EnhMetaFile, DeletePicture>;

Picture readPicture(const std::string& path) {
    constexpr std::size_t blockSize = 1u << 16;
    const auto input = openInput(path);
    std::vector<BYTE> bytes;
    for (std::size_t count = 1; count != 0 && bytes.size() <= cMaxMetafile;) {
        const std::size_t length = bytes.size();
        bytes.resize(length + blockSize);
        count = input->Read(bytes.data() + length, blockSize);
        bytes.resize(length + count);
    }
    return Picture(makeEnhMetaFile(std::move(bytes)));
}

std::string formatOf(const PictureOptions& options) {
    if (!options.format.empty()) return options.format;
    const std::string ending = std::filesystem::path(options.outputPath).extension();
    const auto known = std::find(cPictureFormats.begin(), cPictureFormats.end(),
                                 ending.empty() ? ending : ending.substr(1));
    if (known == cPictureFormats.end()) {
        throw std::runtime_error(options.outputPath +
                                 ": the name ends in none of .png, .pdf, .svg; add --format");
    }
    return *known;
}

/// The size of the frame at a resolution; nothing when the picture is empty. Pixels are those of a
/// screen unless asked otherwise, lines and curves keep the units in which they were recorded.
std::optional<PictureTarget> targetFor(const PictureOptions& options, const std::string& format,
                                       const ENHMETAHEADER& header) {
    const int recorded =
        static_cast<int>(std::lround(header.szlDevice.cx * cMmPerInch / header.szlMillimeters.cx));
    const int dpi = options.dpi.value_or(format == "png" ? cScreenDpi : std::max(1, recorded));
    const auto units = [dpi](LONG from, LONG to) {
        return std::round((static_cast<double>(to) - from) * dpi / cHundredthsPerInch);
    };
    const RECT& frame = header.rclFrame;
    const double width = units(frame.left, frame.right);
    const double height = units(frame.top, frame.bottom);
    if (frame.left >= frame.right || frame.top >= frame.bottom) return std::nullopt;
    const double longest = format == "png" ? cMaxImageSide : double{cMaxPageSide} * dpi;
    if (std::max(width, height) > longest) {
        throw std::runtime_error(options.inputPath + ": the picture is too large for --dpi " +
                                 std::to_string(dpi));
    }
    return PictureTarget{format.c_str(), std::max(1, static_cast<int>(width)),
                         std::max(1, static_cast<int>(height)), dpi};
}

std::vector<BYTE> svgOf(HENHMETAFILE picture, const PictureTarget& target) {
    SvgSheet sheet;
    sheet.width = target.width;
    sheet.height = target.height;
    sheet.dpi = target.dpi;
    SvgDevice device(sheet);
    CDC dc(device);
    PlayEnhMetaFile(&dc, picture, CRect(0, 0, target.width, target.height));
    const std::string text = device.Finish();
    if (text.empty()) throw std::runtime_error("the picture is too large for SVG");
    return {text.begin(), text.end()};
}

int refuse(const std::string& path, const char* why) {
    printTrouble((path + ": " + why).c_str());
    return cInputFault;
}

}  // namespace

int convertPicture(const PictureOptions& options) {
    const std::string format = formatOf(options);
    const Picture picture = readPicture(options.inputPath);
    if (!picture) return refuse(options.inputPath, "no enhanced metafile, or a damaged one");
    ENHMETAHEADER header;
    GetEnhMetaFileHeader(picture.get(), sizeof header, &header);
    const auto target = targetFor(options, format, header);
    if (!target) return refuse(options.inputPath, "the picture has no size");
    const std::vector<BYTE> bytes = format == "svg"
                                        ? svgOf(picture.get(), *target)
                                        : renderByModule(bytesOf(picture.get()), *target);
    WholeFile output(options.outputPath.c_str());
    output.Write(bytes.data(), bytes.size());
    output.Commit();
    return cSuccess;
}

}  // namespace tessalink::cli
