#pragma once

#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "tests/support/Dice.h"

namespace tessalink::test {

/// A random questionnaire in the plainest form that a second scorer can read, its files, and random
/// answers to it.
class RandomQuestionnaire {
public:
    struct Set {
        std::vector<double> values;  ///< of choices; empty: whole numbers of the range
        int lowest = 0;
        int highest = 0;

        double Value(int answer) const {
            return values.empty() ? answer : values[static_cast<std::size_t>(answer - 1)];
        }
        double Least() const {
            return values.empty() ? lowest : *std::min_element(values.begin(), values.end());
        }
        double Most() const {
            return values.empty() ? highest : *std::max_element(values.begin(), values.end());
        }
    };
    struct Part {
        std::size_t item = 0;
        bool isReversed = false;
        double weight = 1;
    };
    struct Scale {
        std::vector<Part> parts;
        bool isMean = false;
        std::size_t allowed = 0;
        std::string replacement;
        double factor = 1;
        bool hasNorms = false;
        bool normsBySex = false;
        int lowestNorm = 0;
        int highestNorm = 0;
    };

    explicit RandomQuestionnaire(Dice& dice) : m_dice(dice) {
        for (std::size_t i = 0; i <= dice.Below(4); ++i) m_sets.push_back(random_set());
        for (std::size_t i = 0; i <= dice.Below(20); ++i) {
            m_items.push_back(dice.Below(m_sets.size()));
        }
        for (std::size_t i = 0; i < 2 + dice.Below(6); ++i) m_scales.push_back(random_scale());
        for (Scale& scale : m_scales) {
            scale.hasNorms = dice.OneIn(2);
            scale.normsBySex = dice.OneIn(2);
            scale.lowestNorm = static_cast<int>(dice.Below(40)) - 20;
            scale.highestNorm = scale.lowestNorm + static_cast<int>(dice.Below(60));
        }
        m_scales.front().hasNorms = true;
    }

    const std::vector<Set>& Sets() const { return m_sets; }
    const std::vector<Scale>& Scales() const { return m_scales; }
    const Set& SetOf(std::size_t item) const { return m_sets[m_items[item]]; }
    std::size_t ItemCount() const { return m_items.size(); }

    /// A standard score for a raw one, from a rule that the norm table is filled by.
    static int NormFor(std::size_t scale, int sex, int raw) {
        return 50 + raw * 2 + static_cast<int>(scale) + sex;
    }

    QuestionnaireFiles Files() const {
        return {{"questionnaire.json", json()}, {"norms.csv", norms()}, {"r.rtf", "{\\rtf1 x}"}};
    }

    Respondent Answers() {
        Respondent person;
        person.id = "p";
        const bool isPatchy = m_dice.OneIn(2);
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            const Set& set = SetOf(i);
            if (m_dice.OneIn(isPatchy ? 4 : 40)) {
                person.answers.emplace_back();
            } else if (set.values.empty()) {
                person.answers.emplace_back(
                    set.lowest + static_cast<int>(m_dice.Below(
                                     static_cast<std::size_t>(set.highest - set.lowest) + 1)));
            } else {
                person.answers.emplace_back(
                    1 + static_cast<std::int32_t>(m_dice.Below(set.values.size())));
            }
        }
        person.fields.resize(1);
        if (!m_dice.OneIn(10)) {
            person.fields[0] = static_cast<std::int32_t>(1 + m_dice.Below(2));
        }
        return person;
    }

private:
    Set random_set() {
        Set set;
        if (m_dice.OneIn(4)) {
            set.lowest = static_cast<int>(m_dice.Below(20)) - 10;
            set.highest = set.lowest + 1 + static_cast<int>(m_dice.Below(30));
            return set;
        }
        const bool hasDecimals = m_dice.OneIn(3);
        for (std::size_t i = 0; i < 2 + m_dice.Below(6); ++i) {
            const double whole = static_cast<double>(m_dice.Below(13)) - 4;
            set.values.push_back(hasDecimals ? whole / 8 : whole);
        }
        return set;
    }

