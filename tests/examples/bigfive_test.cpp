// The Big-Five example as a user sees it: the program is run on files, and what it writes is read.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#ifdef TESSALINK_CLI
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// Both programs stand in the build folder as CMake lays it out.
const fs::path cCommandLine = TESSALINK_CLI;
const fs::path cProgramDir =
    cCommandLine.parent_path().parent_path().parent_path() / "examples" / "bigfive";
const fs::path cTemplates = fs::path(TESSALINK_SOURCE_DIR) / "examples" / "bigfive" / "templates";

// For each scale the sum of its ten answers after reversal, in the order E, A, C, S, I. By hand
// from the norms (30/8, 39/6, 34/7, 30/8, 37/6): z = 1, 0, -1, 2, -1; T = 60, 50, 40, 70, 40.
constexpr int cSums[] = {38, 39, 27, 46, 31};

// The reversed statements, as the published scoring key has them.
bool isReversed(int item) {
    static const std::vector<int> reversed = {2,  4,  6,  8,  10, 12, 14, 16, 18, 20, 22, 24,
                                              26, 28, 29, 30, 32, 34, 36, 38, 39, 44, 46, 49};
    return std::binary_search(reversed.begin(), reversed.end(), item);
}

// The lines of an answers file: name, sex, age, date, and the answers from [4] on.
std::vector<std::string> answersOf(const std::string& sex) {
    std::vector<std::string> lines = {"name\tZo\xC3\xAB O'Brien {jr}", "sex\t" + sex, "age\t40",
                                      "date\t2024-02-29"};
    for (int item = 1; item <= 50; ++item) {
        const int sum = cSums[(item - 1) % 5];
        const int position = (item - 1) / 5;
        const int points = sum / 10 + (position < sum % 10 ? 1 : 0);
        lines.push_back(std::to_string(item) + "\t" +
                        std::to_string(isReversed(item) ? 6 - points : points));
    }
    return lines;
}

// The text of a file as readers of RTF see it, to whom line ends are nothing.
std::string readRtf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::erase_if(text, [](char ch) { return ch == '\r' || ch == '\n'; });
    return text;
}

struct Outcome {
    int code = -1;
    std::string messages;
};

class BigFive : public testing::Test {
protected:
    void SetUp() override {
        if (!fs::exists(cProgramDir / "full.DAT")) GTEST_SKIP() << "built without the examples";
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        m_dir = fs::path(testing::TempDir()) / (std::string("bigfive_") + test->name());
        fs::remove_all(m_dir);
        fs::create_directories(m_dir);
    }
    void TearDown() override { fs::remove_all(m_dir); }

    std::string file(const char* name) const { return (m_dir / name).string(); }

    Outcome Run(const fs::path& program, const std::string& arguments) const {
        const std::string command = "'" + program.string() + "' " + arguments + " 2>&1";
        FILE* pipe = popen(command.c_str(), "r");
        Outcome outcome;
        for (int ch = std::fgetc(pipe); ch != EOF; ch = std::fgetc(pipe)) {
            outcome.messages += static_cast<char>(ch);
        }
        outcome.code = WEXITSTATUS(pclose(pipe));
        return outcome;
    }

    // Runs the program on the lines.
    Outcome Make(const std::vector<std::string>& lines) const {
        std::ofstream answers(file("answers.tsv"), std::ios::binary);
        for (const std::string& line : lines) answers << line << '\n';
        answers.close();
        return Run(cProgramDir / "bigfive_report", "--answers '" + file("answers.tsv") +
                                                       "' --out '" + m_dir.string() + "' --vars '" +
                                                       file("vars.tsv") + "'");
    }

    fs::path m_dir;
};

