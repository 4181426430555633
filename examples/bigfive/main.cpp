#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "examples/bigfive/AnswersFile.h"
#include "examples/bigfive/BigFiveReport.h"
#include "platform/files/ModuleDir.h"
#include "platform/files/WholeFile.h"
#include "report/ParseException.h"

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

std::string escaped(std::string_view text) {
    static constexpr std::string_view plain = "\n\r\t\\";
    static constexpr std::string_view letters = "nrt\\";
    std::string result;
    for (const char ch : text) {
        const std::size_t i = plain.find(ch);
        if (i == std::string_view::npos) {
            result += ch;
        } else {
            result.append({'\\', letters[i]});
        }
    }
    return result;
}

// The shortest digits that give the number again.
std::string numberText(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

// "name TAB type TAB value" of one variable.
std::string variableLine(const CString& name, const VariantVar& value) {
    const auto line = [&name](const char* type, const std::string& text) {
        return std::string(name.GetString()) + "\t" + type + "\t" + text + "\n";
    };
    switch (value.GetType()) {
        case VariantVar::vtInt:
            return line("int", std::to_string(value.GetAsInt()));
        case VariantVar::vtDouble:
            return line("double", numberText(value.GetAsDouble()));
        default:
            return line("string", escaped(value.GetAsStr().GetString()));
    }
}

std::string variablesText(const Person& person) {
    VarTable vars;
    fillVariables(person, vars);
    std::vector<std::string> lines;
    for (POSITION position = vars.GetStartPosition(); position != nullptr;) {
        CString name;
        VariantVar value;
        vars.GetNextAssoc(position, name, value);
        lines.push_back(variableLine(name, value));
    }
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

void writeReport(BigFiveReport& report, BigFiveReport::Form form, CFile& output) {
    try {
        report.Create(output, form);
    } catch (const ParseException& fault) {
        const auto& place = fault.GetPlace();
        throw AnswersError(std::string(place.file.GetString()) + ":" + std::to_string(place.line) +
                           ":" + std::to_string(place.column) + ": error: " + fault.what());
    }
}

// All files are complete before the first of them gets its name.
void makeReports(const Options& options) {
    const Person person = readAnswers(options.answers);
    BigFiveReport report(person);
    tessalink::WholeFile full((options.out + "/bigfive_full.rtf").c_str());
    tessalink::WholeFile brief((options.out + "/bigfive_short.rtf").c_str());
    tessalink::WholeFile vars;
    if (!options.vars.empty()) {
        CFileException fault;
        if (!vars.Open(options.vars.c_str(), CFile::modeCreate, &fault)) throw fault;
        const std::string text = variablesText(person);
        vars.Write(text.data(), text.size());
    }
    writeReport(report, BigFiveReport::Full, full);
    writeReport(report, BigFiveReport::Short, brief);
    full.Commit();
    brief.Commit();
    if (!options.vars.empty()) vars.Commit();
}

int complain(int code, const char* what) {
    std::fprintf(stderr, "bigfive_report: %s\n", what);
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
    } catch (const AnswersError& fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return cInputFault;
    } catch (const UsageError& fault) {
        return complain(cTrouble, (std::string(fault.what()) + "; see --help").c_str());
    } catch (const std::exception& fault) {
        return complain(cTrouble, fault.what());
    }
}

}  // namespace
}  // namespace bigfive

int main(int argc, char** argv) {
    return bigfive::run({argv + 1, argv + argc});
}
