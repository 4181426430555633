#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>
#include <new>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apps/tessalink/Arguments.h"
#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/batch/BatchArguments.h"
#include "apps/tessalink/preview/PreviewArguments.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "platform/base/CodePage.h"
#include "platform/base/HostServices.h"
#include "platform/files/CFileException.h"
#include "platform/files/ProgramStart.h"

namespace tessalink::cli {

namespace {

constexpr const char* cEmbedFontsText = "PDF with its fonts in it; needs the package tessalink-qt";
constexpr const char* cVariablesText =
    "variables: lines of name TAB type (int, double, string: RTF, text: plain) TAB value, in ";
constexpr const char* cRawText = "variables with the raw scores, in ";
constexpr const char* cEncodingText = " unless --encoding or a byte-order mark says UTF-8; - ";
constexpr const char* cCodePageOption = "--code-page";
constexpr const char* cCodePageText =
    "before the command: what texts are in that are not UTF-8, 1250 to 1254 or 1257 (default: "
    "1252)";

/// What to run once the arguments are understood.
using Command = std::function<int()>;

/// Standard input can be one of the inputs only.
void expectOneStandardInput(
    std::initializer_list<std::pair<const char*, const std::string*>> inputs) {
    const char* first = nullptr;
    for (const auto& [name, path] : inputs) {
        if (*path != cStandardStream) continue;
        if (first) {
            throw CLI::ValidationError(name,
                                       std::string("standard input is the ") + first + " already");
        }
        first = name;
    }
}

void addVariables(CLI::App& command, VariablesSource& source) {
    addEncoding(command, source,
                command.add_option(
                    "--vars", source.path,
                    cVariablesText + codePageName() + cEncodingText + "reads standard input"));
}

void addReport(CLI::App& app, ReportOptions& options, Command& command) {
    CLI::App* report = app.add_subcommand("report", "Write the report that a template describes");
    report->add_option("template", options.templatePath, cTemplateText)->required();
    report->add_option("-o,--output", options.outputPath, "the report; - is standard output")
        ->required();
    addVariables(*report, options.variables);
    addReportMaking(*report, options);
    report->callback([&] {
        expectOneStandardInput({{"template", &options.templatePath},
                                {"--vars", &options.variables.path},
                                {"--graphs", &options.graphsPath}});
        command = [&] { return makeReport(options); };
    });
}

void addScramble(CLI::App& app, const char* name, const char* text, ScrambleOptions& options,
                 Command& command) {
    CLI::App* scramble = app.add_subcommand(name, text);
    scramble->add_option("input", options.inputPath, "the file to read; - is standard input")
        ->required();
    scramble->add_option("output", options.outputPath, "the file to write; - is standard output")
        ->required();
    scramble->callback([&] { command = [&] { return scrambleFile(options); }; });
}

void addCheck(CLI::App& app, CheckOptions& options, Command& command) {
    CLI::App* check =
        app.add_subcommand("check", "Tell every fault of each template, without running it");
    check->add_option("template", options.templatePaths, cTemplateText)->required();
    check->add_option("--include-dir", options.includeFolder, cIncludeFolderText);
    addStorage(*check, options.storage);
    static const std::map<std::string, FaultFormat> formats = {
        {"text", FaultFormat::text}, {"json", FaultFormat::json}, {"sarif", FaultFormat::sarif}};
    check
        ->add_option_function<std::string>(
            "--format", [&](const std::string& name) { options.format = formats.at(name); },
            "text on standard error (default); json or sarif on standard output")
        ->check(CLI::IsMember({"text", "json", "sarif"}));
    check->callback([&] { command = [&] { return checkTemplates(options); }; });
}

void addVars(CLI::App& app, CheckOptions& options, Command& command) {
    CLI::App* vars = app.add_subcommand(
        "vars", "List as JSON the variables, host functions and includes that a template uses");
    vars->add_option("template", options.templatePaths, cTemplateText)->required()->expected(1);
    vars->add_option("--include-dir", options.includeFolder, cIncludeFolderText);
    addStorage(*vars, options.storage);
    vars->callback([&] { command = [&] { return listUses(options); }; });
}

void addTidy(CLI::App& app, TidyOptions& options, Command& command) {
    CLI::App* tidy = app.add_subcommand(
        "tidy", "Put commands of a template together that a word processor has parted");
    tidy->add_option("template", options.templatePath, cTemplateText)->required();
    CLI::Option* output =
        tidy->add_option("-o,--output", options.outputPath, "the template; - is standard output");
    CLI::Option* inPlace =
        tidy->add_flag("--in-place", options.isInPlace, "change the template itself");
    tidy->add_flag_callback(
            "--check", [] {}, "only tell what would change (default)")
        ->excludes(output, inPlace);
    inPlace->excludes(output);
    addVariables(*tidy, options.variables);
    tidy->callback([&] {
        expectOneStandardInput(
            {{"template", &options.templatePath}, {"--vars", &options.variables.path}});
        if (options.isInPlace && options.templatePath == cStandardStream) {
            throw CLI::ValidationError("--in-place", "standard input can't be changed");
        }
        if (options.isInPlace) options.outputPath = options.templatePath;
        command = [&] { return tidyTemplate(options); };
    });
}

void addScore(CLI::App& app, ScoreOptions& options, Command& command) {
    constexpr double lowest = 1;
    constexpr double highest = 99.99;
    CLI::App* score =
        app.add_subcommand("score", "Look up raw scores in a norm table, for a report");
    addEncoding(*score, options.raw,
                score
                    ->add_option("raw", options.raw.path,
                                 cRawText + codePageName() + cEncodingText + "is standard input")
                    ->required());
    score
        ->add_option("--norms", options.normsPath,
                     "the norm table, CSV in UTF-8; - is standard input")
        ->required();
    score
        ->add_option("-o,--output", options.outputPath,
                     "the variables and the standard scores; - is standard output")
        ->required();
    CLI::Option* age =
        score->add_option("--age", options.age, "the age in years:months, or in whole years");
    score->add_option("--birth", options.birth, "the date of birth, YYYY-MM-DD or MM/DD/YYYY")
        ->excludes(age);
    score->add_option("--test", options.test, "the date of testing, likewise, or today")
        ->excludes(age);
    score->add_option("--key", options.keys, "NAME=VALUE: the person's value of a key, in UTF-8")
        ->allow_extra_args(false);
    score
        ->add_option("--confidence", options.confidence,
                     "also the confidence intervals of so many percent, by the reliability")
        ->check(CLI::Range(lowest, highest))
        ->check([](const std::string& text) {  // neither above the highest nor below the lowest
            const bool isNumber = !std::isnan(std::strtod(text.c_str(), nullptr));
            return isNumber ? std::string() : "Value " + text + " is not a number";
        });
    score->callback([&] {
        expectOneStandardInput(
            {{"raw scores", &options.raw.path}, {"--norms", &options.normsPath}});
        command = [&] { return scoreRaws(options); };
    });
}

void addAge(CLI::App& app, AgeOptions& options, Command& command) {
    CLI::App* age = app.add_subcommand("age", "Print the age at testing");
    age->add_option("birth", options.birth, "the date of birth, YYYY-MM-DD or MM/DD/YYYY")
        ->required();
    age->add_option("test", options.test, "the date of testing, likewise, or today")->required();
    age->add_flag("--local", options.isLocal, "the locale's form of dates instead of MM/DD/YYYY");
    age->callback([&] { command = [&] { return printAge(options); }; });
}

void addPicture(CLI::App& app, PictureOptions& options, Command& command) {
    CLI::App* picture =
        app.add_subcommand("picture", "Convert an enhanced metafile to PNG, PDF or SVG");
    picture->add_option("input", options.inputPath, "the metafile; - is standard input")
        ->required();
    picture->add_option("output", options.outputPath, "the file to write; - is standard output")
        ->required();
    picture
        ->add_option("--format", options.format,
                     "png, pdf or svg (default: what the name of the output ends in)")
        ->check(CLI::IsMember(cPictureFormats));
    addPictureDpi(*picture, options.dpi,
                  "pixels, or units of lines, per inch (default: 96 for PNG, else those of the "
                  "recording)");
    picture->add_flag("--embed-fonts", options.embedsFonts, cEmbedFontsText);
    picture->callback([&] { command = [&] { return convertPicture(options); }; });
}

void addGraph(CLI::App& app, GraphOptions& options, Command& command) {
    CLI::App* graph = app.add_subcommand("graph", "Draw a graph that a file describes");
    graph->add_option("file", options.graphsPath, cGraphsText)->required();
    graph->add_option("name", options.name, "the name of the graph")->required();
    addVariables(*graph, options.variables);
    graph->add_option("-o,--output", options.outputPath, "the picture; - is standard output")
        ->required();
    graph
        ->add_option("--format", options.format,
                     "emf, svg, png, pdf or rtf (default: what the name of the output ends in)")
        ->check(CLI::IsMember(cGraphFormats));
    addPictureDpi(
        *graph, options.dpi,
        "pixels, or units of lines, per inch (default: 96 for PNG, in RTF 192, else 600)");
    addPictureKinds(*graph, options.pictures);
    graph->add_flag("--alt", options.hasTextAlternative, cTextAlternativeText);
    graph->add_flag("--embed-fonts", options.embedsFonts, cEmbedFontsText);
    graph->callback([&] {
        expectOneStandardInput(
            {{"graph file", &options.graphsPath}, {"--vars", &options.variables.path}});
        command = [&] { return drawGraph(options); };
    });
}

/// Runs a command and turns what it throws into a message and an exit code.
int guarded(const Command& command) {
    try {
        return command();
    } catch (const ParseException& fault) {
        printFault(fault);
        return cInputFault;
    } catch (const InputError& fault) {
        printFault(fault);
        return cInputFault;
    } catch (const std::bad_alloc&) {
        printTrouble("out of memory");
    } catch (const std::exception& error) {
        printTrouble(error.what());
    }
    return cUsage;
}

int run(std::vector<std::string> arguments) {
    CLI::App app("Reports, scores and graphs for psychological assessments.", "tessalink");
    app.set_version_flag("--version", "tessalink " TESSALINK_VERSION);
    app.require_subcommand(1);
    std::string ignored;
    app.add_option(cCodePageOption, ignored, cCodePageText);
    app.allow_windows_style_options(false);  // "/folder/file" is a path
    ReportOptions report;
    ScrambleOptions scramble;
    CheckOptions check;
    TidyOptions tidy;
    ScoreOptions score;
    AgeOptions age;
    PictureOptions picture;
    GraphOptions graph;
    BatchArguments batch;
    PreviewOptions preview;
    QuestionnaireOptions questionnaire;
    Command command;
    const std::pair<std::string_view, std::function<void()>> commands[] = {
        {"report", [&] { addReport(app, report, command); }},
        {"scramble",
         [&] {
             addScramble(app, "scramble", "Store a template as the library reads it", scramble,
                         command);
         }},
        {"unscramble",
         [&] {
             addScramble(app, "unscramble", "Turn a stored template back into plain text", scramble,
                         command);
         }},
        {"check", [&] { addCheck(app, check, command); }},
        {"vars", [&] { addVars(app, check, command); }},
        {"tidy", [&] { addTidy(app, tidy, command); }},
        {"score", [&] { addScore(app, score, command); }},
        {"age", [&] { addAge(app, age, command); }},
        {"picture", [&] { addPicture(app, picture, command); }},
        {"graph", [&] { addGraph(app, graph, command); }},
        {"preview", [&] { addPreview(app, preview, command); }},
        {"batch", [&] { addBatch(app, batch, command); }},
        {"questionnaire", [&] { addQuestionnaire(app, questionnaire, command); }}};
    // A program that describes the one command that is meant starts in less time.
    const auto* const meant = std::find_if(
        std::begin(commands), std::end(commands),
        [&](const auto& one) { return arguments.size() > 1 && one.first == arguments[1]; });
    for (const auto& one : commands) {
        if (meant == std::end(commands) || one.first == meant->first) one.second();
    }
    try {
        // The option parser takes them from the back.
        arguments.erase(arguments.begin(), arguments.begin() + (arguments.empty() ? 0 : 1));
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        std::ostringstream result;
        const bool good = app.exit(error, result, std::cerr) == 0;
        return good ? printResult(result.str()) : cUsage;
    }
    return guarded(command);
}

CodePage namedCodePage(const std::string& number) {
    const bool isShort =
        number.size() == 4 && number.find_first_not_of("0123456789") == std::string::npos;
    const std::optional<CodePage> page =
        isShort ? codePageOf(std::stoi(number)) : std::optional<CodePage>();
    if (page) return *page;
    throw std::runtime_error(cCodePageOption + (" " + number) +
                             ": name 1250, 1251, 1252, 1253, 1254 or 1257");
}

/// Takes `--code-page N` or `--code-page=N` from the front of the arguments, before the options'
/// descriptions are made, which name it.
std::optional<CodePage> takeCodePage(std::vector<std::string>& arguments) {
    if (arguments.size() < 2 || !arguments[1].starts_with(cCodePageOption)) return std::nullopt;
    const std::string rest = arguments[1].substr(std::strlen(cCodePageOption));
    if (!rest.empty() && rest[0] != '=') return std::nullopt;
    const std::size_t taken = rest.empty() ? 2 : 1;
    if (arguments.size() <= taken) return std::nullopt;  // the option parser tells what is missing
    const CodePage page = namedCodePage(rest.empty() ? arguments[2] : rest.substr(1));
    const auto first = arguments.begin() + 1;
    arguments.erase(first, first + static_cast<std::ptrdiff_t>(taken));
    return page;
}

/// Faults are printed with their cause once the run is over; the library's own boxes say less.
void setServices(std::optional<CodePage> page) {
    HostServices services = hostServices();
    services.messageBox = [](const char*, UINT) { return IDOK; };
    services.codePage = page;
    setHostServices(services);
}

}  // namespace

}  // namespace tessalink::cli

int main(int argc, char** argv) {
    std::vector<std::string> arguments = tessalink::startProgram(argc, argv);
    try {
        tessalink::cli::setServices(tessalink::cli::takeCodePage(arguments));
    } catch (const std::exception& fault) {
        tessalink::cli::printTrouble(fault.what());
        return tessalink::cli::cUsage;
    }
    return tessalink::cli::run(std::move(arguments));
}
