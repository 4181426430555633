#include <optional>
#include <set>

#include "apps/tessalink/BrokenCommand.h"
#include "apps/tessalink/Commands.h"
#include "apps/tessalink/IncludeRules.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/VariablesInput.h"
#include "graphs/file/GraphFctTable.h"
#include "platform/files/WholeFile.h"
#include "report/FileParser.h"
#include "report/TemplateFile.h"

namespace tessalink::cli {

namespace {

/// What all parsers of a run share.
struct Run {
    VarTable& variables;
    GraphFctTable* graphs;  ///< null: none
    std::set<CString> skippedCalls = {};
    IncludeFolder includes = {};
};

/// A run whose host functions are the described graphs, and whose includes stay in their folder.
class ReportParser : public FileParser {
public:
    ReportParser(CFile& templateFile, CFile& output, int scrambled, Run& run)
        : FileParser(templateFile, output, run.variables, scrambled), m_run(run) {}

protected:
    int do_include(const CString& name) override {
        std::optional<TemplateFile> file;
        int scrambled = 1;
        try {
            const IncludedFile& include = m_run.includes.Find(name);
            scrambled = include.isScrambled;
            file.emplace(include.path);
        } catch (const IncludeFault& fault) {
            return handle_error(fault.what());
        } catch (const CFileException& error) {
            return handle_error(static_cast<const char*>(includeTrouble(name, error)));
        }
        return run_include(*file, scrambled);
    }

    int call_function(const CString& name) override {
        if (m_run.graphs && m_run.graphs->Exists(name)) return draw_graph(name);
        if (m_run.skippedCalls.insert(name).second) {
            const CString why = m_run.graphs ? "no graph has this name" : "no host functions here";
            printAt(statement_place(), "warning", why + ", so @CALL(" + name + ") is skipped");
        }
        return 1;
    }

    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& outputFile,
                                              int scrambled) override {
        return std::make_unique<ReportParser>(templateFile, outputFile, scrambled, m_run);
    }

private:
    /// A fault is told at its own place, then at that of the call.
    int draw_graph(const CString& name) {
        m_run.graphs->Attach(&output());
        try {
            return m_run.graphs->Call(name);
        } catch (const InputError& fault) {
            printFault(fault);
            return handle_error("Graph %s can't be drawn!", name);
        }
    }

    Run& m_run;
};

}  // namespace

int makeReport(const ReportOptions& options) {
    VarTable variables;
    readVariables(options.variables, variables);
    std::optional<GraphFile> file;
    std::optional<GraphFctTable> graphs;
    if (!options.graphsPath.empty()) {
        file = GraphFile::Read(*openInput(options.graphsPath));
        graphs.emplace(*file, variables,
                       GraphPictureOptions{cPictureDpi, options.hasTextAlternatives});
    }
    TemplateInput input(options.templatePath, options.storage);
    setIncludeFolder(options.templatePath, options.includeFolder);
    WholeFile output(options.outputPath.c_str());
    Run run = {variables, graphs ? &*graphs : nullptr};
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
