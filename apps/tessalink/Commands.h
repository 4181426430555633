#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/tessalink/PictureChoice.h"
#include "apps/tessalink/TemplateInput.h"
#include "report/VariablesFile.h"

// The commands. Each returns an exit code, and throws ParseException, InputError,
// CFileException or std::bad_alloc for what it does not report itself.
namespace tessalink::cli {

/// A variables file that the user names.
struct VariablesSource {
    std::string path;                           ///< empty: none
    std::optional<VariablesEncoding> encoding;  ///< nothing: by the byte-order mark
};

struct ReportOptions {
    std::string templatePath;
    std::string outputPath;
    VariablesSource variables;
    std::string includeFolder;         ///< empty: the folder of the template
    std::string graphsPath;            ///< empty: none
    bool hasTextAlternatives = false;  ///< graphs say what they show
    PictureChoice pictures;
    Storage storage = Storage::detect;
};
int makeReport(const ReportOptions& options);

struct ScrambleOptions {
    std::string inputPath;
    std::string outputPath;
};
/// Scrambles or unscrambles: the key works both ways.
int scrambleFile(const ScrambleOptions& options);

/// How `check` tells what it finds.
enum class FaultFormat { text, json, sarif };
struct CheckOptions {
    std::vector<std::string> templatePaths;
    std::string includeFolder;
    Storage storage = Storage::detect;
    FaultFormat format = FaultFormat::text;
};
/// Tells every fault of each template and of what it includes.
int checkTemplates(const CheckOptions& options);
/// Prints as JSON what a template uses.
int listUses(const CheckOptions& options);

struct TidyOptions {
    std::string templatePath;
    std::string outputPath;  ///< empty: only told what would change
    bool isInPlace = false;  ///< nothing is written when nothing changes
    VariablesSource variables;
};
/// Puts commands together that a word processor has parted.
int tidyTemplate(const TidyOptions& options);

struct ScoreOptions {
    VariablesSource raw;
    std::string normsPath;
    std::string outputPath;
    // What goes before the variables of the raw file.
    std::optional<std::string> age;
    std::optional<std::string> birth;
    std::optional<std::string> test;
    std::vector<std::string> keys;     ///< NAME=VALUE
    std::optional<double> confidence;  ///< in percent
};
/// Writes the variables of a raw file with the standard scores of a norm table.
int scoreRaws(const ScoreOptions& options);

struct AgeOptions {
    std::string birth;
    std::string test;
    bool isLocal = false;  ///< dates are in the order of the user's locale
};
/// Prints the age at a day.
int printAge(const AgeOptions& options);

inline const std::vector<std::string> cPictureFormats = {"png", "pdf", "svg"};
struct PictureOptions {
    std::string inputPath;
    std::string outputPath;
    std::string format;      ///< empty: by the ending of the output
    std::optional<int> dpi;  ///< units per inch
    bool embedsFonts = false;
};
/// Converts an enhanced metafile.
int convertPicture(const PictureOptions& options);

inline const std::vector<std::string> cGraphFormats = {"emf", "svg", "png", "pdf", "rtf"};
struct GraphOptions {
    std::string graphsPath;
    std::string name;
    VariablesSource variables;
    std::string outputPath;
    std::string format;                              ///< empty: by the ending of the output
    std::optional<int> dpi;                          ///< units per inch
    PictureKinds pictures = PictureKinds::Metafile;  ///< in RTF
    bool hasTextAlternative = false;
    bool embedsFonts = false;
};
/// Draws a graph that a file describes.
int drawGraph(const GraphOptions& options);

}  // namespace tessalink::cli
