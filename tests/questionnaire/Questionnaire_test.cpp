#include "questionnaire/Questionnaire.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/BufferedFile.h"
#include "platform/files/CFileException.h"
#include "report/FileParser.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/questionnaire/EveryKey.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

/// All faults as "FILE:LINE:COLUMN: MESSAGE", without the name of the folder.
std::vector<std::string> faultsOf(const QuestionnaireFiles& files) {
    std::vector<std::string> result;
    try {
        Questionnaire::Read(files, "q");
    } catch (const QuestionnaireFaults& faults) {
        for (const InputError& fault : faults.GetFaults()) {
            const TextPlace& place = fault.GetPlace();
            result.push_back(std::string(place.file.View()).substr(2) + ":" +
                             std::to_string(place.line) + ":" + std::to_string(place.column) +
                             ": " + fault.what());
        }
    }
    return result;
}

/// The questionnaire with one text of questionnaire.json replaced.
QuestionnaireFiles changed(const std::string& from, const std::string& to,
                           const std::string& name = "questionnaire.json") {
    QuestionnaireFiles files = everyKey();
    std::string& text = files[name];
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
    return files;
}

TEST(Questionnaire, HoldsWhatItsFilesSay) {
    const Questionnaire questionnaire = Questionnaire::Read(everyKey(), "q");
    const QuestionnaireModel& model = questionnaire.Model();
    EXPECT_EQ(model.title, "Every key");
    EXPECT_EQ(model.items[*questionnaire.FindItem("Q3")].linkId, "/3");
    EXPECT_EQ(model.responseSets[0].choices[1].system, "http://x");
    EXPECT_EQ(model.scales[1].items[1].weight, -0.5);
    EXPECT_TRUE(model.scales[1].items[0].isReversed);
    EXPECT_EQ(model.scales[0].missingAllowed, 1U);
    EXPECT_EQ(model.scales[0].replacement, Scale::Replacement::Midpoint);
    EXPECT_FALSE(model.scales[1].hasNorms);
    EXPECT_EQ(model.vectors[0].sectors.size(), 2U);
    EXPECT_EQ(model.indexes[2].responses, 0U);
    EXPECT_TRUE(model.indexes[3].pairs[1].isReversed);
    EXPECT_EQ(model.fields[0].maxLength, 30U);
    EXPECT_EQ(model.words[0].otherwise, "they");
    EXPECT_EQ(questionnaire.ValueOf(0, 2), 1.5);
    EXPECT_EQ(questionnaire.ValueOf(2, -3), -3);
    EXPECT_EQ(questionnaire.Files().size(), 6U);
    EXPECT_EQ(Questionnaire::Read(questionnaire.Files(), "other").Hash(), questionnaire.Hash());
    EXPECT_NE(Questionnaire::Read(changed("Every key", "Every Key"), "q").Hash(),
              questionnaire.Hash());
}

