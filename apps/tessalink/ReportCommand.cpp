#include <optional>

#include "apps/tessalink/BrokenCommand.h"
#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/ReportParser.h"
#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/VariablesInput.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

int makeReport(const ReportOptions& options) {
    const GraphPictureOptions pictures = {cPictureDpi, options.hasTextAlternatives,
                                          reportPictures(options.pictures)};
    VarTable variables;
    readVariables(options.variables, variables);
    std::optional<GraphFile> file;
    std::optional<GraphFctTable> graphs;
    if (!options.graphsPath.empty()) {
        file = GraphFile::Read(*openInput(options.graphsPath));
        graphs.emplace(*file, variables, pictures);
    }
    TemplateInput input(options.templatePath, options.storage);
    setIncludeFolder(options.templatePath, options.includeFolder);
    WholeFile output(options.outputPath.c_str());
    ReportRun run = {variables, graphs ? &*graphs : nullptr};
    int complete = 0;
    try {
        ReportParser parser(input.File(), output, input.IsScrambled(), run);
        complete = parser.Parse(nullptr);
    } catch (const ParseException& fault) {
        printFault(fault);
        noteBrokenCommand(input.File(), fault);
        return cInputFault;
    }
    // A run that ended at a write fault leaves it to the output to say what it was.
    output.Flush();
    if (!complete) {
        printTrouble("the report ended early; nothing was written");
        return cUsage;
    }
    output.Commit();
    return cSuccess;
}

}  // namespace tessalink::cli
