#include "questionnaire/detail/WholeScores.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tessalink::detail {

namespace {

constexpr double cMostWhole = 1e9;  ///< well within an int

bool isWhole(double number) {
    return std::floor(number) == number && std::abs(number) <= cMostWhole;
}

template <class... NUMBERS>
CString formatted(const char* format, NUMBERS... numbers) {
    constexpr std::size_t cLongest = 40;
    char text[cLongest];
    std::snprintf(text, sizeof text, format, numbers...);
    return text;
}

}  // namespace

bool hasWholeValues(const ResponseSet& set) {
    return std::all_of(set.choices.begin(), set.choices.end(), [](const Choice& choice) {
        return !choice.value || isWhole(*choice.value);
    });
}

bool isWholeScore(const QuestionnaireModel& model, const Scale& scale) {
    if (scale.method != Scale::Method::Sum) return false;
    if (scale.replacement == Scale::Replacement::Mean) return false;
    double most = 0;
    for (const ScaleItem& item : scale.items) {
        const ResponseSet& set = model.responseSets[model.items[item.item].responses];
        if (!hasWholeValues(set) || !isWhole(item.weight)) return false;
        const double midpoint = item.weight * (set.min + set.max) / 2;
        if (scale.replacement == Scale::Replacement::Midpoint && !isWhole(midpoint)) return false;
        most += std::abs(item.weight) * std::max(std::abs(set.min), std::abs(set.max));
    }
    return most <= cMostWhole;
}

bool isCount(AnsweringIndex::Kind kind) {
    return kind == AnsweringIndex::Kind::Missing || kind == AnsweringIndex::Kind::LongestRun;
}

CString isoText(const Date& date) {
    int year = 0;
    int month = 0;
    int day = 0;
    date.Get(year, month, day);
    return formatted("%04d-%02d-%02d", year, month, day);
}

CString isoText(const Time& time) {
    if (time.GetSec() == 0) return formatted("%02d:%02d", time.GetHour(), time.GetMin());
    return formatted("%02d:%02d:%02d", time.GetHour(), time.GetMin(), time.GetSec());
}

}  // namespace tessalink::detail
