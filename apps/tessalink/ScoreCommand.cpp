#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/DateText.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/VariablesInput.h"
#include "platform/base/CodePage.h"
#include "platform/files/WholeFile.h"
#include "report/PlainText.h"
#include "scores/NormTable.h"
#include "scores/Reliability.h"

namespace tessalink::cli {

namespace {

constexpr const char* cScaleKey = "scale";
constexpr const char* cBirthVariable = "BirthDate";
constexpr const char* cTestVariable = "TestDate";
constexpr const char* cAgeVariable = "Age";
constexpr const char* cAgeRemedy =
    "; give --age, --birth and --test, or variables BirthDate and TestDate, or Age";

/// A text that an option or a variable gives.
struct Given {
    CString name;
    CString text;
    TextPlace place;  ///< of the variable's value; unknown for an option

    [[noreturn]] void Fail(const CString& message) const {
        if (place.IsKnown()) throw InputError(place, message);
        throw CException(name + ": " + message + ".");
    }
};

CString inQuotes(const CString& text) {
    return "'" + text + "'";
}

CString argumentText(std::string_view utf8) {
    const CodePageText text = fromUtf8(utf8);
    if (!text.IsWhole()) {
        throw CException(inQuotes(CString(utf8)) + " has a character that " +
                         codePageName().c_str() + " lacks.");
    }
    return CString(std::string_view(text.text));
}

/// What is known of the person: a raw file's variables, and what the options say instead.
class Person {
public:
    explicit Person(const ScoreOptions& options)
        : m_options(options), m_file(readVariables(options.raw, m_variables, &m_places)) {}

    const VarTable& Variables() const { return m_variables; }
    const CString& File() const { return m_file; }
    TextPlace PlaceOf(const CString& variable) const {
        const auto place = m_places.find(variable);
        return place != m_places.end() ? place->second : TextPlace{m_file, 1, 1};
    }

    /// A text, as plain text, or a whole number of that name.
    std::optional<Given> Variable(const char* name) const {
        const VariantVar* value = m_variables.Find(name);
        if (!value) return std::nullopt;
        Given given = {name, unescapeText(value->GetAsStr().View()), PlaceOf(name)};
        if (value->IsDouble()) given.Fail(inQuotes(name) + " must be a text or an int");
        return given;
    }

    /// The age in months: a month, or a year when only that is known.
    std::optional<AgeSpan> Age(Given& source) const {
        if (m_options.age) {
            source = {"--age", argumentText(*m_options.age), {}};
            return read_age(source);
        }
        const auto birth = date_text("--birth", m_options.birth, cBirthVariable);
        const auto test = date_text("--test", m_options.test, cTestVariable);
        if (birth && test) {
            source = *birth;
            return age_between(*birth, *test);
        }
        if (m_options.birth) birth->Fail("it needs --test, or a variable TestDate");
        if (m_options.test) test->Fail("it needs --birth, or a variable BirthDate");
        if (const auto age = Variable(cAgeVariable)) {
            source = *age;
            return read_age(source);
        }
        return std::nullopt;
    }

private:
    std::optional<Given> date_text(const char* name, const std::optional<std::string>& option,
                                   const char* variable) const {
        if (option) return Given{name, argumentText(*option), {}};
        return Variable(variable);
    }

    static AgeSpan read_age(const Given& given) {
        const auto age = parseAge(given.text.View());
        if (!age) {
            given.Fail(inQuotes(given.text) +
                       " is not an age: write years:months, as 9:4, or whole years");
        }
        return *age;
    }

    static Date valid(const Date& date, const Given& given) {
        if (!date.IsValid()) given.Fail(noDate(given.text.View()));
        return date;
    }

    static AgeSpan age_between(const Given& birth, const Given& test) {
        const Date birthDate = valid(parseDate(birth.text.View()), birth);
        const Date testDate = valid(parseTestDate(test.text.View()), test);
        if (testDate < birthDate) test.Fail("the test lies before the birth");
        int years = 0;
        int months = 0;
        int days = 0;
        testDate.Minus(birthDate, years, months, days);
        const int age = ageInMonths(years, months);
        return {age, age};
    }

