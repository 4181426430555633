#include "questionnaire/QuestionnaireImport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/InputError.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/Questionnaire.h"
#include "tests/questionnaire/EveryKey.h"
#include "tests/support/Dice.h"
#include "tests/support/RandomQuestionnaire.h"

namespace tessalink::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* cHeader =
    "Variable / Field Name,Form Name,Section Header,Field Type,Field Label,\"Choices, "
    "Calculations, "
    "OR Slider Labels\",Field Note,Text Validation Type OR Show Slider Number,Text Validation "
    "Min,Text Validation Max,Identifier?,Branching Logic (Show field only if...),Required "
    "Field?,Custom Alignment,Question Number (surveys only),Matrix Group Name,Matrix "
    "Ranking?,Field Annotation\n";

std::string shownChoices(const std::vector<Choice>& choices) {
    std::string line;
    for (const Choice& choice : choices) {
        line += " " + std::string(choice.code.View()) + "=" + std::string(choice.label.View());
        if (choice.value) line += "(" + std::to_string(*choice.value).substr(0, 4) + ")";
        if (!choice.system.empty()) line += "@" + choice.system;
    }
    return line;
}

/// A questionnaire in a line for each set, item and field, then the columns and notes; or its
/// fault.
std::vector<std::string> shownImport(ImportedQuestionnaire (*import)(CFile&),
                                     const std::string& text) {
    std::vector<std::string> lines;
    CMemFile file(text);
    try {
        const ImportedQuestionnaire imported = import(file);
        const QuestionnaireModel& model = imported.model;
        for (const ResponseSet& set : model.responseSets) {
            const std::string range =
                std::to_string(set.lowest) + ".." + std::to_string(set.highest);
            lines.push_back(std::string(set.id.View()) + ":" +
                            (set.HasChoices() ? shownChoices(set.choices) : " " + range));
        }
        for (const Item& item : model.items) {
            lines.push_back(std::string(item.id.View()) + " '" + std::string(item.text.View()) +
                            "' " + std::string(model.responseSets[item.responses].id.View()) +
                            (item.linkId.empty() ? "" : " <- " + item.linkId));
        }
        for (const Field& field : model.fields) {
            lines.push_back(
                "field " + std::string(field.id.View()) + " '" + std::string(field.label.View()) +
                "' " + std::to_string(static_cast<int>(field.type)) + shownChoices(field.choices) +
                (field.linkId.empty() ? "" : " <- " + field.linkId));
        }
        for (const auto& [column, id] : imported.columnNames) {
            lines.push_back("column " + column + " -> " + id);
        }
        for (const ImportNote& note : imported.notes) {
            lines.push_back("note " + std::to_string(note.place.line) + " " + note.name + ": " +
                            note.text);
        }
        // What is imported is a questionnaire as it is.
        QuestionnaireFiles files = {{"questionnaire.json", writeQuestionnaire(model)}};
        try {
            const Questionnaire read = Questionnaire::Read(files, "q");
            EXPECT_EQ(writeQuestionnaire(read.Model()), files["questionnaire.json"]);
        } catch (const QuestionnaireFaults& faults) {
            ADD_FAILURE() << faults.what() << "\n" << files["questionnaire.json"];
        }
    } catch (const InputError& fault) {
        lines.push_back("!" + std::to_string(fault.GetPlace().line) + ":" +
                        std::to_string(fault.GetPlace().column) + " " + fault.what());
    }
    return lines;
}

std::vector<std::string> dictionary(const std::string& rows) {
    return shownImport(importDictionary, cHeader + rows);
}

