#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/tessalink/Commands.h"

namespace tessalink::cli {

struct PreviewOptions {
    /// How reports are made; of the paths that of the output is not used.
    ReportOptions report;
    std::vector<std::string> variablesPaths;  ///< empty: one report of values that are made up
    std::string outputFolder;                 ///< empty: no reports are kept
    bool hasPages = true;                     ///< reports as PDF and PNG, too
    std::string coverageFolder;               ///< empty: none
    std::optional<double> least;              ///< percent of parts that have to run
};
/// Makes reports of a template with values that are made up where none are given, shows their
/// pages, and tells which parts of the template ran.
int previewTemplate(const PreviewOptions& options);

}  // namespace tessalink::cli
