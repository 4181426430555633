#pragma once

#include <memory>

#include "apps/tessalink/ReportParser.h"
#include "report/coverage/ListenedParser.h"
#include "report/coverage/TemplateCoverage.h"

namespace tessalink::cli {

/// The parser of reports, whose coverage knows every include that it comes to.
class CoveredParser : public ListenedParser<ReportParser> {
public:
    CoveredParser(TemplateCoverage& coverage, CFile& templateFile, CFile& output, int scrambled,
                  ReportRun& run)
        : ListenedParser(coverage, templateFile, output, scrambled, run), m_coverage(coverage) {}

protected:
    void include_found(TemplateFile& file, int scrambled) override {
        m_coverage.AddTemplate(file, scrambled);
    }
    std::unique_ptr<FileParser> create_parser(CFile& templateFile, CFile& outputFile,
                                              int scrambled) override {
        return std::make_unique<CoveredParser>(m_coverage, templateFile, outputFile, scrambled,
                                               run());
    }

private:
    TemplateCoverage& m_coverage;
};

}  // namespace tessalink::cli
