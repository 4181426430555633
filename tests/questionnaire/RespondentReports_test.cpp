#include "questionnaire/RespondentReports.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/base/CodePage.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/ResponseTable.h"
#include "report/ParseException.h"
#include "report/PlainText.h"
#include "report/TemplateFile.h"
#include "tests/support/Dice.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

constexpr const char* cReporting = R"({
  "id": "mini", "title": "Mini {x}", "version": "1.0", "language": "en", "licence": "none",
  "source": "invented",
  "responseSets": {"freq": {"choices": [{"code": "0", "label": "never", "value": 0},
                                        {"code": "1", "label": "a [bit] @", "value": 1}]}},
  "items": [{"id": "Q1", "text": "One", "responses": "freq"},
            {"id": "Q2", "text": "Two", "responses": "freq"}],
  "scales": [{"id": "Sum", "items": ["Q1", "Q2"]}],
  "fields": [{"id": "Name", "label": "Name", "type": "text", "length": 400},
             {"id": "Born", "label": "Born", "type": "date"},
             {"id": "Began", "label": "Began", "type": "time"},
             {"id": "Years", "label": "Years", "type": "integer", "min": 0, "max": 99},
             {"id": "Sex", "label": "Sex", "type": "choice",
              "choices": [{"code": "f", "label": "female"}, {"code": "m", "label": "male"}]}],
  "words": {"field": "Sex", "words": {"Subject": {"f": "she", "m": "he", "otherwise": "they"}}},
  "derived": "derived.rtf",
  "reports": [{"id": "a", "title": "A", "template": "a.rtf"},
              {"id": "b", "title": "B", "template": "b.rtf"}]})";

QuestionnaireFiles filesOf(const std::string& first, const std::string& second = "") {
    return {{"questionnaire.json", cReporting},
            {"derived.rtf", "never seen @DEFINE(Twice,Called)@LET(Twice=Sum*2;Called=[M. ]+Name)"},
            {"a.rtf", first},
            {"b.rtf", second},
            {"PART.rtf", "(@Name)"}};
}

Respondent personNamed(const std::string& name) {
    Respondent person;
    person.id = "p/1";
    person.answers = {2, 1};
    person.fields = {name, Date(2001, 2, 3), Time(14, 5, 0), 9, 2};
    return person;
}

std::string reportOf(RespondentReports& reports, const Questionnaire& questionnaire,
                     const Respondent& person, std::size_t report = 0) {
    const Scorer scorer(questionnaire);
    Scores scores;
    scorer.Score(person, scores);
    reports.SetRespondent(person, scores);
    CMemFile output;
    reports.Write(report, output);
    return std::string(output.View());
}

std::string reportOf(const std::string& text, const Respondent& person) {
    const Questionnaire questionnaire = Questionnaire::Read(filesOf(text), "mini");
    RespondentReports reports(questionnaire);
    return reportOf(reports, questionnaire, person);
}

