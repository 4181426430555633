#include "platform/files/detail/LocaleFormats.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/CodePage.h"

namespace tessalink::detail {

namespace {

using namespace std::string_view_literals;

constexpr auto cDefaultHalf = "%I:%M:%S %p"sv;
constexpr auto cFlags = "_-0^#+EO123456789"sv;

// One conversion of a format, and the text between it and the one before.
struct Field {
    char conversion;
    std::string before;
};
using Fields = std::vector<Field>;

// Replaces the conversions that stand for several others.
std::string expanded(std::string_view format, std::string_view timeOfHalf) {
    const std::array<std::pair<char, std::string_view>, 5> shorthands = {
        {{'r', timeOfHalf.empty() ? cDefaultHalf : timeOfHalf},
         {'T', "%H:%M:%S"sv},
         {'R', "%H:%M"sv},
         {'D', "%m/%d/%y"sv},
         {'F', "%Y-%m-%d"sv}}};
    std::string result(format);
    // In this order: what %r stands for may have further shorthands, those have none.
    for (const auto& [letter, meaning] : shorthands) {
        const std::string shorthand = {'%', letter};
        if (const auto place = result.find(shorthand); place != std::string::npos) {
            result.replace(place, shorthand.size(), meaning);
        }
    }
    return result;
}

Fields fieldsOf(std::string_view format) {
    Fields fields;
    std::string text;
    while (!format.empty()) {
        const char ch = format.front();
        format.remove_prefix(1);
        if (ch != '%') {
            text += ch;
            continue;
        }
        format.remove_prefix(std::min(format.find_first_not_of(cFlags), format.size()));
        if (format.empty()) break;
        fields.push_back({format.front(), std::exchange(text, {})});
        format.remove_prefix(1);
    }
    return fields;
}

// The place of the first field with one of the conversions.
std::optional<std::size_t> find(const Fields& fields, std::string_view conversions) {
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const Field& f) {
        return conversions.find(f.conversion) != std::string_view::npos;
    });
    if (field == fields.end()) return std::nullopt;
    return static_cast<std::size_t>(field - fields.begin());
}

// The text in the code page, its no-break spaces (U+00A0, U+2009, U+202F) as blanks; nothing when
// it is empty or has characters that the code page lacks.
std::optional<CString> pageText(std::string_view utf8) {
    std::string text(utf8);
    for (const auto blank : {"\u00A0"sv, "\u2009"sv, "\u202F"sv}) {
        for (auto place = text.find(blank); place != std::string::npos; place = text.find(blank)) {
            text.replace(place, blank.size(), " ");
        }
    }
    const CodePageText result = fromUtf8(text);
    if (text.empty() || !result.IsWhole()) return std::nullopt;
    return CString(std::string_view(result.text));
}

// A separator loses blanks at its start: those behind a number belong to the number when a text is
// read.
void setSeparator(CString& separator, std::string_view utf8) {
    auto text = pageText(utf8);
    if (!text) return;
    text->TrimLeft(' ');
    if (!text->IsEmpty()) separator = *text;
}

void setTime(LocaleValues& values, const LocaleFormats& formats) {
    const Fields fields = fieldsOf(expanded(formats.time, formats.timeOfHalf));
    const auto hour = find(fields, "HkIl");
    const auto minute = find(fields, "M");
    if (!hour || !minute) return;
    if (*minute == *hour + 1) setSeparator(values.timeSeparator, fields[*minute].before);
    const char conversion = fields[*hour].conversion;
    values.is24Hour = conversion == 'H' || conversion == 'k';
    if (values.is24Hour) return;
    const auto indicator = find(fields, "pP");
    values.indicatorInFront = indicator && *indicator < *hour;
    const auto morning = pageText(formats.morning);
    const auto afternoon = pageText(formats.afternoon);
    const bool usable = morning && afternoon && *morning != *afternoon;
    values.morningIndicator = usable ? *morning : "AM";
    values.afternoonIndicator = usable ? *afternoon : "PM";
}

void setDate(LocaleValues& values, const LocaleFormats& formats) {
    const Fields fields = fieldsOf(expanded(formats.date, formats.timeOfHalf));
    const auto year = find(fields, "yYCG");
    const auto month = find(fields, "mbBh");
    const auto day = find(fields, "de");
    if (!year || !month || !day) return;
    values.dateOrder = *year < *month && *year < *day ? yearMonthDay
                       : *day < *month                ? dayMonthYear
                                                      : monthDayYear;
    const std::size_t last = std::max({*year, *month, *day});
    const std::size_t first = std::min({*year, *month, *day});
    const std::size_t second = *year + *month + *day - first - last;
    setSeparator(values.dateSeparator, fields[second].before);
}

}  // namespace

LocaleValues localeOf(const LocaleFormats& formats) {
    LocaleValues values;
    setTime(values, formats);
    setDate(values, formats);
    return values;
}

}  // namespace tessalink::detail