TEST(Questionnaire, NamesFaultsWithPlacePathAndRemedy) {
    const struct {
        std::string from;
        std::string to;
        std::string fault;  ///< the first one
        std::string file = "questionnaire.json";
    } cases[] = {
        {"\"items\": [\"Q1\", \"Q2\"]", "\"items\": [\"Q1\", \"Q9\"]",
         "questionnaire.json:15:35: /scales/0/items/1: unknown item 'Q9'; did you mean"},
        {"\"items\": [\"Q1\", \"Q2\"]", "\"items\": [\"Q1\", \"Q1\"]",
         "questionnaire.json:15:35: /scales/0/items/1: the item 'Q1' is in this scale already"},
        {"\"weight\": -0.5", "\"weight\": 0",
         "questionnaire.json:18:75: /scales/1/items/1/weight: must not be 0"},
        {"\"value\": 1.5, ", "", "questionnaire.json:15:29: /scales/0/items/0: the response set"},
        {"\"horizontal\": \"Sum\"", "\"horizontal\": \"Summ\"",
         "questionnaire.json:20:35: /vectors/0/horizontal: unknown scale 'Summ'; did you mean "
         "'Sum'?"},
        {"\"norms\": false", "\"norms\": true",
         "questionnaire.json:17:13: /scales/1/id: the norms have no rows of this scale"},
        {"\"version\": \"1\", ", "", "questionnaire.json:1:1: 'version' is missing"},
        {"\"version\"", "\"verson\"", "questionnaire.json:1:"},
        {"\"id\": \"Began\"", "\"id\": \"q1\"", "questionnaire.json:34:12: "},
        {"\"id\": \"Began\"", "\"id\": \"Text\"", "questionnaire.json:34:12: "},
        {"\"id\": \"Began\"", "\"id\": \"Sum\"", "questionnaire.json:34:12: "},
        {"\"id\": \"Began\"", "\"id\": \"A_name_that_is_far_too_long_to_reach\"",
         "questionnaire.json:34:12: "},
        {"\"template\": \"a.rtf\"", "\"template\": \"../a.rtf\"",
         "questionnaire.json:40:53: /reports/0/template: '../a.rtf' is not the name of a file"},
        {"\"template\": \"a.rtf\"", "\"template\": \"b.rtf\"",
         "questionnaire.json:40:53: /reports/0/template: there is no file 'b.rtf'"},
        {"f,0+,0,30,", "f,0+,0,x,", "norms.csv:2:", "norms.csv"},
        {"Sum,f,0+,0", "Sam,f,0+,0", "norms.csv:2:1: unknown scale 'Sam'", "norms.csv"},
        {"Sum,f,0+,0", "Sum,x,0+,0", "norms.csv:2:5: 'x' is no code of the field 'Sex'",
         "norms.csv"},
        {"\"Bar\"", "\"Bars\"", "a.rtf:1:14: there is no graph 'Bar'", "graphs.json"},
        {"\"min\": 0", "\"min\": 0, \"mix\": 1", "graphs.json:1:", "graphs.json"},
        {"@Sum", "@Sam",
         "graphs.json:1:76: /graphs/Bar/sections/0/scale/points/0: there is no variable 'Sam'; did "
         "you mean 'Sum'?",
         "graphs.json"},
        {"@Sum ", "@Sim ", "a.rtf:1:19: unknown variable 'Sim'; did you mean 'Sum'?", "a.rtf"},
        {"@Sum ", "@IF(Sum) ", "a.rtf:1:28: @THEN expected after condition!", "a.rtf"},
        {"([PART])", "([PIRT])",
         "a.rtf:1:24: Include 'PIRT.DAT' is not there, and neither is PIRT.rtf!", "a.rtf"},
        {"@Name", "@INCLUDE([PART]) @Nme", "PART.rtf:1:18: unknown variable 'Nme'", "PART.rtf"},
    };
    for (const auto& test : cases) {
        const std::vector<std::string> faults = faultsOf(changed(test.from, test.to, test.file));
        ASSERT_FALSE(faults.empty()) << test.to;
        EXPECT_THAT(faults.front(), StartsWith(test.fault)) << test.from << " -> " << test.to;
    }
    QuestionnaireFiles twice = everyKey();
    twice["PART.DAT"] = "x";
    EXPECT_THAT(faultsOf(twice), ElementsAre("a.rtf:1:24: Include 'PART.DAT' is there twice, "
                                             "scrambled and plain as 'PART.rtf': remove one!"));
}

