#include <functional>
#include <map>
#include <stdexcept>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/PictureOutput.h"
#include "apps/tessalink/VariablesInput.h"
#include "graphs/file/GraphFile.h"
#include "graphs/file/GraphPicture.h"
#include "platform/files/CMemFile.h"

namespace tessalink::cli {

namespace {

using Bytes = std::vector<BYTE>;

/// A graph and how it is wanted.
struct Job {
    DescribedGraph& graph;
    const GraphOptions& options;
    std::string format;

    /// Pixels are those of a screen unless asked otherwise, lines are as fine as in print.
    int Dpi() const { return options.dpi.value_or(format == "png" ? cScreenDpi : cPictureDpi); }
    GraphPictureOptions Picture() const { return {Dpi(), options.hasTextAlternative}; }
    PictureTarget Target() const {
        const GraphSheet& sheet = graph.GetSheet();
        return pictureTarget(options.name, format, sheet.width, sheet.height, Dpi());
    }
};

Bytes metafileOf(const Job& job) {
    return graphAsMetafile(job.graph, job.Dpi());
}

template <std::string (*graphAs)(DescribedGraph&, const GraphPictureOptions&)>
Bytes textOf(const Job& job) {
    const std::string text = graphAs(job.graph, job.Picture());
    return {text.begin(), text.end()};
}

/// The resolution is that of the PNG when there is one.
Bytes documentOf(const Job& job) {
    GraphPictureOptions options = job.Picture();
    const PictureChoice choice = {job.options.pictures, job.options.dpi};
    if (choice.HasPng()) {
        options = {cPictureDpi, options.hasTextAlternative, reportPictures(choice)};
        const GraphSheet& sheet = job.graph.GetSheet();
        if (!pngSize(sheet.width, sheet.height, options.pictures.pngDpi)) return {};
    }
    CMemFile file;
    writeGraphDocument(job.graph, file, options);
    return {file.View().begin(), file.View().end()};
}

Bytes renderedOf(const Job& job) {
    const PictureTarget target = job.Target();
    return renderByModule(metafileOf(job), target);
}

Bytes pictureOf(const Job& job) {
    static const std::map<std::string, Bytes (*)(const Job&)> makers = {{"emf", metafileOf},
                                                                        {"svg", textOf<graphAsSvg>},
                                                                        {"pdf", textOf<graphAsPdf>},
                                                                        {"rtf", documentOf}};
    const bool byModule = needsModule(job.format, job.options.embedsFonts);
    Bytes bytes = byModule ? renderedOf(job) : makers.at(job.format)(job);
    if (bytes.empty()) throw std::runtime_error(job.options.name + ": the picture is too large");
    return bytes;
}

}  // namespace

int drawGraph(const GraphOptions& options) {
    const std::string format = pictureFormat(options.outputPath, options.format, cGraphFormats);
    if (options.pictures != PictureKinds::Metafile && format != "rtf") {
        throw std::runtime_error("--pictures is for RTF, and the output is " + format);
    }
    const GraphFile graphs = GraphFile::Read(*openInput(options.graphsPath));
    VarTable variables;
    readVariables(options.variables, variables);
    const auto graph = graphs.Make(options.name, variables);
    storePicture(options.outputPath, pictureOf({*graph, options, format}));
    return cSuccess;
}

}  // namespace tessalink::cli