TEST(QuestionnaireImport, TakesDictionariesAsTheyAre) {
    EXPECT_THAT(
        dictionary(
            "record_id,mood,,text,Record,,,,,,,,,,,,,\n"
            "m1,mood,<h1>Mood</h1>,radio,\"<b>I <!-- a > b -->am</b><style>p{}</STYLE > sad &amp; "
            "tired,\nmostly\",\"0, Never | 1, "
            "Sometimes, or so | 2,Often|\",,,,,,,y,,1,g,,\n"
            "m2,mood,,dropdown,I sleep&#33;,\"0, Never | 1, Sometimes, or so | 2, "
            "Often\",So &lt;3,,,,,\"[m1] > 0\",,,2,g,y,@HIDDEN\n"
            "text,mood,,yesno,Ever?,,,,,,,,,,,,,\n"
            "sex,mood,,radio,Sex,\"f, female | m, male\",,,,,,,,,,,,\n"
            "who,mood,,radio,Who,\"1, me | -1, you\",,,,,y,,,,,,,\n"
            "kind,mood,,radio,Kind,\"01, a | b, \",,,,,,,,,,,,\n"
            "pain,mood,,slider,Pain,left | middle | right,,number,1,10,,,,,,,,\n"
            "box,mood,,checkbox,Which,\"1, A | -2, B\",,,,,,,,,,,,\n"
            "none,mood,,checkbox,None,,,,,,,,,,,,,\n"
            "twice,mood,,radio,Twice,\"1, A | 1, B\",,,,,,,,,,,,\n"
            "born,mood,,text,Born,,,date_dmy,1900-01-01,,y,,,,,,,\n"
            "age,two,,text,Age,,,integer,17.5,[m1],,,,,,,,\n"
            "odd,two,,text,Odd,,,integer,0.2,0.9,,,,,,,,\n"
            "kg,two,,text,\xC5\x81 kg,,,number_1dp_comma_decimal,\"0,5\",,,,,,,,,\n"
            "mail,two,,text,,,,email,,,,,,,,,,\n"
            "more,two,,notes,More,,,,,,,,,,,,,\n"
            "sum,two,,calc,Sum,[m1]+[m2],,,,,,,,,,,,\n"
            "file,two,,file,File,,,,,,,,,,,,,\n"
            "M1,two,,truefalse,Again,,,,,,,,,,,,,\n"
            "2nd,two,,truefalse,Second,,,,,,,,,,,,,\n"
            "RespondentID,two,,yesno,Id,,,,,,,,,,,,,\n"
            "a_name_that_is_much_too_long_for_it,two,,truefalse,Long,,,,,,,,,,,,,\n"
            "a_name_that_is_much_too_long_for_this,two,,truefalse,Long,,,,,,,,,,,,,\n"),
        ElementsAre(
            "answers1: 0=Never(0.00) 1=Sometimes, or so(1.00) 2=Often(2.00)",
            "answers2: 1=Yes(1.00) 0=No(0.00)", "answers3: 01=a b=b", "answers4: 1..10",
            "answers5: 1=Checked(1.00) 0=Unchecked(0.00)", "answers6: 1=True(1.00) 0=False(0.00)",
            "m1 'I am sad & tired, mostly' answers1", "m2 'I sleep!' answers1",
            "text_2 'Ever?' answers2", "kind 'Kind' answers3", "pain 'Pain' answers4",
            "box___1 'Which: A' answers5", "box____2 'Which: B' answers5", "M1_2 'Again' answers6",
            "I2nd 'Second' answers6", "RespondentID_2 'Id' answers2",
            "a_name_that_is_much_too_ 'Long' answers6", "a_name_that_is_much_to_2 'Long' answers6",
            "field sex 'Sex' 3 f=female m=male", "field who 'Who' 3 1=me -1=you",
            "field born 'Born' 4", "field age 'Age' 1", "field odd 'Odd' 1", "field kg 'L kg' 2",
            "field mail 'mail' 0", "field more 'More' 0", "column 2nd -> I2nd", "column M1 -> M1_2",
            "column RespondentID -> RespondentID_2",
            "column a_name_that_is_much_too_long_for_it -> a_name_that_is_much_too_",
            "column a_name_that_is_much_too_long_for_this -> a_name_that_is_much_to_2",
            "column text -> text_2",
            "note 2 record_id: stays behind: it is the id of the respondents, see --id of batch",
            "note 3 m1: stands under the heading 'Mood', which stays behind",
            "note 5 m2: has the note 'So <3', which stays behind",
            "note 5 m2: is asked under a condition there ([m1] > 0): a missing answer counts as "
            "missing here",
            "note 5 m2: has the annotation '@HIDDEN', which has no effect here",
            "note 5 m2: is a rank there: that no rank is given twice is not checked here",
            "note 6 text: is called text_2 here, as names of variables must be",
            "note 9 kind: has codes that are no numbers: give each choice a 'value' where a scale "
            "is to count it",
            "note 10 pain: has the labels 'left | middle | right', which stay behind",
            "note 12 none: stays behind: it has no choices",
            "note 13 twice: stays behind: a choice has no code of its own",
            "note 14 born: has the end '1900-01-01', which is not checked here",
            "note 15 age: has the end '[m1]', which is not checked here",
            "note 16 odd: has no numbers between its ends: all may be given",
            "note 17 kg: has a decimal comma there, see --decimal-comma of batch",
            "note 17 kg: has letters that reports lack: the nearest ones stand for them",
            "note 18 mail: becomes a text, whose form ('email') is not checked",
            "note 20 sum: stays behind: it is computed: make a scale of it, or a value in the "
            "template of derived values",
            "note 21 file: stays behind: a file can't be an answer",
            "note 22 M1: is called M1_2 here, as names of variables must be",
            "note 23 2nd: is called I2nd here, as names of variables must be",
            "note 24 RespondentID: is called RespondentID_2 here, as names of variables must be",
            "note 25 a_name_that_is_much_too_long_for_it: is called a_name_that_is_much_too_ "
            "here, as names of variables must be",
            "note 26 a_name_that_is_much_too_long_for_this: is called a_name_that_is_much_to_2 "
            "here, as names of variables must be",
            "note 1 : does not tell its language: look over 'language', here \"en\"",
            "note 1 : has 2 forms, which become one questionnaire: take out what is not of it",
            "note 1 : fields that must be answered there: 1; here an answer may be missing"));
}

