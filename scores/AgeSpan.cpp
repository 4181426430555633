#include "scores/AgeSpan.h"

#include "core/WholeNumber.h"
#include "scores/detail/SpanText.h"

namespace tessalink {

CString formatAge(int ageInMonths) {
    CString text;
    text.Format("%d:%d", ageInMonths / 12, ageInMonths % 12);
    return text;
}

CString AgeSpan::Format() const {
    if (to == cOpenEnd) return formatAge(from) + "+";
    return from == to ? formatAge(from) : formatAge(from) + "-" + formatAge(to);
}

std::optional<AgeSpan> parseAge(std::string_view text) {
    const auto colon = text.find(':');
    const auto years = wholeNumber<unsigned>(text.substr(0, colon));
    if (!years || *years > AgeSpan::cMaxYears) return std::nullopt;
    const int start = ageInMonths(static_cast<int>(*years));
    if (colon == std::string_view::npos) return AgeSpan{start, start + 11};
    const auto months = wholeNumber<unsigned>(text.substr(colon + 1));
    if (!months || *months > 11) return std::nullopt;
    const int age = start + static_cast<int>(*months);
    return AgeSpan{age, age};
}

std::optional<AgeSpan> parseAgeSpan(std::string_view text) {
    text = detail::trimmed(text);
    if (text.ends_with('+')) {
        const auto first = parseAge(detail::trimmed(text.substr(0, text.size() - 1)));
        return first ? std::optional(AgeSpan{first->from}) : std::nullopt;
    }
    const auto sides = detail::sidesOfSpan(text);
    if (!sides) return parseAge(text);
    const auto first = parseAge(sides->first);
    const auto last = parseAge(sides->second);
    if (!first || !last) return std::nullopt;
    return AgeSpan{first->from, last->to};
}

}  // namespace tessalink
