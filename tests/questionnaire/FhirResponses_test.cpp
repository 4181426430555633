#include "questionnaire/FhirResponses.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/InputError.h"
#include "platform/files/CMemFile.h"
#include "tests/questionnaire/ShownRespondent.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

constexpr const char* cQuestionnaire = R"({
  "id": "mini", "title": "Mini", "version": "2", "language": "en", "licence": "none",
  "source": "invented",
  "responseSets": {
    "freq": {"choices": [{"code": "LA-1", "label": "never", "value": 0, "system": "http://loinc.org"},
                         {"code": "LA-2", "label": "\u00e4fter", "value": 2}]},
    "count": {"whole": [-5, 20]}},
  "items": [{"id": "Q1", "linkId": "/q/1", "text": "One", "responses": "freq"},
            {"id": "Q2", "text": "Two", "responses": "count"}],
  "fields": [{"id": "Name", "label": "Name", "type": "text"},
             {"id": "Years", "label": "Years", "type": "integer", "min": 0, "max": 99},
             {"id": "Weight", "label": "Weight", "type": "decimal", "min": 0, "max": 300},
             {"id": "Born", "label": "Born", "type": "date"},
             {"id": "Began", "label": "Began", "type": "time"},
             {"id": "Sex", "linkId": "sex", "label": "Sex", "type": "choice",
              "choices": [{"code": "f", "label": "female"}, {"code": "m", "label": "male"}]}],
  "reports": []})";

Questionnaire mini() {
    return Questionnaire::Read(QuestionnaireFiles{{"questionnaire.json", cQuestionnaire}}, "mini");
}

std::vector<std::string> readResponses(std::string_view text) {
    CMemFile file(text);
    file.SetFilePath("r.json");
    std::vector<std::string> rows;
    try {
        FhirResponses responses(file, mini());
        for (ResponseBlock block; responses.ReadBlock(block);) {
            responses.Parse(block, [&](RespondentRow& row) { rows.push_back(shown(row)); });
        }
    } catch (const InputError& fault) {
        rows.push_back("whole: " + std::to_string(fault.GetPlace().line) + ": " + fault.what());
    }
    return rows;
}

std::string response(const std::string& items, const std::string& status = "completed") {
    return R"({"resourceType":"QuestionnaireResponse","id":"r","status":")" + status +
           R"(","item":[)" + items + "]}";
}

Respondent randomPerson(Dice& dice) {
    Respondent person;
    person.id = dice.Pick(std::vector<std::string>{"a", "\xC5\x81\"\\", "Patient 7"});
    person.answers.resize(2);
    if (!dice.OneIn(4)) person.answers[0] = 1 + static_cast<int>(dice.Below(2));
    if (!dice.OneIn(4)) person.answers[1] = static_cast<int>(dice.Below(26)) - 5;
    person.fields.resize(6);
    const auto maybe = [&](std::size_t field, FieldValue value) {
        if (!dice.OneIn(4)) person.fields[field] = std::move(value);
    };
    maybe(0, dice.Pick(std::vector<std::string>{"Ann", "\"{}\"\n\\", "\xF0\x9F\x98\x80 x y"}));
    maybe(1, static_cast<std::int32_t>(dice.Below(100)));
    maybe(2, static_cast<double>(dice.Below(3000)) / 16);
    maybe(3,
          Date(1950 + static_cast<int>(dice.Below(70)), 2, 1 + static_cast<int>(dice.Below(28))));
    maybe(4, Time(static_cast<int>(dice.Below(24)), 5, static_cast<int>(dice.Below(2))));
    maybe(5, static_cast<std::int32_t>(1 + dice.Below(2)));
    return person;
}

/// As lines, as a Bundle, and indented: what is read is what was written.
TEST(FhirResponses, ReadsWhatItWrites) {
    Dice dice(9);
    const Questionnaire questionnaire = mini();
    for (int round = 0; round < 200; ++round) {
        std::string lines;
        std::string bundle =
            "\n {\"resourceType\":\"Bundle\",\"entry\":[\n{\"resource\":{"
            "\"resourceType\":\"Patient\"}}";
        std::vector<std::string> expected;
        for (std::size_t i = 1; i <= 1 + dice.Below(4); ++i) {
            RespondentRow row;
            row.number = i;
            row.respondent = randomPerson(dice);
            const std::string json = writeFhirResponse(questionnaire, row.respondent);
            ASSERT_EQ(json.find('\n'), std::string::npos);
            lines += json + (dice.OneIn(2) ? "\n" : "\r\n\n");
            bundle += ",\n{\"resource\":" + json + "}";
            expected.push_back(shown(row));
        }
        bundle += "]}";
        for (const std::string& text : {lines, bundle}) {
            std::vector<std::string> rows = readResponses(text);
            for (std::string& row : rows) {  // the lines differ
                const std::size_t at = row.find('@');
                row.replace(at, row.find(' ') - at, "@0");
            }
            ASSERT_EQ(rows, expected) << text;
        }
    }
}