    const ScoreOptions& m_options;
    VarTable m_variables;
    VariablePlaces m_places;
    CString m_file;
};

/// Looks up the raw scores of a person.
class Scoring {
public:
    Scoring(const ScoreOptions& options, const Person& person)
        : m_options(options), m_person(person), m_norms(read_norms()) {
        const auto keys = m_norms.GetKeys();
        const auto scale = std::find_if(keys.begin(), keys.end(), isScaleKey);
        if (scale == keys.end()) {
            throw InputError({m_file, m_norms.GetColumns().front().name.place.line, 1},
                             "no key is named 'scale': add a column with the names of the raw "
                             "scores in front of 'raw'");
        }
        m_scaleKey = scale->text;
        m_scales = m_norms.GetValues(m_scaleKey.View());
        check_names();
        take_keys(keys);
        if (m_norms.HasAges()) m_age = person.Age(m_ageSource);
    }

    /// The standard scores of all scales with a raw score.
    const VarTable& Score() {
        bool isAnyScored = false;
        for (const NormName& scale : m_scales) {
            if (m_person.Variables().Exists(scale.text)) {
                score_scale(scale);
                isAnyScored = true;
            } else {
                printAt(scale.place, "warning",
                        "no raw score " + inQuotes(scale.text) + " in " + m_person.File());
            }
        }
        if (!isAnyScored) {
            throw InputError({m_person.File(), 1, 1},
                             "no raw score: no variable has the name of a scale in " + m_file);
        }
        if (m_options.confidence && !m_hasIntervals) {
            printTrouble(
                "--confidence: no confidence intervals, as the norm table has no column T, IQ, SS, "
                "SN, "
                "ST or z with a reliability for this person");
        }
        return m_results;
    }

private:
    static bool isScaleKey(const NormName& key) { return key.text.CompareNoCase(cScaleKey) == 0; }

    NormTable read_norms() {
        const auto file = openInput(m_options.normsPath);
        m_file = file->GetGivenPath();
        return NormTable::Read(*file);
    }

    void check_names() const {
        for (const NormName& scale : m_scales) {
            if (isVariableName(scale.text.View())) continue;
            throw InputError(scale.place, inQuotes(scale.text) +
                                              " can't be the name of a raw score: use up to 32 "
                                              "letters, digits and \"_\", not starting with a "
                                              "digit");
        }
        for (const NormColumn& column : m_norms.GetColumns()) {
            if (isVariableName(("_" + column.name.text).View())) continue;
            throw InputError(column.name.place, inQuotes(column.name.text) +
                                                    " can't be part of a variable's name: use "
                                                    "letters, digits and \"_\"");
        }
    }

    void take_keys(const std::vector<NormName>& keys) {
        for (const std::string& argument : m_options.keys) {
            const CString text = argumentText(argument);
            const int sign = text.Find('=');
            const CString name = text.Left(std::max(sign, 0));
            const auto key = std::find_if(keys.begin(), keys.end(),
                                          [&](const NormName& k) { return k.text == name; });
            if (sign < 0 || key == keys.end() || isScaleKey(*key)) {
                throw CException("--key " + text + ": write NAME=VALUE with a key of " + m_file +
                                 " other than scale and age.");
            }
            if (m_given.contains(name)) {
                throw CException("--key " + text + ": " + name + " is given twice.");
            }
            m_given[name] = {"--key " + name, text.Mid(sign + 1), {}};
        }
        for (const NormName& key : keys) {
            if (isScaleKey(key) || m_given.contains(key.text)) continue;
            if (const auto value = m_person.Variable(key.text)) m_given[key.text] = *value;
        }
    }

    void score_scale(const NormName& scale) {
        const VariantVar& raw = *m_person.Variables().Find(scale.text.View());
        const TextPlace place = m_person.PlaceOf(scale.text);
        if (!raw.IsInt()) {
            throw InputError(place, inQuotes(scale.text) + " is a raw score: it must be an int");
        }
        try {
            const NormGroup group = group_of(scale.text);
            for (const NormColumn& column : m_norms.GetColumns()) {
                add_score(scale.text, raw.GetAsInt(), group, column);
            }
        } catch (const NormError& error) {
            fail(error, place);
        }
    }

