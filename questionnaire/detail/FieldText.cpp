#include "questionnaire/detail/FieldText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/FileText.h"
#include "core/WholeNumber.h"
#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"

namespace tessalink::detail {

namespace {

using DateOrder = ResponseTableOptions::DateOrder;

constexpr std::size_t cShownBytes = 80;
constexpr std::size_t cShownChoices = 40;
constexpr std::size_t cDayParts = 3;
constexpr std::size_t cYearDigits = 4;
constexpr std::size_t cMaxNumberText = 400;

/// Year, month and day by their places in a text.
struct PartOrder {
    std::size_t year;
    std::size_t month;
    std::size_t day;
    std::string_view form;  ///< as a message shows it
};
/// By DateOrder.
constexpr std::array<PartOrder, 4> cPartOrders = {
    {{0, 1, 2, ""}, {2, 1, 0, "DD.MM.YYYY"}, {2, 0, 1, "MM/DD/YYYY"}, {0, 1, 2, "YYYY/MM/DD"}}};

bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

std::optional<int> readDigits(std::string_view text, std::size_t most) {
    if (text.empty() || text.size() > most) return std::nullopt;
    if (!std::all_of(text.begin(), text.end(), isDigit)) return std::nullopt;
    return wholeNumber<int>(text);
}

std::optional<Date> dayOf(std::string_view yearText, std::string_view monthText,
                          std::string_view dayText) {
    const auto year = readDigits(yearText, cYearDigits);
    const auto month = readDigits(monthText, 2);
    const auto day = readDigits(dayText, 2);
    // What Date takes for a year of two digits would depend on today.
    if (!year || !month || !day || *year < Date::cFirstYear) return std::nullopt;
    const Date date(*year, *month, *day);
    return date.IsValid() != 0 ? std::optional(date) : std::nullopt;
}

std::optional<Date> readIsoDay(std::string_view text) {
    constexpr std::string_view form = "YYYY-MM-DD";
    if (text.size() != form.size() || text[4] != '-' || text[7] != '-') return std::nullopt;
    return dayOf(text.substr(0, 4), text.substr(5, 2), text.substr(8));
}

std::string formOf(DateOrder order) {
    const std::string_view form = cPartOrders[static_cast<std::size_t>(order)].form;
    return "YYYY-MM-DD" + (form.empty() ? "" : " or " + std::string(form));
}

std::string shown(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string_view withoutPlus(std::string_view text) {
    return text.size() > 1 && text[0] == '+' && isDigit(text[1]) ? text.substr(1) : text;
}

std::optional<double> readDecimal(std::string_view text, bool hasDecimalComma) {
    if (text.size() > cMaxNumberText) return std::nullopt;
    std::string written(withoutPlus(text));
    if (hasDecimalComma) {
        if (written.find('.') != std::string::npos) return std::nullopt;
        std::replace(written.begin(), written.end(), ',', '.');
    }
    const auto number = wholeNumber<double>(written);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::string readNumber(const Field& field, std::string_view text, const TextForms& forms,
                       FieldValue& value) {
    if (field.type == Field::Type::Integer) {
        const auto number = readWhole(text, forms.hasDecimalComma);
        return number ? takeNumber(field, *number, value) : "is not a whole number";
    }
    const auto number = readDecimal(text, forms.hasDecimalComma);
    if (number) return takeNumber(field, *number, value);
    return std::string("is not a number with a decimal ") +
           (forms.hasDecimalComma ? "comma" : "point");
}

std::string readText(const Field& field, std::string_view utf8, FieldValue& value) {
    if (findMalformedUtf8(utf8) != std::string_view::npos) return cNoUtf8;
    if (utf8.find('\0') != std::string_view::npos) return "holds a NUL byte: remove it";
    const auto tail = [](char ch) { return (static_cast<unsigned char>(ch) & 0xC0U) == 0x80U; };
    const auto tails = std::count_if(utf8.begin(), utf8.end(), tail);
    if (utf8.size() - static_cast<std::size_t>(tails) > field.maxLength) {
        return "is longer than " + std::to_string(field.maxLength) + " characters: shorten it";
    }
    value = std::string(utf8);
    return {};
}

std::string readDate(std::string_view text, DateOrder order, FieldValue& value) {
    const auto date = readDay(text, order);
    if (!date) return "is not a date: write " + formOf(order);
    value = *date;
    return {};
}

std::string readTime(std::string_view text, FieldValue& value) {
    const auto time = readClock(text);
    if (!time) return "is not a time: write HH:MM or HH:MM:SS";
    value = *time;
    return {};
}

}  // namespace

std::optional<Date> readDay(std::string_view text, DateOrder order) {
    if (auto date = readIsoDay(text)) return date;
    if (order == DateOrder::Iso) return std::nullopt;
    std::array<std::string_view, cDayParts> parts;
    const std::size_t first = text.find_first_of("/-.");
    if (first == std::string_view::npos) return std::nullopt;
    const std::size_t second = text.find(text[first], first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    parts = {text.substr(0, first), text.substr(first + 1, second - first - 1),
             text.substr(second + 1)};
    const PartOrder& places = cPartOrders[static_cast<std::size_t>(order)];
    if (parts[places.year].size() != cYearDigits) return std::nullopt;
    return dayOf(parts[places.year], parts[places.month], parts[places.day]);
}

std::optional<Time> readClock(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const std::string_view rest = text.substr(colon + 1);
    const std::size_t next = std::min(rest.find(':'), rest.size());
    const auto hour = readDigits(text.substr(0, colon), 2);
    const auto minute = next == 2 ? readDigits(rest.substr(0, next), 2) : std::nullopt;
    int seconds = 0;
    if (next != rest.size()) {
        const auto second = readDigits(rest.substr(next + 1), 2);
        if (!second || rest.size() != next + 3) return std::nullopt;
        seconds = *second;
    }
    if (!hour || !minute) return std::nullopt;
    const Time time(*hour, *minute, seconds);
    return time.IsValid() != 0 ? std::optional(time) : std::nullopt;
}

std::optional<int> readWhole(std::string_view text, bool hasDecimalComma) {
    std::string_view digits = withoutPlus(text);
    if (digits.ends_with(".0") || (hasDecimalComma && digits.ends_with(",0"))) {
        digits.remove_suffix(2);
    }
    return wholeNumber<int>(digits);
}

std::string takeNumber(const Field& field, double number, FieldValue& value) {
    if (!(number >= field.lowest && number <= field.highest)) {
        return outOfRange(field.lowest, field.highest);
    }
    if (field.type == Field::Type::Decimal) {
        value = number;
        return {};
    }
    if (number != std::trunc(number)) return "is not a whole number";
    value = static_cast<std::int32_t>(std::clamp<double>(number, std::numeric_limits<int>::min(),
                                                         std::numeric_limits<int>::max()));
    return {};
}

std::string readFieldText(const Field& field, std::string_view utf8, const TextForms& forms,
                          FieldValue& value) {
    switch (field.type) {
        case Field::Type::Integer:
        case Field::Type::Decimal:
            return readNumber(field, utf8, forms, value);
        case Field::Type::Date:
            return readDate(utf8, forms.dateOrder, value);
        case Field::Type::Time:
            return readTime(utf8, value);
        case Field::Type::Text:
        case Field::Type::Choice:
            break;
    }
    return readText(field, utf8, value);
}

std::string outOfRange(double lowest, double highest) {
    return "is not between " + shown(lowest) + " and " + shown(highest);
}

std::string listedChoices(const std::vector<Choice>& choices, bool hasLabels) {
    std::string text;
    for (std::size_t i = 0; i < std::min(choices.size(), cShownChoices); ++i) {
        const CString& name = hasLabels ? choices[i].label : choices[i].code;
        text += (i == 0 ? "" : ", ") + toUtf8(name.View());
    }
    return choices.size() > cShownChoices ? text + " ..." : text;
}

std::string lowered(std::string_view text) {
    return CString(text).MakeLower().GetString();
}

std::string_view trimmedText(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string shortened(std::string_view utf8) {
    std::string text;
    std::string_view rest = utf8;
    while (!rest.empty() && text.size() < cShownBytes) {
        appendUtf8(text, takeUtf8(rest).value_or(cReplacementCharacter));
    }
    return rest.empty() ? text : text + "...";
}

}  // namespace tessalink::detail
