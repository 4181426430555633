#include "apps/tessalink/PictureChoice.h"

#include <CLI/CLI.hpp>
#include <map>
#include <stdexcept>
#include <vector>

#include "apps/tessalink/PictureThread.h"

namespace tessalink::cli {

namespace {

constexpr int cHighestDpi = 2400;

const std::map<std::string, PictureKinds> cKinds = {
    {"emf", PictureKinds::Metafile}, {"png", PictureKinds::Png}, {"both", PictureKinds::Both}};

std::shared_ptr<PictureThread> startThread(PictureKinds kinds) {
    try {
        return std::make_shared<PictureThread>();
    } catch (const std::runtime_error& fault) {
        throw std::runtime_error(std::string("--pictures ") + pictureWord(kinds) + ": " +
                                 fault.what() +
                                 "; install it, or take --pictures emf, which needs nothing");
    }
}

}  // namespace

const char* pictureWord(PictureKinds kinds) {
    for (const auto& [word, named] : cKinds) {
        if (named == kinds) return word.c_str();
    }
    return "";
}

CLI::Option* addPictureKinds(CLI::App& command, PictureKinds& kinds) {
    const auto set = [&kinds](const std::string& word) { kinds = cKinds.at(word); };
    return command
        .add_option_function<std::string>("--pictures", set,
                                          "what a report has of each graph: emf (default: a "
                                          "metafile), png (for readers that show no metafiles) or "
                                          "both")
        ->check(CLI::IsMember({"emf", "png", "both"}));
}

CLI::Option* addPictureDpi(CLI::App& command, std::optional<int>& dpi, const std::string& text) {
    return command.add_option("--dpi", dpi, text)->check(CLI::Range(1, cHighestDpi));
}

ReportPictures reportPictures(const PictureChoice& choice) {
    if (choice.dpi && !choice.HasPng()) {
        throw std::runtime_error(
            "--dpi is for PNG in reports: add --pictures png or both, or leave it out");
    }
    ReportPictures pictures = {choice.kinds, choice.dpi.value_or(cReportPngDpi)};
    if (!choice.HasPng()) return pictures;
    pictures.makePng = [thread = startThread(choice.kinds)](HENHMETAFILE picture, int width,
                                                            int height, int dpi) {
        return thread->Render(bytesOf(picture), {"png", width, height, dpi});
    };
    return pictures;
}

}  // namespace tessalink::cli
