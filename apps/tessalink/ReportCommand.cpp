#include <set>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/IncludeRules.h"
#include "apps/tessalink/Messages.h"
#include "platform/files/WholeFile.h"
#include "report/FileParser.h"
#include "report/VariablesFile.h"

namespace tessalink::cli {

namespace {

/// A run without host functions, whose includes stay in their folder.
class ReportParser : public FileParser {
public:
    ReportParser(CFile& templateFile, CFile& output, VarTable& variables, int scrambled,
                 std::set<CString>& skippedCalls)
        : FileParser(templateFile, output, variables, scrambled), m_skippedCalls(skippedCalls) {}

protected:
    int do_include(const CString& name) override {
        if (leavesFolder(name)) return handle_error(cIncludeOutside, name);
        try {
            return FileParser::do_include(name);
        } catch (const CFileException& error) {
            return handle_error(static_cast<const char*>(includeTrouble(name, error)));
        }
    }

    int call_function(const CString& name) override {
        if (m_skippedCalls.insert(name).second) {
            printAt(statement_place(), "warning",
                    "no host functions here, so @CALL(" + name + ") is skipped");
        }
        return 1;
    }

    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& outputFile,
                                              int scrambled) override {
        return std::make_unique<ReportParser>(templateFile, outputFile, variables(), scrambled,
                                              m_skippedCalls);
    }

private:
    std::set<CString>& m_skippedCalls;
};

}  // namespace

int makeReport(const ReportOptions& options) {
    VarTable variables;
    if (!options.variablesPath.empty()) {
        readVariables(*openInput(options.variablesPath), variables);
    }
    TemplateInput input(options.templatePath, options.storage);
    setIncludeFolder(options.templatePath, options.includeFolder);
    WholeFile output(options.outputPath.c_str());
    std::set<CString> skippedCalls;
    ReportParser parser(input.File(), output, variables, input.IsScrambled(), skippedCalls);
    const int complete = parser.Parse(nullptr);
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