TEST(QuestionnaireImport, RefusesWhatIsNoDictionary) {
    EXPECT_THAT(shownImport(importDictionary, "a,b\n1,2\n"),
                ElementsAre(HasSubstr("!1:1 no column 'Variable / Field Name'")));
    EXPECT_THAT(dictionary(""), ElementsAre("!1:1 no field can be an item"));
    EXPECT_THAT(dictionary("a,m,,radio,A,,,,,,,,,,,,,\n"),
                ElementsAre("!1:1 no field can be an item; a: stays behind: it has no choices"));
    EXPECT_THAT(dictionary("a,m,,yesno,A,,,,,,,,,,,,,\na,m,,yesno,A,,,,,,,,,,,,,\n"),
                ElementsAre("!3:1 duplicate field"));
}

/// Neither names with a long start in common nor tags without an end take long.
TEST(QuestionnaireImport, IsSoonDoneWithLargeFiles) {
    std::string rows = "a,m,,yesno,\"";
    for (int i = 0; i < 300000; ++i) rows += i % 2 == 0 ? "<!--" : "<b";
    rows += "\",,,,,,,,,,,,,\n";
    for (int i = 0; i < 9000; ++i) {
        rows += "names_that_start_with_the_same_" + std::to_string(i) + ",m,,yesno,,,,,,,,,,,,,,\n";
    }
    EXPECT_EQ(dictionary(rows).size(), 1U + 9001 + 2 * 9000 + 1);
}

