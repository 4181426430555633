#include "apps/desk/windows/SampleFile.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/windows/DeskText.h"
#include "platform/base/CodePage.h"
#include "questionnaire/ValueText.h"

namespace tessalink::desk {

namespace {

/// An invented person. `leaning` moves all answers along their scale, `share` says how many of the
/// items are answered, in percent.
struct Person {
    const char* id;
    const char* name;
    const char* sex;
    int age;
    int leaning;
    int share;
};

constexpr int cWhole = 100;
constexpr std::array<Person, 7> cFirst = {{{"P-101", "Anna Berg", "f", 39, 1, cWhole},
                                           {"P-102", "Emil Sander", "m", 52, 0, cWhole},
                                           {"P-103", "Ida Lind", "f", 27, 2, cWhole},
                                           {"P-104", "Jonas Frey", "m", 44, -1, cWhole},
                                           {"P-105", "Mia Torres", "f", 31, 0, cWhole},
                                           {"P-106", "Noel Haas", "o", 23, 1, 64},
                                           {"P-107", "Ruth Keller", "f", 61, 0, 0}}};
constexpr std::array<Person, 5> cSecond = {{{"P-201", "Ben Okafor", "m", 35, 1, cWhole},
                                            {"P-202", "Clara Novak", "f", 48, 0, cWhole},
                                            {"P-203", "David Roth", "m", 29, -1, cWhole},
                                            {"P-204", "Eva Simon", "f", 57, 2, 94},
                                            {"P-205", "Finn Wolter", "m", 19, 0, 31}}};

/// 9 March 2026, 8 o'clock UTC; each act of the sample is some minutes after the one before.
constexpr std::int64_t cStart = 1'773'043'200;
constexpr std::int64_t cStep = 420;

void addField(const Questionnaire& questionnaire, const char* id, const std::string& text,
              std::vector<Entry>& entries) {
    const auto field = questionnaire.FindField(id);
    FieldValue value;
    if (!field || !readField(questionnaire.Model().fields[*field], text, value).empty()) return;
    entries.push_back({{EntryKind::Field, id}, text});
}

/// The position of the choice, from 1: near the middle, moved by the leaning.
int choiceOf(std::size_t item, std::size_t seed, int leaning, int count) {
    constexpr std::size_t cSpread = 5;
    const auto wobble = static_cast<int>((item * 7 + seed * 11 + item / 3) % cSpread) - 2;
    const int position = (count + 1) / 2 + wobble + (item % 2 == 0 ? leaning : 0);
    return std::min(std::max(position, 1), count);
}

NewCase caseOf(const Questionnaire& questionnaire, const Person& person, std::size_t seed) {
    NewCase made;
    made.label = person.id;
    addField(questionnaire, "Name", person.name, made.entries);
    addField(questionnaire, "Sex", person.sex, made.entries);
    addField(questionnaire, "Age", std::to_string(person.age), made.entries);
    addField(questionnaire, "TestDate", "2026-03-09", made.entries);
    const QuestionnaireModel& model = questionnaire.Model();
    const std::size_t answered =
        model.items.size() * static_cast<std::size_t>(person.share) / cWhole;
    for (std::size_t i = 0; i < answered; ++i) {
        const ResponseSet& set = model.responseSets[model.items[i].responses];
        const int count = static_cast<int>(set.choices.size());
        made.entries.push_back({{EntryKind::Answer, toUtf8(model.items[i].id.View())},
                                answerText(set, choiceOf(i, seed, person.leaning, count))});
    }
    if (person.share == cWhole) made.state = CaseState::Complete;
    return made;
}

Questionnaire read(const QString& folder) {
    return Questionnaire::Read(pathOf(folder));
}

template <std::size_t COUNT>
void add(CaseStore& store, const Questionnaire& questionnaire,
         const std::array<Person, COUNT>& persons) {
    std::vector<NewCase> cases;
    cases.reserve(COUNT);
    for (const Person& person : persons) {
        cases.push_back(caseOf(questionnaire, person, cases.size() + 1));
    }
    store.AddCases(questionnaire, cases);
}

}  // namespace

void makeSample(const QString& path, const QString& instruments) {
    const Questionnaire first = read(instruments + "/bigfive");
    const Questionnaire second = read(instruments + "/interpersonal");
    CaseStoreOptions options;
    options.account = "practice";
    options.initials = "AB";
    options.clock = [now = cStart]() mutable { return now += cStep; };
    CaseStore store = CaseStore::Create(utf8Of(path), options);
    add(store, first, cFirst);
    add(store, second, cSecond);
    store.Sync();
}

}  // namespace tessalink::desk
