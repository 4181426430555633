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

#include "tests/support/SoundRtf.h"

#ifdef TESSALINK_CLI
namespace {

namespace fs = std::filesystem;
using tessalink::test::expectSoundRtf;
using testing::HasSubstr;

// Both programs stand in the build folder as CMake lays it out.
const fs::path cCommandLine = TESSALINK_CLI;
const fs::path cProgramDir =
    cCommandLine.parent_path().parent_path().parent_path() / "examples" / "bigfive";
const fs::path cQuestionnaire = fs::path(TESSALINK_SOURCE_DIR) / "instruments" / "bigfive";

// For each scale the sum of its ten answers after reversal, in the order E, A, C, S, I. By hand
// from the norms (30/8, 39/6, 34/7, 30/8, 37/6): z = 1, 0, -1, 2, -1; T = 60, 50, 40, 70, 40.
constexpr int cSums[] = {38, 39, 27, 46, 31};

// The reversed statements, as the published scoring key has them.
bool isReversed(int item) {
    static const std::vector<int> reversed = {2,  4,  6,  8,  10, 12, 14, 16, 18, 20, 22, 24,
                                              26, 28, 29, 30, 32, 34, 36, 38, 39, 44, 46, 49};
    return std::binary_search(reversed.begin(), reversed.end(), item);
}

// A table of one person: id, name, sex, age, date, and the answers from [5] on.
std::vector<std::string> answersOf(const std::string& sex) {
    std::vector<std::string> cells = {"zoe", "Zo\xC3\xAB O'Brien {jr}", sex, "40", "2024-02-29"};
    for (int item = 1; item <= 50; ++item) {
        const int sum = cSums[(item - 1) % 5];
        const int position = (item - 1) / 5;
        const int points = sum / 10 + (position < sum % 10 ? 1 : 0);
        cells.push_back(std::to_string(isReversed(item) ? 6 - points : points));
    }
    return cells;
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
        if (!fs::exists(cProgramDir / "bigfive_report"))
            GTEST_SKIP() << "built without the examples";
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

    // Runs the program on the person.
    Outcome Make(const std::vector<std::string>& cells) const {
        std::ofstream table(file("answers.csv"), std::ios::binary);
        table << "id;Name;Sex;Age;TestDate";
        for (int item = 1; item <= 50; ++item) table << ";I" << item;
        for (std::size_t i = 0; i < cells.size(); ++i) table << (i == 0 ? '\n' : ';') << cells[i];
        table.close();
        return Run(cProgramDir / "bigfive_report",
                   "--answers '" + file("answers.csv") + "' --out '" + m_dir.string() + "'");
    }

    fs::path m_dir;
};

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
    const Outcome outcome = Make(answersOf("m"));
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
        {"T score {\\b 70} (90\\~% confidence interval 64 to 76), 98th percentile: {\\b high}",
         "Emotional Stability describes", "describes himself as calm",
         "T score {\\b 60} (90\\~% confidence interval 54 to 66), 84th percentile: {\\b slightly "
         "above average}",
         "Extraversion describes", "describes himself as sociable",
         "T score {\\b 50} (90\\~% confidence interval 43 to 57), 50th percentile: {\\b average}",
         "Agreeableness describes", "His answers show a balance",
         "T score {\\b 40} (90\\~% confidence interval 33 to 47), 16th percentile: {\\b slightly "
         "below",
         "Conscientiousness describes", "describes himself as easy-going",
         "T score {\\b 40} (90\\~% confidence interval 33 to 47), 16th percentile: {\\b slightly "
         "below",
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
         {std::pair("f", "she describes herself"), std::pair("o", "they describe them")}) {
        auto cells = answersOf(sex);
        cells[5 + 49] = "";  // three points of Intellect/Imagination
        ASSERT_EQ(0, Make(cells).code);
        const std::string full = readRtf(file("bigfive_full.rtf"));
        expectSoundRtf(full);
        expectParts(full, {"31*\\cell", "left one of the fifty statements unanswered",
                           "(Intellect/Imagination), the raw sum"});
        expectParts(readRtf(file("bigfive_short.rtf")), {words});
    }
}

// With three answers missing there is no score, and the report says so.
TEST_F(BigFive, ReportsWithoutAScore) {
    auto cells = answersOf("f");
    for (const std::size_t item : {1U, 6U, 11U}) cells[4 + item] = "NA";
    ASSERT_EQ(0, Make(cells).code);
    const std::string full = readRtf(file("bigfive_full.rtf"));
    expectSoundRtf(full);
    expectParts(full, {"No score: more than two of the ten answers are missing."});
    EXPECT_FALSE(std::regex_search(full, std::regex("\\bnan\\b")));
}

TEST_F(BigFive, NamesTheFaultInTheAnswers) {
    auto cells = answersOf("f");
    cells[5] = "6";
    const Outcome outcome = Make(cells);
    EXPECT_EQ(1, outcome.code);
    EXPECT_THAT(outcome.messages, HasSubstr("answers.csv:2:1: error: I1: is not a code"));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(m_dir), {})) << "only the answers are there";
}

// The host program's report is that of a batch.
TEST_F(BigFive, IsWhatABatchWrites) {
    ASSERT_EQ(0, Make(answersOf("m")).code);
    const Outcome outcome =
        Run(cCommandLine, "batch '" + cQuestionnaire.string() + "' '" + file("answers.csv") +
                              "' -o '" + file("out") + "'");
    ASSERT_EQ(0, outcome.code) << outcome.messages;
    EXPECT_EQ(readRtf(file("bigfive_full.rtf")), readRtf(file("out/zoe-full.rtf")));
    EXPECT_EQ(readRtf(file("bigfive_short.rtf")), readRtf(file("out/zoe-short.rtf")));
}

TEST_F(BigFive, TellsUsageAndFileTroubleFromFaultyAnswers) {
    const fs::path program = cProgramDir / "bigfive_report";
    EXPECT_EQ(0, Run(program, "--help").code);
    for (const std::string arguments :
         {"--outt x", "--out", "--answers /nowhere/answers.csv", "--answers /", "--out /nowhere"}) {
        EXPECT_EQ(2, Run(program, arguments).code) << arguments;
    }
}

}  // namespace
#endif