TEST(RespondentReports, WritesWhatIsKnownOfAPerson) {
    Respondent nobody;
    nobody.id = "x";
    nobody.answers.resize(2);
    nobody.fields.resize(5);
    const struct {
        std::string text;
        std::string full;
        std::string empty;
    } cases[] = {
        {"@QuestionnaireTitle @RespondentID", "Mini \\{x\\} p/1", "Mini \\{x\\} x"},
        {"@Q1 @Q1_Value @Q1_Label @Q1_Text", "2 1 a \\'5bbit\\'5d \\'40 One", "   One"},
        {"@Born @Born_Day.@Born_Month.@Born_Year @Began @Years @Sex @Sex_Code @Sex_Label @Subject",
         "2001-02-03 3.2.2001 14:05 9 2 m male he", " ..      they"},
        {"@Sum, @Sum_Missing, @Twice, @Called", "1, 0, 2, M. Ann", ", 2, , M. "},
        {"@COMPUTE(Sum*10:6:1)|@EVAL([n=]+Sum)", "10|n=1", "|n="},
        {"@IF(Sum>0)@THEN+@ELSE-@ENDIF@IF(Sum<=0)@THEN+@ELSE-@ENDIF", "+-", "--"},
        {"@INCLUDE([PART])", "(Ann)", "()"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(reportOf(test.text, personNamed("Ann")), test.full);
        EXPECT_EQ(reportOf(test.text, nobody), test.empty) << test.text;
    }
}

TEST(RespondentReports, KeepReportsApart) {
    const Questionnaire questionnaire = Questionnaire::Read(
        filesOf("@DEFINE(New)@LET(Sum=7;Twice=8;Name=[x];New=[y])@Sum@Twice@Name@New",
                "@DEFINE(New)@Sum@Twice@Name@New"),
        "mini");
    RespondentReports reports(questionnaire);
    const Scorer scorer(questionnaire);
    Scores scores;
    const Respondent person = personNamed("Ann");
    scorer.Score(person, scores);
    reports.SetRespondent(person, scores);
    for (int round = 0; round < 3; ++round) {
        CMemFile first;
        CMemFile second;
        reports.Write(0, first);
        reports.Write(1, second);
        EXPECT_EQ(first.View(), "78xy");
        EXPECT_EQ(second.View(), "12Ann0");
        if (round == 1) reports.SetRespondent(person, scores);
    }
}

/// Whatever a person is called, the report is that of another name with the name put in.
TEST(RespondentReports, TakesTextsOfPersonsForData) {
    constexpr std::string_view cName = "Zz";
    const std::string text =
        "{\\rtf1 @Name @EVAL([a ]+Name+[ b]) @EVAL([@EVAL(Name) @CAP(Name)]) @CAP(Name) "
        "@COMMA_LIST(Name,[x],Called) @DEFER_START(1)@Name "
        "@EVAL(Name)@DEFER_END@PRINT_DEFERRED(ASC)"
        "@DEFINE(t)@LET(t=[(]+Name+[)])@EVAL(t) @INCLUDE([PART])}";
    const std::string expected = reportOf(text, personNamed(std::string(cName)));
    std::vector<std::string> names = {"\\",
                                      "{",
                                      "}}}",
                                      "@",
                                      "@ENDIF",
                                      "@TEXT(3)",
                                      "]+Called+[",
                                      "[])@COMMENT(",
                                      "\\u321 L",
                                      "\\'",
                                      "@DEFER_END",
                                      "@INCLUDE([PART])",
                                      "\xC5\x81ukasz",
                                      "\xF0\x9F\x98\x80",
                                      "\xFF",
                                      "%1",
                                      "\xE2\x93\xB5",
                                      "\\par\\page",
                                      "{\\*\\",
                                      "\\bin9 "};
    Dice dice(5);
    for (int i = 0; i < 300; ++i)
        names.push_back("-" +
                        dice.Text(1 + dice.Below(20), "@[]{}\\(),;'\"+-=*1uEVALTXzZ \n\t\xC5\x81"));
    for (const std::string& name : names) {
        std::string wanted = expected;
        const std::string escaped(escapeUtf8(name).View());
        for (std::size_t at = wanted.find(cName); at != std::string::npos;
             at = wanted.find(cName, at + escaped.size())) {
            wanted.replace(at, cName.size(), escaped);
        }
        // CAP makes a capital of a first letter.
        if (name.front() >= 'a' && name.front() <= 'z') continue;
        ASSERT_EQ(reportOf(text, personNamed(name)), wanted) << name;
    }
}

TEST(RespondentReports, TellsWhereATemplateFails) {
    const struct {
        std::string text;
        std::string place;
        std::string message;
    } cases[] = {
        {"\n @COMPUTE(1/(Q2-1))", "a.rtf:2", "Division by zero"},
        {"@DEFINE(n)@LET(n=[NO]+[NE])@INCLUDE(n)", "a.rtf:1", "no file of the questionnaire"},
    };
    for (const auto& test : cases) {
        try {
            reportOf(test.text, personNamed("Ann"));
            ADD_FAILURE() << test.text;
        } catch (const ParseException& fault) {
            EXPECT_EQ(std::string(fault.GetPlace().file.View()) + ":" +
                          std::to_string(fault.GetPlace().line),
                      test.place);
            EXPECT_NE(std::string(fault.what()).find(test.message), std::string::npos)
                << fault.what();
        }
    }
}

TEST(RespondentReports, OfOneQuestionnaireAreWrittenByManyThreads) {
    const Questionnaire questionnaire =
        Questionnaire::Read(filesOf("@Name @Sum @Called @EVAL(Name) @INCLUDE([PART])"), "mini");
    std::vector<std::thread> threads;
    std::vector<std::string> wrong(4);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&, i] {
            RespondentReports reports(questionnaire);
            for (int round = 0; round < 200; ++round) {
                const std::string name = "T" + std::to_string(i) + "x" + std::to_string(round);
                const std::string text = reportOf(reports, questionnaire, personNamed(name));
                if (text != name + " 1 M. " + name + " " + name + "(" + name + ")") wrong[i] = text;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& text : wrong) EXPECT_EQ(text, "");
}

// JSON and tables in UTF-8 or in the code page come to the same report, in the code page.
TEST(RespondentReports, AreInTheCodePage) {
    HostServices services;
    services.codePage = CodePage::Greek;
    const HostServicesScope scope(services);
    const std::string never = "\u03C0\u03BF\u03C4\u03AD";
    const std::string always = "\u03C0\u03AC\u03BD\u03C4\u03B1";
    const std::string name = "\u0395\u03BB\u03AD\u03BD\u03B7";
    std::string json = cReporting;
    json.replace(json.find("never"), 5, never);
    json.replace(json.find("a [bit] @"), 9, always);
    QuestionnaireFiles files = filesOf("@Name: @Q1_Label, @Q2_Label, @Sum. @CAP(Name)");
    files["questionnaire.json"] = json;
    const Questionnaire questionnaire = Questionnaire::Read(files, "mini");
    RespondentReports reports(questionnaire);
    const std::string table = "id,Name,Q1,Q2\np," + name + "," + always + "," + never + "\n";
    using Encoding = ResponseTableOptions::Encoding;
    for (const auto& [encoding, text] :
         {std::pair(Encoding::Utf8, table), {Encoding::CodePage, fromUtf8(table).text}}) {
        ResponseTableOptions options;
        options.encoding = encoding;
        options.hasLabels = true;
        CMemFile file(text);
        ResponseTable rows(file, questionnaire, options);
        ResponseBlock block;
        ASSERT_TRUE(rows.ReadBlock(block));
        std::vector<std::string> reported;
        rows.Parse(block, [&](RespondentRow& row) {
            reported.push_back(toUtf8(reportOf(reports, questionnaire, row.respondent)));
        });
        const std::string expected = name + ": " + always + ", " + never + ", 1. " + name;
        EXPECT_EQ(reported, std::vector<std::string>{expected});
    }
    // A Cyrillic name has no bytes: it prints by numbers, with Latin letters to fall back on.
    EXPECT_EQ(reportOf("@Name", personNamed("\u0416\u0443")), "\\u1046Z\\u1091u");
}

}  // namespace
}  // namespace tessalink::test