constexpr const char* cFhir = R"~({
  "resourceType": "Questionnaire", "name": "PHQ 2", "title": "Two questions", "status": "draft",
  "url": "http://example.org/q", "version": "3",
  "contained": [
    {"resourceType": "ValueSet", "id": "freq", "url": "http://example.org/freq", "compose": {"include": [{"system": "http://loinc.org",
      "concept": [{"code": "LA1", "display": "Not at all", "extension": [
                     {"url": "http://hl7.org/fhir/StructureDefinition/ordinalValue", "valueDecimal": 0}]},
                  {"code": "LA2", "display": "Daily", "extension": [
                     {"url": "http://hl7.org/fhir/StructureDefinition/itemWeight", "valueDecimal": 3}]}]}]}},
    {"resourceType": "ValueSet", "id": "late", "expansion": {"contains": [
      {"code": "a", "display": "Rarely (1)"}, {"code": "b", "display": "Often (2.5)"}]}}],
  "item": [
    {"linkId": "g", "type": "group", "text": "Two weeks", "item": [
      {"linkId": "/44250-9", "text": "Interest", "type": "choice", "answerValueSet": "#freq"},
      {"linkId": "q2", "text": "Mood\n <b> ", "type": "choice", "answerValueSet": "http://example.org/freq", "repeats": true,
       "enableWhen": [{"question": "/44250-9", "operator": "exists", "answerBoolean": true}]}]},
    {"linkId": "q3", "text": "Sleep", "type": "open-choice", "answerValueSet": "#late"},
    {"linkId": "q4", "text": "Plain", "type": "choice", "answerOption": [
      {"valueCoding": {"code": "x", "display": "X"}}, {"valueString": "Y"}],
     "item": [{"linkId": "q4.1", "text": "Why", "type": "string"}]},
    {"linkId": "q5", "text": "How many", "type": "choice",
     "answerOption": [{"valueInteger": 1}, {"valueInteger": 5}]},
    {"linkId": "q6", "text": "Pain", "type": "integer", "extension": [
      {"url": "http://hl7.org/fhir/StructureDefinition/minValue", "valueInteger": 0},
      {"url": "http://hl7.org/fhir/StructureDefinition/maxValue", "valueInteger": 10}]},
    {"linkId": "q7", "text": "Age", "type": "integer"},
    {"linkId": "q8", "text": "Ever", "type": "boolean"},
    {"linkId": "q9", "text": "Far", "type": "choice", "answerValueSet": "http://example.org/vs"},
    {"linkId": "46098-0", "text": "Sex", "type": "choice", "answerOption": [
      {"valueCoding": {"code": "f", "display": "female"}, "extension": [{"url": "http://hl7.org/fhir/StructureDefinition/ordinalValue", "valueDecimal": 0}]}, {"valueCoding": {"display": "m"}}]},
    {"linkId": "q10", "text": "When", "type": "date"},
    {"linkId": "q11", "text": "Photo", "type": "attachment"},
    {"linkId": "q12", "text": "Read this", "type": "display"},
    {"linkId": "q13", "text": "Weight", "type": "quantity"},
    {"linkId": "q14", "text": "Which", "type": "choice", "answerOption": [
      {"valueReference": {"reference": "x/1"}}]},
    {"linkId": "q15", "text": "Which", "type": "choice", "answerOption": [
      {"valueString": "a"}, {"valueString": "a"}]},
    {"linkId": "q16", "text": "How", "type": "choice", "answerOption": [
      {"valueInteger": 4}, {"valueString": "n/a"}]}]})~";

TEST(QuestionnaireImport, TakesFhirQuestionnaires) {
    EXPECT_THAT(
        shownImport(importFhirQuestionnaire, cFhir),
        ElementsAre(
            "answers1: LA1=Not at all(0.00)@http://loinc.org LA2=Daily(3.00)@http://loinc.org",
            "answers2: a=Rarely (1)(1.00) b=Often (2.5)(2.50)", "answers3: x=X(0.00) Y=Y(1.00)",
            "answers4: 1=1(1.00) 5=5(5.00)", "answers5: 0..10",
            "answers6: true=Yes(1.00) false=No(0.00)", "answers7: 4=4(4.00) n/a=n/a",
            "I44250_9 'Interest' answers1 <- /44250-9", "q2 'Mood <b>' answers1",
            "q3 'Sleep' answers2", "q4 'Plain' answers3", "q5 'How many' answers4",
            "q6 'Pain' answers5", "q8 'Ever' answers6", "q16 'How' answers7",
            "field q4_1 'Why' 0 <- q4.1", "field q7 'Age' 1",
            "field I46098_0 'Sex' 3 f=female(0.00) m=m <- 46098-0", "field q10 'When' 4",
            "field q13 'Weight' 2",
            "note 13 g: stays behind: the text 'Two weeks' is shown, not answered",
            "note 14 /44250-9: is called I44250_9 here, as names of variables must be",
            "note 15 q2: is asked under a condition there: a missing answer counts as missing here",
            "note 15 q2: may have several answers there: such a response fails here",
            "note 17 q3: may be answered freely there: such an answer fails here",
            "note 18 q4: has no numbers behind its choices: they count from 0 in their order; look "
            "whether that is meant",
            "note 20 q4.1: is called q4_1 here, as names of variables must be",
            "note 26 q7: becomes an entry of the form, as its least and greatest number are not "
            "given",
            "note 28 q9: stays behind: its choices are those of http://example.org/vs, which are "
            "not part of the file",
            "note 29 46098-0: is called I46098_0 here, as names of variables must be",
            "note 32 q11: stays behind: questions of the type 'attachment' can't be answered here",
            "note 33 q12: stays behind: the text 'Read this' is shown, not answered",
            "note 34 q13: becomes a number: its unit is not checked",
            "note 35 q14: stays behind: a choice has no value that can be chosen",
            "note 37 q15: stays behind: a code is there twice",
            "note 39 q16: has choices without a number, for instance that it does not apply: give "
            "each one a 'value' where a scale is to count it",
            "note 1 : does not tell its language: look over 'language', here \"en\""));
    const auto changed = [](const std::string& from, const std::string& to) {
        std::string text = cFhir;
        return shownImport(importFhirQuestionnaire, text.replace(text.find(from), from.size(), to));
    };
    EXPECT_THAT(changed("\"Questionnaire\"", "\"Patient\""),
                ElementsAre(HasSubstr("is no FHIR Questionnaire")));
    EXPECT_THAT(changed("\"q3\"", "\"q2\""), ElementsAre(HasSubstr("duplicate linkId 'q2'")));
    EXPECT_THAT(changed("\"linkId\": \"q6\"", "\"linkId\": \"q6\", \"modifierExtension\": []"),
                ElementsAre(HasSubstr("/item/4/modifierExtension")));
    EXPECT_THAT(
        changed("{\"valueInteger\": 5}", "{\"valueInteger\": 5, \"modifierExtension\": []}"),
        ElementsAre(HasSubstr("/item/3/answerOption/1/modifierExtension")));
    EXPECT_THAT(changed("\"status\"", "\"modifierExtension\""),
                ElementsAre(HasSubstr("/modifierExtension")));
}