    Scale random_scale() {
        Scale scale;
        for (std::size_t item = 0; item < m_items.size(); ++item) {
            if (!m_dice.OneIn(2) && item + 1 < m_items.size()) continue;
            double weight = 1;
            if (m_dice.OneIn(3)) weight = (static_cast<double>(m_dice.Below(16)) - 8) / 4;
            scale.parts.push_back({item, m_dice.OneIn(3), weight == 0 ? 1 : weight});
        }
        scale.isMean = m_dice.OneIn(2);
        scale.allowed = m_dice.Below(scale.parts.size());
        scale.replacement = m_dice.Pick(std::vector<std::string>{"none", "mean", "midpoint"});
        if (m_dice.OneIn(3)) scale.factor = 10;
        return scale;
    }

    static std::string number(double value) {
        std::string text = std::to_string(value);
        return text;
    }

    std::string set_json(const Set& set) const {
        if (set.values.empty()) {
            return "{\"whole\":[" + std::to_string(set.lowest) + "," + std::to_string(set.highest) +
                   "]}";
        }
        std::string choices;
        for (std::size_t i = 0; i < set.values.size(); ++i) {
            choices += (i > 0 ? "," : "") + std::string("{\"code\":\"c") + std::to_string(i) +
                       "\",\"label\":\"choice " + std::to_string(i) +
                       "\",\"value\":" + number(set.values[i]) + "}";
        }
        return "{\"choices\":[" + choices + "]}";
    }

    std::string scale_json(std::size_t index) const {
        const Scale& scale = m_scales[index];
        std::string items;
        for (const Part& part : scale.parts) {
            items += (items.empty() ? "" : ",") + std::string("{\"item\":\"I") +
                     std::to_string(part.item) +
                     "\",\"reverse\":" + (part.isReversed ? "true" : "false") +
                     ",\"weight\":" + number(part.weight) + "}";
        }
        return "{\"id\":\"S" + std::to_string(index) + "\",\"items\":[" + items + "],\"score\":\"" +
               (scale.isMean ? "mean" : "sum") +
               "\",\"missing\":{\"allowed\":" + std::to_string(scale.allowed) + ",\"replace\":\"" +
               scale.replacement + "\"},\"normFactor\":" + number(scale.factor) +
               ",\"norms\":" + (scale.hasNorms ? "true" : "false") + "}";
    }

    std::string json() const {
        std::string sets;
        for (std::size_t i = 0; i < m_sets.size(); ++i) {
            sets += (i > 0 ? "," : "") + std::string("\"R") + std::to_string(i) +
                    "\":" + set_json(m_sets[i]);
        }
        std::string items;
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            items += (i > 0 ? "," : "") + std::string("{\"id\":\"I") + std::to_string(i) +
                     "\",\"text\":\"Item\",\"responses\":\"R" + std::to_string(m_items[i]) + "\"}";
        }
        std::string scales;
        for (std::size_t i = 0; i < m_scales.size(); ++i) {
            scales += (i > 0 ? "," : "") + scale_json(i);
        }
        return R"({"id":"q","title":"q","version":"1","language":"en","licence":"none","source":"none",)"
               "\"responseSets\":{" +
               sets + "},\"items\":[" + items + "],\"scales\":[" + scales +
               R"(],"vectors":[{"id":"V","horizontal":"S0","vertical":"S1","sectors":["a","b","c"]}],)"
               R"("fields":[{"id":"Sex","label":"Sex","type":"choice",)"
               R"("choices":[{"code":"f","label":"f"},{"code":"m","label":"m"}]}],)"
               R"("norms":{"file":"norms.csv","confidence":90,"keys":{"sex":"Sex"}},)"
               R"("reports":[{"id":"r","title":"r","template":"r.rtf"}]})";
    }

    std::string norms() const {
        std::string table = "scale,sex,raw,T,reliability\n";
        for (std::size_t i = 0; i < m_scales.size(); ++i) {
            const Scale& scale = m_scales[i];
            if (!scale.hasNorms) continue;
            for (int sex = 0; sex < (scale.normsBySex ? 2 : 1); ++sex) {
                for (int raw = scale.lowestNorm; raw <= scale.highestNorm; ++raw) {
                    table += "S" + std::to_string(i) + "," +
                             (scale.normsBySex ? (sex == 0 ? "f" : "m") : "*") + "," +
                             std::to_string(raw) + "," + std::to_string(NormFor(i, sex, raw)) +
                             ",0.84\n";
                }
            }
        }
        return table;
    }

    Dice& m_dice;
    std::vector<Set> m_sets;
    std::vector<std::size_t> m_items;
    std::vector<Scale> m_scales;
};

}  // namespace tessalink::test
