#include "questionnaire/Scorer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "questionnaire/detail/NormLookup.h"
#include "scores/Rounding.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(ScoringError, CException)

namespace {

constexpr double cCircle = 360;
constexpr double cMostRaw = 1e9;  ///< norms have raw scores of an int

/// What an answer to an item adds to a scale: factor x value + constant. A reflected answer is
/// min + max - value.
struct Term {
    std::size_t item = 0;
    const double* values = nullptr;  ///< of the choices; null: the answer itself counts
    double factor = 1;
    double constant = 0;
    double weight = 1;    ///< without its sign
    double midpoint = 0;  ///< what the middle of the item's values adds
};

}  // namespace

struct Scorer::Plan {
    explicit Plan(Questionnaire given) : questionnaire(std::move(given)) {
        const QuestionnaireModel& model = questionnaire.Model();
        for (const ResponseSet& set : model.responseSets) {
            values.emplace_back();
            for (const Choice& choice : set.choices) {
                values.back().push_back(choice.value.value_or(0));
            }
        }
        for (const Scale& scale : model.scales) terms.push_back(TermsOf(scale));
        if (questionnaire.Norms() != nullptr) norms.emplace(model, *questionnaire.Norms());
    }

    std::vector<Term> TermsOf(const Scale& scale) const {
        const QuestionnaireModel& model = questionnaire.Model();
        std::vector<Term> result;
        for (const ScaleItem& item : scale.items) {
            const ResponseSet& set = model.responseSets[model.items[item.item].responses];
            const double sum = set.min + set.max;
            Term term;
            term.item = item.item;
            if (set.HasChoices()) term.values = values[model.items[item.item].responses].data();
            term.factor = item.isReversed ? -item.weight : item.weight;
            term.constant = item.isReversed ? item.weight * sum : 0;
            term.weight = std::abs(item.weight);
            term.midpoint = item.weight * sum / 2;
            result.push_back(term);
        }
        return result;
    }

    static double ValueOf(const double* values, std::int32_t answer) {
        return values != nullptr ? values[answer - 1] : answer;
    }
    double ValueOf(std::size_t item, std::int32_t answer) const {
        const auto& known = values[questionnaire.Model().items[item].responses];
        return ValueOf(known.empty() ? nullptr : known.data(), answer);
    }

    void ScoreScale(std::size_t index, const Respondent& respondent, ScaleResult& result) const;
    void AddNorms(std::size_t index, const detail::NormLookup::Person& person,
                  ScaleResult& result) const;
    /// Gives each fault to `tell`, which may throw it.
    template <class TELL>
    void AddAllNorms(const Respondent& respondent, Scores& scores, TELL tell) const;
    template <class TELL>
    void Score(const Respondent& respondent, Scores& scores, TELL tell) const;
    static VectorResult VectorOf(const VectorScore& vector, const Scores& scores);
    void AddIndex(const AnsweringIndex& index, const Respondent& respondent,
                  std::vector<std::optional<double>>& result) const;
    std::optional<double> InconsistencyOf(const AnsweringIndex& index,
                                          const Respondent& respondent) const;

    Questionnaire questionnaire;
    std::vector<std::vector<Term>> terms;     ///< of each scale
    std::vector<std::vector<double>> values;  ///< of the choices of each set
    std::optional<detail::NormLookup> norms;
};

void Scorer::Plan::ScoreScale(std::size_t index, const Respondent& respondent,
                              ScaleResult& result) const {
    const Scale& scale = questionnaire.Model().scales[index];
    double sum = 0;
    double answeredWeight = 0;
    double missingWeight = 0;
    double midpoints = 0;
    result.missing = 0;
    for (const Term& term : terms[index]) {
        if (const Answer& answer = respondent.answers[term.item]) {
            sum += term.factor * ValueOf(term.values, *answer) + term.constant;
            answeredWeight += term.weight;
        } else {
            ++result.missing;
            missingWeight += term.weight;
            midpoints += term.midpoint;
        }
    }
    result.raw.reset();
    if (answeredWeight == 0 || static_cast<std::size_t>(result.missing) > scale.missingAllowed) {
        return;
    }
    double weight = answeredWeight;
    if (scale.replacement == Scale::Replacement::Mean) {
        sum += sum / answeredWeight * missingWeight;
        weight += missingWeight;
    } else if (scale.replacement == Scale::Replacement::Midpoint) {
        sum += midpoints;
        weight += missingWeight;
    }
    result.raw = scale.method == Scale::Method::Mean ? sum / weight : sum;
}

void Scorer::Plan::AddNorms(std::size_t index, const detail::NormLookup::Person& person,
                            ScaleResult& result) const {
    const Scale& scale = questionnaire.Model().scales[index];
    if (!scale.hasNorms) return result.standard.clear();
    result.standard.assign(questionnaire.Model().norms->scores.size(), {});
    if (!result.raw) return;
    const double raw = roundHalfUp(*result.raw * scale.normFactor, 0);
    if (std::abs(raw) > cMostRaw) {
        throw ScoringError(scale.id, "the score is too large for any norms");
    }
    norms->Find(person, index, static_cast<int>(raw), result.standard);
}

VectorResult Scorer::Plan::VectorOf(const VectorScore& vector, const Scores& scores) {
    VectorResult result;
    const auto& x = scores.scales[vector.horizontal].raw;
    const auto& y = scores.scales[vector.vertical].raw;
    if (!x || !y) return result;
    result.length = std::hypot(*x, *y);
    if (*result.length == 0) return result;
    constexpr double halfCircle = cCircle / 2;
    double angle = std::atan2(*y, *x) * halfCircle / std::numbers::pi;
    if (angle < 0) angle += cCircle;
    if (angle >= cCircle) angle = 0;
    result.angle = angle;
    if (vector.sectors.empty()) return result;
    const auto count = static_cast<double>(vector.sectors.size());
    const auto sector = static_cast<std::size_t>(std::floor(angle * count / cCircle + 0.5));
    result.sector = static_cast<int>(sector % vector.sectors.size()) + 1;
    return result;
}

