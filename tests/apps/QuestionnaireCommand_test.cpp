#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

class QuestionnaireCommand : public CommandLine {};

TEST_F(QuestionnaireCommand, MakesAQuestionnaireThatWorks) {
    ASSERT_EQ(Run({"questionnaire", "new", "mine"}).exitCode, 0);
    const Finished checked = Run({"questionnaire", "check", "mine"});
    EXPECT_EQ(checked.out,
              "Thinking of exams 1.0: 8 items, 2 scales, 3 fields, 1 report; no faults\n");
    EXPECT_NE(Run({"questionnaire", "check", "mine", "--variables"}).out.find("\nWorry_T_Range\n"),
              std::string::npos);
    const Finished run = Run({"batch", "mine", "mine/responses.csv", "-o", "results"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(folder.Read("results/p1.rtf")
                  .find("Ann Example worries more about exams than most "
                        "people of her age do."),
              std::string::npos);
    EXPECT_NE(folder.Read("results/p3.rtf")
                  .find("Too many answers are missing to tell how "
                        "confident Cem Example is."),
              std::string::npos);
    EXPECT_EQ(Run({"questionnaire", "new", "mine"}).exitCode, 2);
}

TEST_F(QuestionnaireCommand, TellsEveryFault) {
    ASSERT_EQ(Run({"questionnaire", "new", "mine"}).exitCode, 0);
    std::string text = folder.Read("mine/questionnaire.json");
    text.replace(text.find("\"E3\","), 5, "\"E33\",");
    folder.Write("mine/questionnaire.json", text);
    folder.Write("mine/SCORE.rtf", "@Scale");
    const Finished checked = Run({"questionnaire", "check", "mine"});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_NE(checked.err.find("mine/questionnaire.json:30:56: error: /scales/0/items/1: unknown "
                               "item 'E3'; did you mean 'E1'?"),
              std::string::npos)
        << checked.err;
    EXPECT_EQ(Run({"questionnaire", "check", "none"}).exitCode, 2);
}

TEST_F(QuestionnaireCommand, ImportsWhatOtherProgramsDescribe) {
    folder.Write("q.json", R"({"resourceType": "Questionnaire", "title": "Two", "status": "draft",
        "item": [{"linkId": "1", "text": "Well?", "type": "boolean"},
                 {"linkId": "2", "text": "Since", "type": "date"},
                 {"linkId": "3", "text": "Photo", "type": "attachment"}]})");
    const Finished run = Run({"questionnaire", "import", "q.json", "-o", "two"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("3: stays behind"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("two: made, with 1 item and 1 field"), std::string::npos) << run.out;
    EXPECT_EQ(Run({"questionnaire", "check", "two"}).exitCode, 0);
    folder.Write("r.json",
                 R"({"resourceType": "QuestionnaireResponse", "id": "p", "status": "completed",
        "item": [{"linkId": "1", "answer": [{"valueBoolean": true}]},
                 {"linkId": "2", "answer": [{"valueDate": "2020-01-02"}]}]})");
    ASSERT_EQ(Run({"batch", "two", "r.json", "-o", "results"}).exitCode, 0);
    const std::string report = folder.Read("results/p.rtf");
    EXPECT_NE(report.find("Well?\\cell\\pard\\intbl Yes\\cell"), std::string::npos) << report;
    EXPECT_NE(report.find("2020-01-02"), std::string::npos) << report;
    folder.Write("bad.csv", "a,b\n");
    EXPECT_EQ(Run({"questionnaire", "import", "bad.csv", "-o", "new"}).exitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("new")));
    EXPECT_EQ(Run({"questionnaire", "import", "q.json", "-o", "two"}).exitCode, 2);
    if (cIsWindows) return;  // no such limits
    Setting full;
    full.maxFileSize = 400;  // enough for the report
    EXPECT_EQ(Run({"questionnaire", "import", "q.json", "-o", "three"}, full).exitCode, 2);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("three")));
}

TEST_F(QuestionnaireCommand, ImportsADictionaryWithAMapping) {
    folder.Write("d.csv",
                 "Variable / Field Name,Form Name,Section Header,Field Type,Field Label,\"Choices, "
                 "Calculations, OR Slider Labels\",Field Note,Text Validation Type OR Show Slider "
                 "Number,Text Validation Min,Text Validation Max,Identifier?,Branching Logic (Show "
                 "field only if...),Required Field?,Custom Alignment,Question Number (surveys "
                 "only),Matrix Group Name,Matrix Ranking?,Field Annotation\n"
                 "text,mood,,yesno,Well?,,,,,,,,,,,,,\nborn,mood,,text,Born,,,date_dmy,,,,,,,,,,\n"
                 "sex,mood,,radio,Sex,\"1, female | 2, male\",,,,,,,,,,,,\n");
    const Finished run = Run({"questionnaire", "import", "d.csv", "-o", "d"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_NE(run.out.find("--map"), std::string::npos) << run.out;
    std::string map;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path("d"))) {
        if (entry.path().extension() == ".csv") map = entry.path().string();
    }
    folder.Write("r.csv", "id,text,sex\np,1,2\n");
    EXPECT_EQ(Run({"batch", "d", "r.csv", "-o", "out", "--map", map}).exitCode, 0);
    EXPECT_NE(folder.Read("out/p.rtf").find("Yes"), std::string::npos);
    folder.Write("file", "x");
    EXPECT_EQ(Run({"questionnaire", "new", "file/below"}).exitCode, 2);
}

}  // namespace
}  // namespace tessalink::test
