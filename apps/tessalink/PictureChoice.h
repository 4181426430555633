#pragma once

#include <memory>
#include <optional>
#include <string>

#include "graphs/rtf/ReportPictures.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace tessalink::cli {

/// What the user wants of the pictures of reports.
struct PictureChoice {
    PictureKinds kinds = PictureKinds::Metafile;
    std::optional<int> dpi;  ///< pixels of a PNG per inch; nothing: cReportPngDpi

    bool HasPng() const { return kinds != PictureKinds::Metafile; }
};

/// What `--pictures` calls the kinds.
const char* pictureWord(PictureKinds kinds);

/// The options `--pictures` and `--dpi`, the former of which is returned.
CLI::Option* addPictureKinds(CLI::App& command, PictureKinds& kinds);
CLI::Option* addPictureDpi(CLI::App& command, std::optional<int>& dpi, const std::string& text);

/// The pictures of reports; for PNG by the module, in a thread of its own, in which callers of
/// several threads take turns. Throws std::runtime_error when the choice makes no sense, and when
/// the module is not installed: make them before anything is written.
ReportPictures reportPictures(const PictureChoice& choice);

}  // namespace tessalink::cli
