#pragma once

#include <memory>
#include <set>

#include "apps/tessalink/IncludeRules.h"
#include "graphs/file/GraphFctTable.h"
#include "report/FileParser.h"
#include "report/TemplateFile.h"

namespace tessalink::cli {

/// What all parsers of a run share.
struct ReportRun {
    VarTable& variables;
    GraphFctTable* graphs;  ///< null: none
    std::set<CString> skippedCalls = {};
    IncludeFolder includes = {};
};

/// A run whose host functions are the described graphs, and whose includes stay in their folder.
class ReportParser : public FileParser {
public:
    ReportParser(CFile& templateFile, CFile& output, int scrambled, ReportRun& run)
        : FileParser(templateFile, output, run.variables, scrambled), m_run(run) {}

protected:
    int do_include(const CString& name) override;
    int call_function(const CString& name) override;
    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& outputFile,
                                              int scrambled) override;

    /// An include that is about to run.
    virtual void include_found(TemplateFile& /*file*/, int /*scrambled*/) {}

    ReportRun& run() { return m_run; }

private:
    int draw_graph(const CString& name);

    ReportRun& m_run;
};

}  // namespace tessalink::cli