TEST(QuestionnaireImport, SurvivesDamage) {
    Dice dice(8);
    const std::string rows = std::string(cHeader) +
                             "m1,mood,,radio,\"<b>I am</b>\",\"0, Never | 1, x\",,,,,,,y,,1,g,,\n";
    for (const auto& [import, text] : {std::pair(&importDictionary, rows),
                                       std::pair(&importFhirQuestionnaire, std::string(cFhir))}) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            shownImport(import, text.substr(0, i));
            if (dice.OneIn(2)) continue;
            std::string damaged = text;
            damaged[i] = static_cast<char>(damaged[i] ^ (1 << dice.Below(8)));
            shownImport(import, damaged);
        }
    }
}

/// Every key, with letters in names that need more than a byte in UTF-8.
QuestionnaireFiles everyKeyWithLetters() {
    QuestionnaireFiles files = everyKey();
    for (auto& [name, text] : files) {
        for (const auto& [from, to] : {std::pair<std::string, std::string>("\"r\"", "\"r\u00e4\""),
                                       {"\"f\"", "\"f\u00e4\""},
                                       {",f,", ",f\u00e4,"},
                                       {"\"sex\"", "\"s\u00e4\""},
                                       {",sex,", ",s\u00e4,"}}) {
            for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;) {
                text.replace(at, from.size(), to);
            }
        }
    }
    return files;
}

/// What is written reads back as the same, and is the same when it is written again.
TEST(QuestionnaireImport, ModelsAreWrittenWhole) {
    Dice dice(2);
    for (int round = 0; round < 100; ++round) {
        QuestionnaireFiles files = round == 0   ? everyKeyWithLetters()
                                   : round == 1 ? everyKey()
                                                : RandomQuestionnaire(dice).Files();
        const Questionnaire first = Questionnaire::Read(files, "q");
        files["questionnaire.json"] = writeQuestionnaire(first.Model());
        const Questionnaire second = Questionnaire::Read(files, "q");
        ASSERT_EQ(writeQuestionnaire(second.Model()), files["questionnaire.json"]);
        if (round > 1) continue;
        EXPECT_EQ(second.Model().responseSets[0].id, first.Model().responseSets[0].id);
        for (const char* part :
             {"http://x", "\"weight\": -0.5", "\"reverse\": true", "/3", "\"n\"",
              "\"birth\": \"Born\"", "\": \"Sex\"", "\"confidence\": 90", "\"normFactor\": 2",
              "\"length\": 30", "midpoint", "\"value\": 1.5"}) {
            EXPECT_THAT(files["questionnaire.json"], HasSubstr(part));
        }
    }
}

}  // namespace
}  // namespace tessalink::test
