#include "examples/bigfive/BigFiveReport.h"

#include <algorithm>
#include <array>
#include <vector>

#include "examples/bigfive/BigFiveGraphs.h"
#include "examples/bigfive/InterpersonalCircle.h"
#include "examples/bigfive/RtfRow.h"
#include "platform/files/ModuleDir.h"
#include "report/RTFText.h"

namespace bigfive {
namespace {

// The columns of the table of answers end here; behind them stand the boxes.
constexpr int cNumberEnd = 560;
constexpr int cStatementEnd = 6600;
constexpr int cDirectionEnd = 7098;
constexpr int cBoxWidth = 440;

// Places in the color table of the templates.
enum Color { eDark = 2, eLines = 4, eWhite = 8 };

std::string shade(Color color) {
    return "\\clcbpat" + std::to_string(color);
}

std::string textColor(Color color) {
    return "\\cf" + std::to_string(color) + " ";
}

std::string border(const char* side, int width, Color color) {
    return std::string("\\clbrdr") + side + "\\brdrs\\brdrw" + std::to_string(width) + "\\brdrcf" +
           std::to_string(color);
}

struct Pronouns {
    const char *he, *him, *his, *himself, *is, *does, *s;
};

const Pronouns& pronounsOf(Sex sex) {
    static constexpr std::array<Pronouns, 3> pronouns = {
        {{"she", "her", "her", "herself", "is", "does", "s"},
         {"he", "him", "his", "himself", "is", "does", "s"},
         {"they", "them", "their", "themselves", "are", "do", ""}}};
    return pronouns[static_cast<std::size_t>(sex)];
}

std::string dateText(const std::chrono::year_month_day& date) {
    static constexpr std::array months = {"January",   "February", "March",    "April",
                                          "May",       "June",     "July",     "August",
                                          "September", "October",  "November", "December"};
    return std::to_string(static_cast<unsigned>(date.day())) + " " +
           months[static_cast<unsigned>(date.month()) - 1] + " " +
           std::to_string(static_cast<int>(date.year()));
}

// "1st", "2nd", "3rd", "4th", "11th" and so on.
std::string ordinal(int number) {
    static constexpr std::array endings = {"th", "st", "nd", "rd"};
    const int last = number / 10 % 10 == 1 ? 0 : number % 10;
    return std::to_string(number) + endings[last < 4 ? static_cast<std::size_t>(last) : 0];
}

int longestRun(const Answers& answers) {
    int longest = 0;
    int run = 0;
    for (std::size_t i = 0; i < answers.size(); ++i) {
        const bool goes = i > 0 && answers[i] == answers[i - 1];
        run = answers[i] == cNoAnswer ? 0 : goes ? run + 1 : 1;
        longest = std::max(longest, run);
    }
    return longest;
}

int countAnswers(const Answers& answers, int answer) {
    return static_cast<int>(std::count(answers.begin(), answers.end(), answer));
}

void fillPerson(const Person& person, VarTable& vars) {
    const Pronouns& words = pronounsOf(person.sex);
    static constexpr std::array sexes = {"female", "male", "other"};
    vars.AddVar("Name", RTFEncode(person.name.c_str()));
    vars.AddVar("Sex", sexes[static_cast<std::size_t>(person.sex)]);
    vars.AddVar("Age", person.age);
    vars.AddVar("TestDate", dateText(person.date).c_str());
    vars.AddVar("he", words.he);
    vars.AddVar("him", words.him);
    vars.AddVar("his", words.his);
    vars.AddVar("himself", words.himself);
    vars.AddVar("is", words.is);
    vars.AddVar("does", words.does);
    vars.AddVar("s", words.s);
}

void fillAnswering(const Answers& answers, VarTable& vars) {
    const int missing = countAnswers(answers, cNoAnswer);
    vars.AddVar("Missing", missing);
    vars.AddVar("Answered", cItems - missing);
    vars.AddVar("MaxMissing", cMaxMissing);
    vars.AddVar("MiddleAnswers", countAnswers(answers, cMiddleAnswer));
    vars.AddVar("LongestRun", longestRun(answers));
}

void fillScale(const Scale& scale, const Score& score, VarTable& vars) {
    const auto add = [&](const char* name, const auto& value) {
        vars.AddVar((std::string(scale.code) + "_" + name).c_str(), value);
    };
    add("Name", scale.name);
    add("Raw", score.rawSum);
    add("Mean", score.mean);
    add("T", score.tScore);
    add("Low", score.low);
    add("High", score.high);
    add("Percentile", score.percentile);
    add("Ordinal", ordinal(score.percentile).c_str());
    add("Level", score.level);
    add("Range", levelName(score.level));
    add("Missing", score.missing);
    add("NormMean", scale.normMean);
    add("NormSd", scale.normSd);
    add("Error", scale.error);
}

void fillCircle(const CirclePlace& place, VarTable& vars) {
    for (std::size_t i = 0; i < cOctants; ++i) {
        const std::string code = "O" + std::to_string(i + 1);
        vars.AddVar((code + "_Name").c_str(), cOctantNames[i]);
        vars.AddVar((code + "_T").c_str(), place.tScores[i]);
    }
    const auto octant = static_cast<std::size_t>(place.octant);
    const std::size_t opposite = (octant + cOctants / 2) % cOctants;
    vars.AddVar("Octant", cOctantNames[octant]);
    vars.AddVar("OctantT", place.tScores[octant]);
    vars.AddVar("Opposite", cOctantNames[opposite]);
    vars.AddVar("OppositeT", place.tScores[opposite]);
    vars.AddVar("Angle", place.angle);
    vars.AddVar("Reach", place.reach);
    vars.AddVar("ShortReach", cShortReach);
}

void write(CFile& output, const std::string& text) {
    output.Write(text.data(), text.size());
}

}  // namespace

void fillVariables(const Person& person, VarTable& vars) {
    vars.RemoveAll();
    fillPerson(person, vars);
    fillAnswering(person.answers, vars);
    for (int i = 0; i < cScales; ++i) {
        fillScale(cScaleTable[static_cast<std::size_t>(i)], scoreScale(person.answers, i), vars);
    }
    fillCircle(circlePlace(person.answers), vars);
}

BigFiveReport::BigFiveReport(const Person& person) : m_person(person) {
    AddFct("PROFILE", &BigFiveReport::writeProfile);
    AddFct("PROFILE_LINE", &BigFiveReport::writeLine);
    AddFct("CIRCLE", &BigFiveReport::writeCircle);
    AddFct("SCALE_BAR", &BigFiveReport::writeScaleBar);
    AddFct("ANSWER_COUNTS", &BigFiveReport::writeAnswerCounts);
    AddFct("ITEM_TABLE", &BigFiveReport::writeItemTable);
}

void BigFiveReport::Create(CFile& output, Form form) {
    fillVariables(m_person, Variables());
    DoCreate(output, form, 0);
}

CString BigFiveReport::GetDefFilePath(int which) {
    return GetModuleDir() + (which == Full ? "/full.DAT" : "/short.DAT");
}

void BigFiveReport::writeProfile(CFile& output, void*) {
    write(output, variable("Head2") + " Profile\\par\n" + variable("Body") + "\\keepn\\sa40 ");
    writeProfilePicture(output, m_person.answers);
    write(output, "\\par\n" + variable("Small") +
                      " Diamond: T score. Blue bar: 90% range. Light band: average range, " +
                      std::to_string(cAverageFrom) + " to " + std::to_string(cAverageTo) +
                      ".\\par\n");
}

void BigFiveReport::writeLine(CFile& output, void*) {
    write(output, variable("Body") + "\\sa60 ");
    writeProfileLine(output, m_person.answers);
    write(output, "\\par\n");
}

void BigFiveReport::writeCircle(CFile& output, void*) {
    write(output, variable("Body") + "\\qc\\sa60 ");
    bigfive::writeCircle(output, m_person.answers, m_person.name);
    write(output, "\\par\n");
}

void BigFiveReport::writeScaleBar(CFile& output, void*) {
    const std::string code = variable("code");
    for (int i = 0; i < cScales; ++i) {
        if (code != cScaleTable[static_cast<std::size_t>(i)].code) continue;
        write(output, variable("Body") + "\\keepn\\sa60 ");
        writeScalePicture(output, m_person.answers, i);
        write(output, "\\par\n");
    }
}

// The paragraph behind the graph leaves it its height.
void BigFiveReport::writeAnswerCounts(CFile& output, void*) {
    constexpr double twipsPerInch = 1440;
    write(output, variable("Body") + "\\keepn\\sb0\\sa0 ");
    bigfive::writeAnswerCounts(output, m_person.answers);
    write(output, "\\par\n" + variable("Small") + "\\sb" +
                      std::to_string(static_cast<int>(cCountsHeight * twipsPerInch)) +
                      " How many statements got each answer, from 1 to 5.\\par\n");
}

std::string BigFiveReport::itemHeadRow(const std::string& label) {
    const std::string format = variable("HeadCell") + "\\sb30\\sa30\\fs16 ";
    const std::string center = variable("HeadCell") + "\\li0\\ri0\\sb30\\sa30\\fs16\\qc ";
    RtfRow row(0, "\\trhdr");
    row.Cell(cNumberEnd, shade(eDark), center + "No.");
    row.Cell(cStatementEnd, shade(eDark), format + label);
    row.Cell(cDirectionEnd, shade(eDark), center);
    for (int answer = cMinAnswer; answer <= cMaxAnswer; ++answer) {
        row.Cell(cDirectionEnd + answer * cBoxWidth, shade(eDark), center + std::to_string(answer));
    }
    return row.Text();
}

std::string BigFiveReport::itemRow(std::size_t item) {
    const std::string format = variable("Cell") + "\\sb10\\sa10\\fs16 ";
    const std::string center = variable("Cell") + "\\li0\\ri0\\sb10\\sa10\\fs16\\qc ";
    const std::string line = border("b", 5, eLines);
    const std::string box =
        line + border("t", 5, eLines) + border("l", 5, eLines) + border("r", 5, eLines);
    RtfRow row(0);
    row.Cell(cNumberEnd, line, center + std::to_string(item + 1));
    row.Cell(cStatementEnd, line, format + RTFEncode(cItemTable[item].text).GetString());
    row.Cell(cDirectionEnd, line, center + (cItemTable[item].reversed ? "\\'96" : ""));
    for (int answer = cMinAnswer; answer <= cMaxAnswer; ++answer) {
        const bool chosen = m_person.answers[item] == answer;
        row.Cell(cDirectionEnd + answer * cBoxWidth, box + (chosen ? shade(eDark) : ""),
                 center + (chosen ? textColor(eWhite) + std::to_string(answer) : ""));
    }
    return row.Text();
}

void BigFiveReport::writeItemTable(CFile& output, void*) {
    std::string text;
    for (int scale = 0; scale < cScales; ++scale) {
        text += itemHeadRow(cScaleTable[static_cast<std::size_t>(scale)].name);
        for (std::size_t item = static_cast<std::size_t>(scale); item < cItems; item += cScales) {
            text += itemRow(item);
        }
    }
    write(output, text);
}

}  // namespace bigfive