std::optional<double> Scorer::Plan::InconsistencyOf(const AnsweringIndex& index,
                                                    const Respondent& respondent) const {
    const QuestionnaireModel& model = questionnaire.Model();
    double sum = 0;
    int count = 0;
    for (const AnsweringIndex::Pair& pair : index.pairs) {
        const Answer& first = respondent.answers[pair.first];
        const Answer& second = respondent.answers[pair.second];
        if (!first || !second) continue;
        const ResponseSet& set = model.responseSets[model.items[pair.second].responses];
        double other = ValueOf(pair.second, *second);
        if (pair.isReversed) other = set.min + set.max - other;
        sum += std::abs(ValueOf(pair.first, *first) - other);
        ++count;
    }
    if (count == 0) return std::nullopt;
    return sum / count;
}

namespace {

double missingOf(const std::vector<std::size_t>& items, const Respondent& respondent) {
    return static_cast<double>(std::count_if(
        items.begin(), items.end(), [&](std::size_t item) { return !respondent.answers[item]; }));
}

double longestRunOf(const std::vector<std::size_t>& items, const Respondent& respondent) {
    int longest = 0;
    int run = 0;
    Answer last;
    for (const std::size_t item : items) {
        const Answer& answer = respondent.answers[item];
        run = !answer ? 0 : answer == last ? run + 1 : 1;
        last = answer;
        longest = std::max(longest, run);
    }
    return longest;
}

void addShares(const std::vector<std::size_t>& items, std::size_t choices,
               const Respondent& respondent, std::vector<std::optional<double>>& result) {
    const std::size_t start = result.size();
    result.resize(start + choices, 0.0);
    double answered = 0;
    for (const std::size_t item : items) {
        const Answer& answer = respondent.answers[item];
        if (!answer) continue;
        ++answered;
        ++*result[start + static_cast<std::size_t>(*answer) - 1];
    }
    for (std::size_t i = start; i < result.size(); ++i) {
        result[i] = answered > 0 ? std::optional(*result[i] / answered) : std::nullopt;
    }
}

}  // namespace

void Scorer::Plan::AddIndex(const AnsweringIndex& index, const Respondent& respondent,
                            std::vector<std::optional<double>>& result) const {
    using Kind = AnsweringIndex::Kind;
    result.clear();
    switch (index.kind) {
        case Kind::Missing:
            return result.emplace_back(missingOf(index.items, respondent)), void();
        case Kind::LongestRun:
            return result.emplace_back(longestRunOf(index.items, respondent)), void();
        case Kind::Shares:
            return addShares(index.items,
                             questionnaire.Model().responseSets[index.responses].choices.size(),
                             respondent, result);
        case Kind::Inconsistency:
            result.push_back(InconsistencyOf(index, respondent));
    }
}

Scorer::Scorer(Questionnaire questionnaire)
    : m_plan(std::make_unique<const Plan>(std::move(questionnaire))) {}

Scorer::~Scorer() = default;

const Questionnaire& Scorer::GetQuestionnaire() const {
    return m_plan->questionnaire;
}

template <class TELL>
void Scorer::Plan::AddAllNorms(const Respondent& respondent, Scores& scores, TELL tell) const {
    std::optional<detail::NormLookup::Person> person;
    try {
        person = norms->PersonOf(respondent);
    } catch (const ScoringError& error) {
        tell(error);
    }
    const QuestionnaireModel& model = questionnaire.Model();
    for (std::size_t i = 0; i < scores.scales.size(); ++i) {
        try {
            if (person) {
                AddNorms(i, *person, scores.scales[i]);
                continue;
            }
        } catch (const ScoringError& error) {
            tell(error);
        }
        const std::size_t count = model.scales[i].hasNorms ? model.norms->scores.size() : 0;
        scores.scales[i].standard.assign(count, {});
    }
}

template <class TELL>
void Scorer::Plan::Score(const Respondent& respondent, Scores& scores, TELL tell) const {
    const QuestionnaireModel& model = questionnaire.Model();
    scores.scales.resize(model.scales.size());
    for (std::size_t i = 0; i < model.scales.size(); ++i) {
        ScoreScale(i, respondent, scores.scales[i]);
    }
    if (norms) AddAllNorms(respondent, scores, tell);
    scores.vectors.clear();
    for (const VectorScore& vector : model.vectors) {
        scores.vectors.push_back(VectorOf(vector, scores));
    }
    scores.indexes.resize(model.indexes.size());
    for (std::size_t i = 0; i < model.indexes.size(); ++i) {
        AddIndex(model.indexes[i], respondent, scores.indexes[i]);
    }
}

void Scorer::Score(const Respondent& respondent, Scores& scores) const {
    m_plan->Score(respondent, scores, [](const ScoringError& error) { throw error; });
}

std::vector<ScoringError> Scorer::ScoreWhatCan(const Respondent& respondent, Scores& scores) const {
    std::vector<ScoringError> faults;
    m_plan->Score(respondent, scores, [&](const ScoringError& error) {
        const bool isKnown = std::any_of(faults.begin(), faults.end(), [&](const auto& fault) {
            return fault.GetName() == error.GetName() &&
                   std::string_view(fault.what()) == error.what();
        });
        if (!isKnown) faults.push_back(error);
    });
    return faults;
}

}  // namespace tessalink
