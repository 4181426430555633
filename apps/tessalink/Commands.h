#pragma once

#include <string>
#include <vector>

#include "apps/tessalink/TemplateInput.h"

// The commands. Each returns an exit code, and throws ParseException, InputError,
// CFileException or std::bad_alloc for what it does not report itself.
namespace tessalink::cli {

struct ReportOptions {
    std::string templatePath;
    std::string outputPath;
    std::string variablesPath;  ///< empty: none
    std::string includeFolder;  ///< empty: the folder of the template
    Storage storage = Storage::detect;
};
int makeReport(const ReportOptions& options);

struct ScrambleOptions {
    std::string inputPath;
    std::string outputPath;
};
/// Scrambles or unscrambles: the key works both ways.
int scrambleFile(const ScrambleOptions& options);

struct CheckOptions {
    std::vector<std::string> templatePaths;
    std::string includeFolder;
    Storage storage = Storage::detect;
};
/// Names the first fault of each template and of what it includes.
int checkTemplates(const CheckOptions& options);
/// Prints as JSON what a template uses.
int listUses(const CheckOptions& options);

}  // namespace tessalink::cli
