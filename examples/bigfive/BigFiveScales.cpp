#include "examples/bigfive/BigFiveScales.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bigfive {

const std::array<Item, cItems> cItemTable = {{
    {"Am the life of the party."},
    {"Feel little concern for others.", true},
    {"Am always prepared."},
    {"Get stressed out easily.", true},
    {"Have a rich vocabulary."},
    {"Don't talk a lot.", true},
    {"Am interested in people."},
    {"Leave my belongings around.", true},
    {"Am relaxed most of the time."},
    {"Have difficulty understanding abstract ideas.", true},
    {"Feel comfortable around people."},
    {"Insult people.", true},
    {"Pay attention to details."},
    {"Worry about things.", true},
    {"Have a vivid imagination."},
    {"Keep in the background.", true},
    {"Sympathize with others' feelings."},
    {"Make a mess of things.", true},
    {"Seldom feel blue."},
    {"Am not interested in abstract ideas.", true},
    {"Start conversations."},
    {"Am not interested in other people's problems.", true},
    {"Get chores done right away."},
    {"Am easily disturbed.", true},
    {"Have excellent ideas."},
    {"Have little to say.", true},
    {"Have a soft heart."},
    {"Often forget to put things back in their proper place.", true},
    {"Get upset easily.", true},
    {"Do not have a good imagination.", true},
    {"Talk to a lot of different people at parties."},
    {"Am not really interested in others.", true},
    {"Like order."},
    {"Change my mood a lot.", true},
    {"Am quick to understand things."},
    {"Don't like to draw attention to myself.", true},
    {"Take time out for others."},
    {"Shirk my duties.", true},
    {"Have frequent mood swings.", true},
    {"Use difficult words."},
    {"Don't mind being the center of attention."},
    {"Feel others' emotions."},
    {"Follow a schedule."},
    {"Get irritated easily.", true},
    {"Spend time reflecting on things."},
    {"Am quiet around strangers.", true},
    {"Make people feel at ease."},
    {"Am exacting in my work."},
    {"Often feel blue.", true},
    {"Am full of ideas."},
}};

const std::array<Scale, cScales> cScaleTable = {{
    {"E", "Extraversion", 30.0, 8.0, 3.6},
    {"A", "Agreeableness", 39.0, 6.0, 4.4},
    {"C", "Conscientiousness", 34.0, 7.0, 4.4},
    {"S", "Emotional Stability", 30.0, 8.0, 3.7},
    {"I", "Intellect/Imagination", 37.0, 6.0, 4.1},
}};

namespace {

// Two-sided 90% of the normal distribution, in standard deviations.
constexpr double c90Percent = 1.645;

// The highest T score of each level but the last.
constexpr std::array cLevelEnds = {34, cAverageFrom - 1, cAverageTo, 65};

int toT(double t) {
    return static_cast<int>(std::lround(t));
}

int levelOf(int tScore) {
    const auto end = std::find_if(cLevelEnds.begin(), cLevelEnds.end(),
                                  [tScore](int last) { return tScore <= last; });
    return static_cast<int>(end - cLevelEnds.begin()) + 1;
}

int percentileOf(double z) {
    const double share = 0.5 * std::erfc(-z / std::numbers::sqrt2);
    return std::clamp(static_cast<int>(std::lround(100.0 * share)), 1, 99);
}

}  // namespace

int countMissing(const Answers& answers, int scale) {
    int missing = 0;
    for (std::size_t i = static_cast<std::size_t>(scale); i < answers.size(); i += cScales) {
        if (answers[i] == cNoAnswer) ++missing;
    }
    return missing;
}

Score scoreScale(const Answers& answers, int scale) {
    int sum = 0;
    for (std::size_t i = static_cast<std::size_t>(scale); i < answers.size(); i += cScales) {
        if (answers[i] == cNoAnswer) continue;
        sum += cItemTable[i].reversed ? cMinAnswer + cMaxAnswer - answers[i] : answers[i];
    }
    Score score;
    score.missing = countMissing(answers, scale);
    score.mean = static_cast<double>(sum) / (cItemsPerScale - score.missing);
    score.rawSum = static_cast<int>(std::lround(score.mean * cItemsPerScale));

    const Scale& norm = cScaleTable[static_cast<std::size_t>(scale)];
    const double z = (score.rawSum - norm.normMean) / norm.normSd;
    score.tScore = std::clamp(toT(50.0 + 10.0 * z), cMinT, cMaxT);
    score.low = toT(score.tScore - c90Percent * norm.error);
    score.high = toT(score.tScore + c90Percent * norm.error);
    score.percentile = percentileOf(z);
    score.level = levelOf(score.tScore);
    return score;
}

const char* levelName(int level) {
    constexpr std::array names = {"low", "slightly below average", "average",
                                  "slightly above average", "high"};
    return names[static_cast<std::size_t>(level - 1)];
}

}  // namespace bigfive