// Faults that a template easily gets: braces out of balance, a control word that runs into the text
// behind it, words or sentences that have lost the blank between them, a command left over.
void expectSoundRtf(const std::string& text) {
    ASSERT_TRUE(text.starts_with("{\\rtf1"));
    int depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else {
            depth += text[i] == '{' ? 1 : text[i] == '}' ? -1 : 0;
            ASSERT_TRUE(depth > 0 || text.find_first_not_of('}', i) == std::string::npos) << i;
        }
    }
    EXPECT_EQ(0, depth);
    const std::regex glued(R"(\\[a-z]+-?\d+[A-Za-z]|[a-z],?[.;:]?@|[a-z][.;:,][A-Z]|  (?![ 0-9]))");
    std::string rest = std::regex_replace(text, std::regex("assessment@example.org"), "");
    rest = std::regex_replace(rest, std::regex(R"(\\'[0-9a-f]{2})"), "~");
    for (std::sregex_iterator fault(rest.begin(), rest.end(), glued), end; fault != end; ++fault) {
        ADD_FAILURE() << rest.substr(
            static_cast<std::size_t>(std::max<std::ptrdiff_t>(fault->position() - 40, 0)), 80);
    }
    EXPECT_EQ(std::string::npos, rest.find('@'));
    EXPECT_EQ(text.find("@example.org"), text.rfind('@')) << "more than one address";
}

void expectParts(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts) EXPECT_NE(std::string::npos, text.find(part)) << part;
}

// The texts stand in this order, each behind the one before.
void expectOrder(const std::string& text, std::size_t from, const std::vector<std::string>& parts) {
    for (const std::string& part : parts) {
        const std::size_t found = text.find(part, from);
        ASSERT_NE(std::string::npos, found) << part;
        from = found + part.size();
    }
}

TEST_F(BigFive, ReportsOnAPersonScoredByHand) {
    const Outcome outcome = Make(answersOf("male"));
    ASSERT_EQ(0, outcome.code) << outcome.messages;
    EXPECT_EQ("", outcome.messages);
    const std::string full = readRtf(file("bigfive_full.rtf"));
    const std::string brief = readRtf(file("bigfive_short.rtf"));
    expectSoundRtf(full);
    expectSoundRtf(brief);
    for (const std::string& text : {full, brief}) {
        expectParts(text,
                    {"Zo\xEB O'Brien \\{jr\\}", "29 February 2024", "Norms made for illustration",
                     "reports more than average Extraversion and Emotional Stability."});
    }

    const std::size_t scales = full.find("The five scales in detail");
    ASSERT_NE(std::string::npos, scales);
    expectOrder(
        full, scales,
        {"T score {\\b 70} (90% range 64 to 76), 98th percentile: {\\b high}",
         "Emotional Stability describes", "describes himself as calm",
         "T score {\\b 60} (90% range 54 to 66), 84th percentile: {\\b slightly above average}",
         "Extraversion describes", "describes himself as sociable",
         "T score {\\b 50} (90% range 43 to 57), 50th percentile: {\\b average}",
         "Agreeableness describes", "His answers show a balance",
         "T score {\\b 40} (90% range 33 to 47), 16th percentile: {\\b slightly below",
         "Conscientiousness describes", "describes himself as easy-going",
         "T score {\\b 40} (90% range 33 to 47), 16th percentile: {\\b slightly below",
         "Intellect/Imagination describes", "describes himself as practical",
         "Suggestions for the conversation", "{\\b Conscientiousness} (T score 40)",
         "{\\b Intellect/Imagination} (T score 40)", "{\\b Agreeableness} (T score 50)",
         "{\\b Extraversion} (T score 60)", "{\\b Emotional Stability} (T score 70)",
         "Intellect/Imagination 40, on a scale from 20 to 80. average range: 45",
         "Emotional Stability with 70, its lowest Conscientiousness and Intellect",
         // z = 1 at 45 degrees: sectors of 50 + 10 cos.
         "Zo\\'eb O'Brien \\{jr\\}: warm 57, outgoing 60, dominant 57, competitive 50, cold 43, ",
         "sector \\'93outgoing\\'94, with a T score of 60, and least far into the one opposite, ",
         "\\'93withdrawn\\'94, with 40.", "direction is 45 degrees", "Dominant\\cell\\pard",
         "57\\cell", "Outgoing\\cell", "60\\cell", "Warm\\cell", "57\\cell", "Trusting\\cell",
         "50\\cell", "Submissive\\cell", "43\\cell", "Withdrawn\\cell", "40\\cell",
         "Answers to the fifty statements", "Am the life of the party.", "Am full of ideas.",
         "Notes for the reader"});
    expectOrder(brief, 0,
                {"{\\b Emotional Stability} (T score 70, high): he describes himself",
                 "{\\b Extraversion}", "{\\b Agreeableness}", "{\\b Conscientiousness}",
                 "{\\b Intellect/Imagination} (T score 40, slightly below average)"});
}