TEST(Questionnaire, IncludesAreFilesOfTheFolder) {
    const auto scrambledText = [](std::string text) {
        scramble(text.data(), text.size());
        return text;
    };
    const auto with = [](const std::string& report, QuestionnaireFiles more) {
        more.merge(changed("([PART])", report, "a.rtf"));
        return more;
    };
    const std::string computed = "(v)@DEFINE(v)@LET(v=[PART])";
    const struct {
        QuestionnaireFiles files;
        std::vector<std::string> faults;
    } cases[] = {
        {with("([PART.DAT])", {}), {}},
        {with("([PART])", {{"other.rtf", "@IF("}}), {}},
        {with("(PART)", {{"other.rtf", "@IF("}}), {}},
        {with("(PIRT)", {}),
         {"a.rtf:1:24: Include 'PIRT.DAT' is not there, and neither is PIRT.rtf!"}},
        {with("([../q/PART])", {}),
         {"a.rtf:1:24: Include '..\\q\\PART.DAT' leaves the questionnaire's folder: name a file in "
          "it!"}},
        // A variable may name any template.
        {with(computed, {}), {}},
        {with(computed, {{"other.rtf", "@IF("}, {"twice.rtf", ""}, {"twice.DAT", ""}}),
         {"a.rtf:1:24: Include 'twice.DAT' is there twice, scrambled and plain as 'twice.rtf': "
          "remove one!",
          "other.rtf:1:5: Unexpected token in expression!"}},
        {with("(v)", {{"PART.rtf", "@INCLUDE(Name)"}, {"v.DAT", scrambledText("@INCLUDE([w])")}}),
         {"v.DAT:1:1: Include 'w.DAT' is not there, and neither is w.rtf!"}},
        {with("([PART])", {{"PART.rtf", scrambledText("some words @Name")}}),
         {"PART.rtf:1:1: this template is scrambled: call it .DAT, or store it with 'tessalink "
          "unscramble'"}},
        {with("([P])", {{"P.DAT", "some words @Name"}}),
         {"P.DAT:1:1: this template is plain text: call it .rtf, or store it with 'tessalink "
          "scramble'"}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(faultsOf(test.files), test.faults) << test.files.at("a.rtf");
        if (!test.faults.empty()) continue;
        const Questionnaire questionnaire = Questionnaire::Read(test.files, "q");
        EXPECT_EQ(Questionnaire::Read(questionnaire.Files(), "q").Hash(), questionnaire.Hash());
    }
}

TEST(Questionnaire, NamesAllFaultsOfAllFilesAtOnce) {
    QuestionnaireFiles files = changed("\"weight\": -0.5", "\"weight\": 0, \"wait\": 1");
    files["questionnaire.json"].replace(files["questionnaire.json"].find("\"kind\": \"missing\""),
                                        17, "\"kind\": \"missed\"");
    files["graphs.json"] = "{";
    files["a.rtf"] = "@IF(";
    files["derived.rtf"] = "@LET(";
    const std::vector<std::string> faults = faultsOf(files);
    std::vector<std::string> places;
    for (const std::string& fault : faults) places.push_back(fault.substr(0, fault.find(':')));
    EXPECT_THAT(places, ElementsAre("questionnaire.json", "questionnaire.json",
                                    "questionnaire.json", "graphs.json", "a.rtf", "derived.rtf"))
        << testing::PrintToString(faults);
    EXPECT_EQ(faultsOf(files), faults);
}

/// Includes that include themselves end by the limit of the parser, when the report is run.
TEST(Questionnaire, IncludesMayMeet) {
    QuestionnaireFiles files = everyKey();
    files["PART.rtf"] = "@Name@IF(Years>200)@THEN @INCLUDE([PART])@ENDIF";
    EXPECT_THAT(faultsOf(files), ElementsAre());
}

TEST(Questionnaire, DamagedFilesGiveFaults) {
    const QuestionnaireFiles whole = everyKey();
    Dice dice(4);
    for (const auto& [name, text] : whole) {
        for (std::size_t i = 0; i < text.size(); i += 1 + dice.Below(3)) {
            QuestionnaireFiles files = whole;
            files[name] = text.substr(0, i);
            const std::vector<std::string> faults = faultsOf(files);
            if (name == "questionnaire.json") {
                EXPECT_FALSE(faults.empty() && i + 2 < text.size()) << i;
            }
            files[name] = text;
            files[name][i] = static_cast<char>(text[i] ^ (1 << dice.Below(8)));
            faultsOf(files);
        }
    }
}

TEST(Questionnaire, IsReadFromAFolder) {
    const TemporaryFolder folder;
    EXPECT_THROW(Questionnaire::Read(folder.Path("none").c_str()), CFileException);
    EXPECT_THROW(Questionnaire::Read(folder.Path("").c_str()), CFileException);
    for (const auto& [name, text] : everyKey()) folder.Write(name, text);
    folder.Write("notes.txt", "not read");
    EXPECT_EQ(Questionnaire::Read(folder.Path("").c_str()).Hash(),
              Questionnaire::Read(everyKey(), "q").Hash());
    std::filesystem::remove(folder.Path("norms.csv"));
    std::filesystem::create_directory(folder.Path("norms.csv"));
    try {
        Questionnaire::Read(folder.Path("").c_str());
        FAIL();
    } catch (const QuestionnaireFaults& faults) {
        EXPECT_STREQ(faults.what(), "can't be read: access is denied.");
    }
    // A part that was not read because a scrambled one is there would be found by others.
    std::filesystem::remove(folder.Path("a.rtf"));
    EXPECT_THROW(Questionnaire::Read(folder.Path("").c_str()), QuestionnaireFaults);
}

}  // namespace
}  // namespace tessalink::test
