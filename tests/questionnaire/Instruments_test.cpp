// The questionnaires that ship.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <regex>
#include <string>
#include <string_view>
#include <variant>

#include "platform/files/CMemFile.h"
#include "questionnaire/RespondentReports.h"
#include "tests/support/Dice.h"
#include "tests/support/SoundRtf.h"

namespace tessalink::test {
namespace {

constexpr double cDegree = 3.14159265358979323846 / 180;

Questionnaire instrument(const std::string& name) {
    return Questionnaire::Read((TESSALINK_SOURCE_DIR "/instruments/" + name).c_str());
}

/// A person in whose answers about one in `gap` is missing. The sex is there: norms ask for it.
Respondent anyone(Dice& dice, const QuestionnaireModel& model, std::size_t gap) {
    Respondent person;
    person.id = "p1";
    for (const Item& item : model.items) {
        const auto& choices = model.responseSets[item.responses].choices;
        const auto answer = static_cast<std::int32_t>(1 + dice.Below(choices.size()));
        person.answers.push_back(dice.OneIn(gap) ? Answer() : answer);
    }
    for (const Field& field : model.fields) {
        const bool isLeftOut = field.id != "Sex" && dice.OneIn(3);
        person.fields.push_back(
            isLeftOut                            ? FieldValue()
            : field.type == Field::Type::Integer ? FieldValue(40)
            : field.type == Field::Type::Date    ? FieldValue(Date(2024, 2, 29))
            : field.type == Field::Type::Choice
                ? FieldValue(static_cast<std::int32_t>(1 + dice.Below(field.choices.size())))
                : FieldValue(std::string("Zo\xC3\xAB O'Brien {jr}")));
    }
    return person;
}

/// What readers of RTF see, without the digits of pictures, which may spell anything.
std::string textOf(const CMemFile& output) {
    constexpr std::ptrdiff_t picture = 64;
    const std::string_view all = output.View();
    std::string text;
    for (auto from = all.begin(); from != all.end();) {
        const auto end = std::find_if(from, all.end(), [](char ch) {
            return std::string_view("0123456789abcdef\r\n").find(ch) == std::string_view::npos;
        });
        const auto next = end == all.end() ? end : end + 1;
        if (end - from > picture) from = end;
        std::copy_if(from, next, std::back_inserter(text),
                     [](char ch) { return ch != '\r' && ch != '\n'; });
        from = next;
    }
    return text;
}

int count(const std::string& text, const char* control) {
    const std::regex word(std::string("\\\\") + control + "(?![a-z])");
    return static_cast<int>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), word), {}));
}

TEST(Instruments, ReportOnAnyoneInSoundRtf) {
    for (const char* name : {"bigfive", "interpersonal"}) {
        const Questionnaire questionnaire = instrument(name);
        const Scorer scorer(questionnaire);
        RespondentReports reports(questionnaire);
        Dice dice(16);
        for (const std::size_t gap : {1000U, 30U, 10U, 3U, 1U}) {
            const Respondent person = anyone(dice, questionnaire.Model(), gap);
            Scores scores;
            scorer.Score(person, scores);
            reports.SetRespondent(person, scores);
            for (std::size_t i = 0; i < questionnaire.Model().reports.size(); ++i) {
                SCOPED_TRACE(std::string(name) + " " + std::to_string(gap));
                CMemFile output;
                reports.Write(i, output);
                const std::string text = textOf(output);
                expectSoundRtf(text);
                EXPECT_FALSE(std::regex_search(text, std::regex("\\b(nan|inf)\\b")));
                EXPECT_EQ(count(text, "trowd"), count(text, "trkeep")) << "rows that may be parted";
                EXPECT_GT(count(text, "trhdr"), 0);
            }
        }
    }
}

/// Answers that fall off with the angle from some octant, whose items stand 45 degrees apart from
/// the top on: those of a person right in the middle of its sector.
TEST(Instruments, CirclePointsWhereTheAnswersDo) {
    const Questionnaire questionnaire = instrument("interpersonal");
    for (int octant = 0; octant < 8; ++octant) {
        Respondent person;
        for (int item = 0; item < 32; ++item) {
            const double away = std::cos((90 + 45 * item - 45 * octant) * cDegree);
            person.answers.emplace_back(static_cast<int>(std::lround(3 + 2 * away)));
        }
        person.fields.resize(questionnaire.Model().fields.size());
        person.fields[1] = 1;
        Scores scores;
        Scorer(questionnaire).Score(person, scores);
        EXPECT_EQ(octant + 1, scores.vectors[0].sector);
        EXPECT_NEAR(0, std::remainder(*scores.vectors[0].angle - 45 * octant, 360), 1e-9);
    }
}

}  // namespace
}  // namespace tessalink::test