// 28 of nine answers make an estimate of 31.1, so 31; the pronouns are those of the other sexes.
TEST_F(BigFive, EstimatesTheSumWhenAnswersAreMissing) {
    for (const auto& [sex, words] :
         {std::pair("female", "she describes herself"), std::pair("other", "they describe them")}) {
        auto lines = answersOf(sex);
        lines[4 + 49] = "50\t-";  // three points of Intellect/Imagination
        ASSERT_EQ(0, Make(lines).code);
        const std::string full = readRtf(file("bigfive_full.rtf"));
        expectSoundRtf(full);
        expectParts(full, {"31*\\cell", "left one of the fifty statements unanswered",
                           "(Intellect/Imagination), the raw sum"});
        expectParts(readRtf(file("bigfive_short.rtf")), {words});
    }
}

TEST_F(BigFive, NamesTheFaultInTheAnswers) {
    const struct {
        std::size_t line;  // from 1
        const char* text;
        const char* message;
    } faults[] = {
        {1, "name\t", ":1: error: the name is empty"},
        {1, "name\t\xE2\x82", ":1: error: the name has a character"},
        {1, "name\t\xCE\xA9", ":1: error: the name has a character"},
        {2, "sex\tm", ":2: error: unknown sex"},
        {3, "age\tforty", ":3: error: the age"},
        {4, "date\t2023-02-29", ":4: error: no day of the calendar"},
        {5, "1\t6", ":5: error: the answer is no number from 1 to 5"},
        {5, "1\t", ":5: error: the answer"},
        {5, "1 4", ":5: error: no tab"},
        {5, "51\t4", ":5: error: unknown entry"},
        {6, "1\t4", ":6: error: second line for 1;"},
        {54, "# 50", "answers.tsv: error: no line for 50"},
    };
    for (const auto& fault : faults) {
        auto lines = answersOf("female");
        lines[fault.line - 1] = fault.text;
        const Outcome outcome = Make(lines);
        EXPECT_EQ(1, outcome.code) << fault.text;
        EXPECT_THAT(outcome.messages, HasSubstr(fault.message));
    }
    auto lines = answersOf("female");
    for (const std::size_t item : {1U, 6U, 11U}) lines[3 + item] = std::to_string(item) + "\t-";
    EXPECT_THAT(Make(lines).messages,
                HasSubstr("3 of the ten answers for Extraversion are missing, at most 2 may be"));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(m_dir), {})) << "only the answers are there";
}

TEST_F(BigFive, TellsUsageAndFileTroubleFromFaultyAnswers) {
    const fs::path program = cProgramDir / "bigfive_report";
    EXPECT_EQ(0, Run(program, "--help").code);
    for (const std::string arguments :
         {"--outt x", "--out", "--answers /nowhere/answers.tsv", "--answers /", "--out /nowhere"}) {
        EXPECT_EQ(2, Run(program, arguments).code) << arguments;
    }
}

// The templates also serve without the program: only its functions are missing.
TEST_F(BigFive, CommandLineMakesTheReportFromTheVariables) {
    ASSERT_EQ(0, Make(answersOf("male")).code);
    const Outcome outcome =
        Run(cCommandLine, "report '" + (cTemplates / "full.rtf").string() + "' --vars '" +
                              file("vars.tsv") + "' --include-dir '" + cProgramDir.string() +
                              "' -o '" + file("plain.rtf") + "'");
    ASSERT_EQ(0, outcome.code) << outcome.messages;
    EXPECT_THAT(outcome.messages, HasSubstr("ITEM_TABLE"));
    const std::string text = readRtf(file("plain.rtf"));
    expectSoundRtf(text);
    expectOrder(text, 0, {"98th percentile", "Suggestions for the conversation"});
    EXPECT_EQ(std::string::npos, text.find("Am the life of the party."));
}

}  // namespace
#endif
