#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "examples/bigfive/AnswersFile.h"
#include "examples/bigfive/BigFiveReport.h"
#include "platform/files/ModuleDir.h"
#include "platform/files/WholeFile.h"
#include "report/ParseException.h"
#include "report/VariablesFile.h"

// Makes the full and the short Big-Five report from a file of answers.
namespace bigfive {
namespace {

constexpr int cSuccess = 0;
constexpr int cInputFault = 1;
constexpr int cTrouble = 2;

constexpr const char* cUsage =
    "usage: bigfive_report [--answers FILE] [--out DIR] [--vars FILE]\n"
    "\n"
    "Writes the Big-Five reports bigfive_full.rtf and bigfive_short.rtf.\n"
    "\n"
    "  --answers FILE  the answers (default: the example answers.tsv beside the program)\n"
    "  --out DIR       the folder for the reports, which must exist (default: the current folder)\n"
    "  --vars FILE     also write the report variables, for \"tessalink report --vars\"\n"
    "  --help          print this text\n"
    "  --version       print the version\n";

struct Options {
    std::string answers;
    std::string out = ".";
    std::string vars;
};

class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    const std::array<std::pair<std::string_view, std::string*>, 3> names = {
        {{"--answers", &options.answers}, {"--out", &options.out}, {"--vars", &options.vars}}};
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        const auto name = std::find_if(names.begin(), names.end(), [&](const auto& each) {
            return each.first == arguments[i];
        });
        if (name == names.end()) throw UsageError("unknown argument " + arguments[i]);
        if (i + 1 == arguments.size() || arguments[i + 1].empty()) {
            throw UsageError(arguments[i] + " needs a value");
        }
        *name->second = arguments[i + 1];
    }
    if (options.answers.empty()) options.answers = (GetModuleDir() + "/answers.tsv").GetString();
    return options;
}

void writeReport(BigFiveReport& report, BigFiveReport::Form form, CFile& output) {
    try {
        report.Create(output, form);
    } catch (const ParseException& fault) {
        const auto& place = fault.GetPlace();
        throw InputError(std::string(place.file.GetString()) + ":" + std::to_string(place.line) +
                         ":" + std::to_string(place.column) + ": error: " + fault.what());
    }
}

void openOutput(tessalink::WholeFile& file, const std::string& path, const char* option) {
    CFileException fault;
    if (file.Open(path.c_str(), CFile::modeCreate, &fault)) return;
    throw std::runtime_error(std::string(fault.what()) + " Name another place with " + option);
}

// All files are complete before the first of them gets its name.
void makeReports(const Options& options) {
    const Person person = readAnswers(options.answers);
    BigFiveReport report(person);
    tessalink::WholeFile full;
    tessalink::WholeFile brief;
    tessalink::WholeFile vars;
    openOutput(full, options.out + "/bigfive_full.rtf", "--out");
    openOutput(brief, options.out + "/bigfive_short.rtf", "--out");
    if (!options.vars.empty()) {
        openOutput(vars, options.vars, "--vars");
        fillVariables(person, report.Variables());
        tessalink::writeVariables(report.Variables(), vars);
    }
    writeReport(report, BigFiveReport::Full, full);
    writeReport(report, BigFiveReport::Short, brief);
    if (!options.vars.empty()) vars.Commit();
    full.Commit();
    brief.Commit();
}

int complain(int code, const std::string& what) {
    std::fprintf(stderr, "bigfive_report: %s\n", what.c_str());
    return code;
}

int run(const std::vector<std::string>& arguments) {
    const auto asks = [&](const char* option) {
        return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
    };
    try {
        if (asks("--help")) return std::fputs(cUsage, stdout) < 0 ? cTrouble : cSuccess;
        if (asks("--version")) return std::puts("bigfive_report 1.0") < 0 ? cTrouble : cSuccess;
        makeReports(parseOptions(arguments));
        return cSuccess;
    } catch (const InputError& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return cInputFault;
    } catch (const UsageError& fault) {
        return complain(cTrouble, std::string(fault.what()) + "; see --help");
    } catch (const std::exception& fault) {
        return complain(cTrouble, fault.what());
    }
}

}  // namespace
}  // namespace bigfive

int main(int argc, char** argv) {
    return bigfive::run({argv + 1, argv + argc});
}
