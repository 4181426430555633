#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "apps/tessalink/BrokenCommand.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateUses.h"
#include "apps/tessalink/VariablesInput.h"
#include "apps/tessalink/batch/RunFolder.h"
#include "apps/tessalink/preview/CoveredParser.h"
#include "apps/tessalink/preview/MadeUpVariables.h"
#include "apps/tessalink/preview/PreviewOptions.h"
#include "apps/tessalink/preview/PreviewPages.h"
#include "platform/files/CMemFile.h"
#include "platform/files/WholeFile.h"
#include "report/coverage/CoverageReport.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* cFolderName = ".tessalink-preview";

/// A report to make: its variables, and what its files are called.
struct PlannedReport {
    std::string name;
    std::unique_ptr<VarTable> variables;
};

/// One report for each variables file, called like it; without any, one called like the template.
/// All files are read, so that nothing is made when one is missing.
std::vector<PlannedReport> planReports(const PreviewOptions& options) {
    std::vector<PlannedReport> planned;
    if (options.variablesPaths.empty()) {
        planned.push_back({fs::path(options.report.templatePath).stem().generic_string(),
                           std::make_unique<VarTable>()});
    }
    std::set<std::string> names;
    for (const std::string& path : options.variablesPaths) {
        const std::string name =
            path == cStandardStream ? "stdin" : fs::path(path).stem().generic_string();
        if (!names.insert(name).second) {
            throw CException("--vars " + CString(std::string_view(path)) +
                             ": another file would be the report " +
                             CString(std::string_view(name)) + ".rtf, too: rename one of them.");
        }
        planned.push_back({name, std::make_unique<VarTable>()});
        readVariables({path, options.report.variables.encoding}, *planned.back().variables);
    }
    return planned;
}

/// A list of names: "Age, Name".
CString joined(const std::vector<CString>& names) {
    CString text;
    for (const CString& name : names) text += text.IsEmpty() ? name : ", " + name;
    return text;
}

class Preview {
public:
    explicit Preview(const PreviewOptions& options)
        : m_options(options), m_planned(planReports(options)) {
        m_pictures = {cPictureDpi, options.report.hasTextAlternatives,
                      reportPictures(options.report.pictures)};
        if (!options.report.graphsPath.empty()) {
            m_graphs = GraphFile::Read(*openInput(options.report.graphsPath));
        }
    }

    int Run() {
        if (const int code = read_template(); code != cSuccess) return code;
        int code = cSuccess;
        if (m_options.outputFolder.empty()) {
            code = make_reports(nullptr);
        } else {
            const RunFolder folder(m_options.outputFolder, cFolderName);
            code = make_reports(&folder);
        }
        return std::max(code, tell_coverage());
    }

private:
    /// Finds the variables and parts of the template and its includes.
    int read_template() {
        TemplateWalk walk(true);
        walk.NoteFiles(
            [this](CFile& file, int scrambled) { m_coverage.AddTemplate(file, scrambled); });
        CheckOptions check;
        check.templatePaths = {m_options.report.templatePath};
        check.includeFolder = m_options.report.includeFolder;
        check.storage = m_options.report.storage;
        walk.Read(check);
        m_needed = neededVariables(walk.Uses(),
                                   m_graphs ? m_graphs->GetVariables() : std::vector<CString>());
        return walk.Log().ExitCode();
    }

    int make_reports(const RunFolder* folder) {
        std::vector<std::string> made;
        int code = cSuccess;
        for (const PlannedReport& planned : m_planned) {
            m_coverage.BeginReport();
            CMemFile report;
            if (!make_report(planned, report)) {
                code = cInputFault;
                continue;
            }
            if (folder) folder->Store(planned.name + ".rtf", report.View(), "report");
            made.push_back(planned.name);
        }
        const bool hasPages = folder == nullptr || !m_options.hasPages || makePages(*folder, made);
        return hasPages ? code : cUsage;
    }

    /// Returns false for a report with a fault, which is printed.
    bool make_report(const PlannedReport& planned, CFile& report) {
        VarTable& variables = *planned.variables;
        const std::vector<CString> madeUp = makeUpVariables(m_needed, variables);
        if (!madeUp.empty()) {
            printTrouble((CString(planned.name) + ": made up: " + joined(madeUp)).GetString());
        }
        std::optional<GraphFctTable> graphs;
        if (m_graphs) graphs.emplace(*m_graphs, variables, m_pictures);
        ReportRun run = {variables, graphs ? &*graphs : nullptr};
        TemplateInput input(m_options.report.templatePath, m_options.report.storage);
        try {
            CoveredParser(m_coverage, input.File(), report, input.IsScrambled(), run)
                .Parse(nullptr);
            return true;
        } catch (const ParseException& fault) {
            printFault(fault);
            noteBrokenCommand(input.File(), fault);
        }
        return false;
    }

    /// The exit code that it leads to.
    int tell_coverage() const {
        if (m_options.coverageFolder.empty() && !m_options.least) return cSuccess;
        if (!m_options.coverageFolder.empty()) {
            store("coverage.html", coverageAsHtml(m_coverage));
            store("coverage.txt", coverageAsText(m_coverage));
        }
        const int code = printResult(partsThatNeverRan(m_coverage) + coverageSummary(m_coverage));
        if (code != cSuccess) return code;
        return m_coverage.Percent() < m_options.least.value_or(0) ? cInputFault : cSuccess;
    }

    void store(const char* name, const std::string& text) const {
        const fs::path folder = m_options.coverageFolder;
        std::error_code error;
        fs::create_directories(folder, error);
        checkSystem(error, folder);
        WholeFile file((folder / name).generic_string().c_str());
        file.Write(text.data(), text.size());
        file.Commit();
    }

    const PreviewOptions& m_options;
    std::vector<PlannedReport> m_planned;
    GraphPictureOptions m_pictures;
    std::optional<GraphFile> m_graphs;
    std::vector<NeededVariable> m_needed;
    TemplateCoverage m_coverage;
};

}  // namespace

int previewTemplate(const PreviewOptions& options) {
    return Preview(options).Run();
}

}  // namespace tessalink::cli