    NormGroup group_of(const CString& scale) const {
        NormKeys keys = {{m_scaleKey, scale}};
        for (const auto& [name, given] : m_given) keys[name] = given.text;
        if (!m_age) return m_norms.FindGroup(keys);
        const NormGroup group = m_norms.FindGroup(keys, m_age->from);
        if (m_norms.FindGroup(keys, m_age->to).GetPlace().line != group.GetPlace().line) {
            m_ageSource.Fail("the norms of " + scale + " need an age in years and months, as 6:3");
        }
        return group;
    }

    void add_score(const CString& scale, int raw, const NormGroup& group,
                   const NormColumn& column) {
        const CString name = scale + "_" + column.name.text;
        const std::string_view columnName = column.name.text.View();
        if (const auto score = group.FindIfAny(raw, columnName)) {
            if (column.isWhole) {
                add(name, static_cast<int>(*score), column);
            } else {
                add(name, *score, column);
            }
            add_interval(name, *score, group, column);
        } else if (group.HasScores(columnName)) {
            printAt(m_person.PlaceOf(scale), "warning",
                    "the norms have no " + column.name.text +
                        " for this raw score: " + inQuotes(name) + " is left out");
        }
    }

    void add_interval(const CString& name, double score, const NormGroup& group,
                      const NormColumn& column) {
        const ScoreScale* scale = findScoreScale(column.name.text.View());
        const auto reliability = group.GetReliability();
        if (!m_options.confidence || !scale || !reliability) return;
        constexpr double percent = 100;
        const ConfidenceInterval interval =
            Reliability(*scale, *reliability)
                .GetIntervalOfMeasurement(score, *m_options.confidence / percent);
        add(name + "_Low", interval.low, column);
        add(name + "_High", interval.high, column);
        add(name + "_Range", interval.Format(*scale), column);
        m_hasIntervals = true;
    }

    template <class Value>
    void add(const CString& name, const Value& value, const NormColumn& column) {
        if (!isVariableName(name.View())) {
            throw InputError(column.name.place, "the result " + inQuotes(name) +
                                                    " has more than 32 characters: shorten the "
                                                    "name of the scale or the column");
        }
        if (m_person.Variables().Exists(name)) {
            throw InputError(m_person.PlaceOf(name), inQuotes(name) +
                                                         " is the name of a result too: rename "
                                                         "the variable");
        }
        if (m_results.Exists(name)) {
            throw InputError(column.name.place, "two results have the name " + inQuotes(name) +
                                                    ": rename a scale or column");
        }
        m_results.AddVar(name, value);
    }

    /// A fault at what the lookup failed at.
    [[noreturn]] void fail(const NormError& error, const TextPlace& raw) const {
        const CString message = error.what();
        if (const auto key = m_given.find(error.GetKey()); key != m_given.end()) {
            key->second.Fail(message);
        }
        if (error.GetReason() == NormError::Reason::AgeOutside) m_ageSource.Fail(message);
        CString remedy;
        if (error.GetReason() == NormError::Reason::MissingKey) {
            remedy = is_key(error.GetKey())
                         ? "; give --key " + error.GetKey() + "=VALUE or a variable of that name"
                         : CString(cAgeRemedy);
        }
        throw InputError(raw, message + remedy);
    }

    bool is_key(const CString& name) const {
        const auto keys = m_norms.GetKeys();
        return std::any_of(keys.begin(), keys.end(),
                           [&](const NormName& key) { return key.text == name; });
    }

    const ScoreOptions& m_options;
    const Person& m_person;
    CString m_file;  ///< of the norms
    NormTable m_norms;
    CString m_scaleKey;
    std::vector<NormName> m_scales;
    std::map<CString, Given> m_given;  ///< values of the other keys
    std::optional<AgeSpan> m_age;
    Given m_ageSource;
    VarTable m_results;
    bool m_hasIntervals = false;
};

}  // namespace

int scoreRaws(const ScoreOptions& options) {
    const Person person(options);
    Scoring scoring(options, person);
    const VarTable& results = scoring.Score();
    WholeFile output(options.outputPath.c_str());
    writeVariables(person.Variables(), output);
    writeVariables(results, output);
    output.Commit();
    return cSuccess;
}

}  // namespace tessalink::cli
