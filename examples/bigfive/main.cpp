// A host program that makes the Big-Five reports of one person: it scores the answers, fills the
// variables, and runs two templates through a report class of its own.

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "graphs/file/GraphPicture.h"
#include "platform/files/CMemFile.h"
#include "platform/files/ModuleDir.h"
#include "platform/files/WholeFile.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/QuestionnaireParser.h"
#include "questionnaire/ResponseTable.h"
#include "questionnaire/ScoreTable.h"
#include "report/FileBasedReport.h"
#include "report/VariablesFile.h"

namespace bigfive {
namespace {

using tessalink::InputError;
using tessalink::Questionnaire;

constexpr int cSuccess = 0;
constexpr int cInputFault = 1;
constexpr int cTrouble = 2;

constexpr const char* cUsage =
    "usage: bigfive_report [--answers TABLE] [--out DIR] [--vars FILE]\n"
    "\n"
    "Writes the Big-Five reports bigfive_full.rtf and bigfive_short.rtf.\n"
    "\n"
    "  --answers TABLE  the answers (CSV), of which the first person counts\n"
    "                   (default: responses.csv in the questionnaire's folder)\n"
    "  --out DIR        the folder for the reports, which must exist (default: the current one)\n"
    "  --vars FILE      also write the report's variables\n";

/// The report on one person. Its templates call the graphs by name, so that a function stands for
/// each of them.
class BigFiveReport : public FileBasedReport {
public:
    enum Form { Full = 0, Short = 1 };

    BigFiveReport(const Questionnaire& questionnaire, CString folder,
                  const tessalink::Respondent& person)
        : m_questionnaire(questionnaire), m_folder(std::move(folder)), m_person(person) {
        tessalink::Scorer(questionnaire).Score(person, m_scores);
        AddFct("Profile", &BigFiveReport::draw_profile);
        AddFct("ProfileLine", &BigFiveReport::draw_profile_line);
        AddFct("Circle", &BigFiveReport::draw_circle);
        AddFct("ScaleBar", &BigFiveReport::draw_scale_bar);
        AddFct("AnswerCounts", &BigFiveReport::draw_answer_counts);
    }

    /// The person's variables; those that the template of derived values makes, too.
    void FillVariables() {
        Variables().RemoveAll();
        fillVariables(m_questionnaire, m_person, m_scores, Variables());
        CFile definition(m_folder + "/derived.rtf", CFile::modeRead | CFile::shareDenyWrite);
        CMemFile thrownAway;
        std::unique_ptr<FileParser>(CreateParser(definition, thrownAway, Variables(), Functions()))
            ->Parse(nullptr);
    }
    void Create(CFile& output, Form form) {
        FillVariables();  // anew: a report may have changed them
        DoCreate(output, form, 0);
    }

protected:
    CString GetDefFilePath(int which) override {
        return m_folder + (which == Full ? "/full.rtf" : "/short.rtf");
    }
    FileParser* CreateParser(CFile& definition, CFile& output, VarTable& variables,
                             FctTable& functions) const override {
        return new tessalink::QuestionnaireParser(definition, output, variables, functions,
                                                  m_questionnaire, 0);
    }

private:
    void draw_profile(CFile& output, void*) { draw("Profile", output); }
    void draw_profile_line(CFile& output, void*) { draw("ProfileLine", output); }
    void draw_circle(CFile& output, void*) { draw("Circle", output); }
    void draw_scale_bar(CFile& output, void*) { draw("ScaleBar", output); }
    void draw_answer_counts(CFile& output, void*) { draw("AnswerCounts", output); }
    void draw(const char* name, CFile& output) {
        writeGraphAsRTF(*m_questionnaire.Graphs()->Make(name, Variables()), output,
                        tessalink::cReportPictures);
    }

    Questionnaire m_questionnaire;
    CString m_folder;
    tessalink::Respondent m_person;
    tessalink::Scores m_scores;
};

struct Options {
    std::string answers;
    std::string out = ".";
    std::string vars;
};

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        std::string* const value = arguments[i] == "--answers" ? &options.answers
                                   : arguments[i] == "--out"   ? &options.out
                                   : arguments[i] == "--vars"  ? &options.vars
                                                               : nullptr;
        if (value == nullptr || i + 1 == arguments.size()) throw std::runtime_error(cUsage);
        *value = arguments[i + 1];
    }
    return options;
}

tessalink::Respondent firstPerson(const std::string& path, const Questionnaire& questionnaire) {
    CFile file(path.c_str(), CFile::modeRead | CFile::shareDenyWrite);
    tessalink::ResponseTable table(file, questionnaire, {});
    tessalink::ResponseBlock block;
    std::vector<tessalink::RespondentRow> rows;
    if (table.ReadBlock(block)) {
        table.Parse(block, [&](tessalink::RespondentRow& row) { rows.push_back(std::move(row)); });
    }
    const tessalink::TextPlace place = {path.c_str(), rows.empty() ? 1 : rows.front().line, 1};
    if (rows.empty()) throw InputError(place, "the table has no person");
    if (const auto& failure = rows.front().failure) {
        throw InputError(place, (failure->column + ": " + failure->reason).c_str());
    }
    return rows.front().respondent;
}

/// All files are complete before the first of them gets its name.
void makeReports(const Options& options) {
    const CString folder = GetModuleDir() + "/questionnaire";
    const Questionnaire questionnaire = Questionnaire::Read(folder);
    const std::string standard = std::string(folder.View()) + "/responses.csv";
    BigFiveReport report(
        questionnaire, folder,
        firstPerson(options.answers.empty() ? standard : options.answers, questionnaire));
    tessalink::WholeFile full((options.out + "/bigfive_full.rtf").c_str());
    tessalink::WholeFile brief((options.out + "/bigfive_short.rtf").c_str());
    if (!options.vars.empty()) {
        tessalink::WholeFile vars(options.vars.c_str());
        report.FillVariables();
        tessalink::writeVariables(report.Variables(), vars);
        vars.Commit();
    }
    report.Create(full, BigFiveReport::Full);
    report.Create(brief, BigFiveReport::Short);
    full.Commit();
    brief.Commit();
}

/// Of a fault in a file with its place.
template <class Fault>
int complain(const Fault& fault) {
    std::fprintf(stderr, "%s: error: %s\n", fault.GetPlace().Format().GetString(), fault.what());
    return cInputFault;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) return std::puts(cUsage) < 0;
    try {
        makeReports(parseOptions(arguments));
        return cSuccess;
    } catch (const InputError& fault) {
        return complain(fault);
    } catch (const ParseException& fault) {
        return complain(fault);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "bigfive_report: %s\n", fault.what());
        return cTrouble;
    }
}

}  // namespace
}  // namespace bigfive

int main(int argc, char** argv) {
    return bigfive::run({argv + 1, argv + argc});
}