TEST(FhirResponses, TakesAnswersInTheirForms) {
    const struct {
        std::string items;
        std::string row;
    } cases[] = {
        {R"({"linkId":"/q/1","answer":[{"valueCoding":{"code":"LA-2"}}]})", "|2|||||||"},
        {R"({"linkId":"/q/1","answer":[{"valueInteger":2}]})", "|2|||||||"},
        {R"({"linkId":"/q/1","answer":[{"valueString":"äfter"}]})", "|2|||||||"},
        {R"({"linkId":"/q/1","answer":[{"valueCoding":{"code":"LA-1","system":"http://x"}}]})",
         "!/q/1! line 1, column 121: /item/0/answer/0/valueCoding: 'LA-1' is not a code of "
         "http://x; there are LA-1, LA-2"},
        {R"({"linkId":"g","item":[{"linkId":"Q2","answer":[{"valueDecimal":7.0,"item":[)"
         R"({"linkId":"sex","answer":[{"valueCoding":{"code":"m"}}]}]}]}]})",
         "||7||||||2"},
        {R"({"linkId":"Q2","answer":[{"valueDecimal":7.5}]})",
         "!Q2! line 1, column 120: /item/0/answer/0/valueDecimal: '7.5' is not a whole number from "
         "-5 to 20"},
        {R"({"linkId":"Born","answer":[{"valueDateTime":"2001-02-03T10:00:00Z"}]})",
         "|||||20010203||"},
        {R"({"linkId":"Began","answer":[{"valueTime":"09:05:00.000"}]})", "||||||90500|"},
        {R"({"linkId":"Weight","answer":[{"valueQuantity":{"value":70.5,"unit":"kg"}}]})",
         "|||||70.500000|||"},
        {R"({"linkId":"Q2","answer":[{"valueInteger":1},{"valueInteger":2}]})",
         "!Q2! line 1, column 103: /item/0/answer: has several answers: one can be taken"},
        {R"({"linkId":"Q2"},{"linkId":"Q2"})",
         "!Q2! line 1, column 95: /item/1: the question is there twice"},
        {R"({"linkId":"other"})",
         "!! line 1, column 78: /item: no question has a linkId of the questionnaire: give its "
         "items and fields the linkIds of these responses"},
    };
    for (const auto& test : cases) {
        const std::vector<std::string> rows = readResponses(response(test.items));
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_NE(rows[0].find(test.row.substr(0, test.row.size() - 1)), std::string::npos)
            << test.items << "\n"
            << rows[0];
    }
}

TEST(FhirResponses, KnowTheirSubjects) {
    const std::pair<std::string, std::string> cases[] = {
        {R"({"identifier":{"value":"a b"},"reference":"Patient/7"})", "a b"},
        {R"({"reference":"Patient/7"})", "7"},
        {R"({"reference":"http://example.org/fhir/Patient/7/_history/2"})", "7"},
        {R"({"reference":"urn:uuid:0c3151bd-1cbf"})", "0c3151bd-1cbf"},
        {R"({"display":"Ann"})", "r"},
    };
    for (const auto& [subject, id] : cases) {
        const std::string text = R"({"resourceType":"QuestionnaireResponse","id":"r","status":)"
                                 R"("amended","subject":)" +
                                 subject + "}";
        EXPECT_EQ(readResponses(text).at(0).substr(0, 4 + id.size() + 1), "1@1 " + id + "|");
    }
}

/// Only finished responses count, and a damaged line costs no other one.
TEST(FhirResponses, FailOneByOne) {
    const std::string good = response(R"({"linkId":"Q2","answer":[{"valueInteger":3}]})");
    const std::vector<std::string> rows =
        readResponses(good + "\n" + response("", "in-progress") + "\n{\"resourceType\":\n" +
                      R"({"resourceType":"Patient"})" + "\n" + good);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[0], "1@1 r||3||||||");
    EXPECT_NE(rows[1].find("2@2 r !! line 2, column 59: /status: is 'in-progress': only responses"),
              std::string::npos)
        << rows[1];
    EXPECT_NE(rows[2].find("3@3  !! line "), std::string::npos) << rows[2];
    EXPECT_NE(rows[3].find("is no QuestionnaireResponse"), std::string::npos) << rows[3];
    EXPECT_EQ(rows[4], "5@5 r||3||||||");
    Dice dice(3);
    for (std::size_t i = 0; i < good.size(); ++i) {
        std::string damaged = good;
        damaged[i] = static_cast<char>(damaged[i] ^ (1 << dice.Below(8)));
        if (damaged[i] == '\n') continue;
        const std::vector<std::string> three = readResponses(good + "\n" + damaged + "\n" + good);
        ASSERT_EQ(three.size(), 3U) << damaged;
        ASSERT_EQ(three[0], rows[0]);
        ASSERT_EQ(three[2].substr(3), rows[0].substr(3));
        readResponses(good.substr(0, i));
        readResponses(damaged);
    }
}

}  // namespace
}  // namespace tessalink::test
