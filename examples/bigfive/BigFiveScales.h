#pragma once

#include <array>

// The fifty Big-Five marker statements of the International Personality Item Pool (Goldberg, 1992),
// which are in the public domain, and their scoring.
namespace bigfive {

inline constexpr int cScales = 5;
inline constexpr int cItemsPerScale = 10;
inline constexpr int cItems = cScales * cItemsPerScale;
inline constexpr int cMinAnswer = 1;     // very inaccurate
inline constexpr int cMiddleAnswer = 3;  // neither inaccurate nor accurate
inline constexpr int cMaxAnswer = 5;     // very accurate
inline constexpr int cNoAnswer = 0;
// With more answers missing on a scale, its raw sum is no longer estimated.
inline constexpr int cMaxMissing = 2;
inline constexpr int cMinT = 20;
inline constexpr int cMaxT = 80;
inline constexpr int cMeanT = 50;
// T scores from the first to the second are called average.
inline constexpr int cAverageFrom = 45;
inline constexpr int cAverageTo = 55;

// A statement. Its scale is its index modulo cScales; a reversed one counts against the trait.
struct Item {
    const char* text;
    bool reversed = false;
};

// A scale with norms of its raw sum that were made for illustration. `error` is the standard error
// of measurement in T points.
struct Scale {
    const char* code;
    const char* name;
    double normMean;
    double normSd;
    double error;
};

extern const std::array<Item, cItems> cItemTable;
extern const std::array<Scale, cScales> cScaleTable;

// The answers in the order of the statements, each 1 to 5 or cNoAnswer.
using Answers = std::array<int, cItems>;

struct Score {
    int missing = 0;
    int rawSum = 0;      // 10 to 50; estimated from the mean when answers are missing
    double mean = 0;     // of the answers given, 1 to 5
    int tScore = 0;      // cMinT to cMaxT
    int low = 0;         // the 90% range, in T points
    int high = 0;        //
    int percentile = 0;  // 1 to 99
    int level = 0;       // 1 low, 2 slightly below average, 3 average, 4 slightly above, 5 high
};

int countMissing(const Answers& answers, int scale);
// The score of one scale, of which at least one statement must have been answered.
Score scoreScale(const Answers& answers, int scale);
// "low" to "high" for the levels 1 to 5.
const char* levelName(int level);

}  // namespace bigfive
