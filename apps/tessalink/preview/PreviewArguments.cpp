#include "apps/tessalink/preview/PreviewArguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "apps/tessalink/Arguments.h"

namespace tessalink::cli {

namespace {

constexpr double cWhole = 100;

void checkArguments(const PreviewOptions& options) {
    if (options.report.templatePath == cStandardStream) {
        throw CLI::ValidationError("template", "is read more than once: name a file");
    }
    const auto& variables = options.variablesPaths;
    if (options.report.graphsPath == cStandardStream &&
        std::find(variables.begin(), variables.end(), cStandardStream) != variables.end()) {
        throw CLI::ValidationError("--graphs", "standard input is the variables already");
    }
    if (options.outputFolder.empty() && options.coverageFolder.empty() && !options.least) {
        throw CLI::ValidationError("-o", "name a folder for reports, or --report-coverage one");
    }
}

}  // namespace

void addPreview(CLI::App& app, PreviewOptions& options, std::function<int()>& command) {
    CLI::App* preview = app.add_subcommand(
        "preview", "Show the pages of a template's reports, and which parts of it they use");
    ReportOptions& report = options.report;
    preview->add_option("template", report.templatePath, "a report template")->required();
    CLI::Option* variables =
        preview->add_option("--vars", options.variablesPaths,
                            "variables, a file for each report; what they lack is made up "
                            "(default: one report of values that are made up)");
    addEncoding(*preview, report.variables, variables);
    preview->add_option(
        "-o,--output", options.outputFolder,
        "the folder of the reports and their pages; it is made when it is not there");
    preview->add_flag_callback(
        "--no-pages", [&options] { options.hasPages = false; },
        "reports only, without PDF and PNG of them");
    preview->add_option("--report-coverage", options.coverageFolder,
                        "the folder of coverage.html and coverage.txt: the template, with what "
                        "never ran marked");
    preview
        ->add_option("--least", options.least,
                     "exit with 1 when less than so many percent of the parts ran")
        ->check(CLI::Range(0.0, cWhole));
    addReportMaking(*preview, report);
    preview->callback([&] {
        checkArguments(options);
        command = [&] { return previewTemplate(options); };
    });
}

}  // namespace tessalink::cli
