#pragma once

#include <limits>
#include <optional>
#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// Ages in completed months, from the first to the last, both included.
struct TESSALINK_API AgeSpan {
    /// The end of a span without end.
    static constexpr int cOpenEnd = std::numeric_limits<int>::max();
    /// The greatest year that is read.
    static constexpr int cMaxYears = 150;

    int from = 0;       ///< the first age
    int to = cOpenEnd;  ///< the last one; cOpenEnd when there is none

    /// Whether it holds every age.
    constexpr bool IsAny() const { return from <= 0 && to == cOpenEnd; }
    /// Whether an age in completed months belongs to the span.
    constexpr bool Contains(int ageInMonths) const {
        return from <= ageInMonths && ageInMonths <= to;
    }
    /// "6:0-8:11", "7:3" for a single month, "65:0+" without end.
    CString Format() const;

    friend constexpr bool operator==(const AgeSpan&, const AgeSpan&) = default;
};

/// The age of so many years and months, in months.
constexpr int ageInMonths(int years, int months = 0) {
    return 12 * years + months;
}

/// The age as years:months, "9:4".
TESSALINK_API CString formatAge(int ageInMonths);

/// Reads one age: "9:4" is that month alone, "9" every month of that year. Nothing when the text is
/// none: years up to AgeSpan::cMaxYears, months from 0 to 11, nothing before, between or after.
TESSALINK_API std::optional<AgeSpan> parseAge(std::string_view text);

/// Reads one age, two with "-" or an en dash between them ("6:0-8:11", "6-8" for
/// 6:0 to 8:11), or one without end ("65+"); blanks may stand around the ages. The span is given
/// back as it is written, reversed or not.
TESSALINK_API std::optional<AgeSpan> parseAgeSpan(std::string_view text);

}  // namespace tessalink
