#include "apps/tessalink/PictureOutput.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "platform/files/WholeFile.h"
#include "platform/qt/QtImages.h"

namespace tessalink::cli {

std::string pictureFormat(const std::string& outputPath, const std::string& named,
                          std::span<const std::string> known) {
    if (!named.empty()) return named;
    const std::string ending = std::filesystem::path(outputPath).extension().generic_string();
    const auto format =
        std::find(known.begin(), known.end(), ending.empty() ? ending : ending.substr(1));
    if (format != known.end()) return *format;
    std::string endings;
    for (const std::string& name : known) endings += (endings.empty() ? "." : ", .") + name;
    throw std::runtime_error(outputPath + ": the name ends in none of " + endings +
                             "; add --format");
}

bool needsModule(const std::string& format, bool embedsFonts) {
    if (embedsFonts && format != "pdf") {
        throw std::runtime_error("--embed-fonts is for PDF, and the output is " + format);
    }
    return embedsFonts || format == "png";
}

PictureTarget pictureTarget(const std::string& name, const std::string& format, double width,
                            double height, int dpi) {
    const double columns = std::round(width * dpi);
    const double rows = std::round(height * dpi);
    const double longest = format == "png" ? cMaxImageSide : double{cMaxPageSide} * dpi;
    if (std::max(columns, rows) > longest) {
        throw std::runtime_error(name + ": the picture is too large for --dpi " +
                                 std::to_string(dpi));
    }
    return {format.c_str(), std::max(1, static_cast<int>(columns)),
            std::max(1, static_cast<int>(rows)), dpi};
}

void storePicture(const std::string& path, std::span<const BYTE> bytes) {
    WholeFile output(path.c_str());
    output.Write(bytes.data(), bytes.size());
    output.Commit();
}

}  // namespace tessalink::cli
