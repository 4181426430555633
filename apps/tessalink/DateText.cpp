#include "apps/tessalink/DateText.h"

#include "core/WholeNumber.h"

namespace tessalink::cli {

namespace {

Date parseIsoDate(std::string_view text) {
    constexpr std::string_view form = "YYYY-MM-DD";
    if (text.size() != form.size() || text[4] != '-' || text[7] != '-') return {};
    const auto year = wholeNumber<unsigned>(text.substr(0, 4));
    const auto month = wholeNumber<unsigned>(text.substr(5, 2));
    const auto day = wholeNumber<unsigned>(text.substr(8));
    // Four digits are a whole year: 0099 is none of 1999.
    if (!year || !month || !day || *year < Date::cFirstYear) return {};
    return {static_cast<int>(*year), static_cast<int>(*month), static_cast<int>(*day)};
}

}  // namespace

Date parseDate(std::string_view text, DateForm form) {
    Date date = parseIsoDate(text);
    if (date.IsValid()) return date;
    if (form == DateForm::local) {
        date.SetLocal(CString(text));
    } else {
        date.SetUS(CString(text));
    }
    return date;
}

Date parseTestDate(std::string_view text, DateForm form) {
    if (text != "today") return parseDate(text, form);
    Date today;
    today.SetToday();
    return today;
}

CString noDate(std::string_view text, DateForm form) {
    return "'" + CString(text) + "' is not a date: write YYYY-MM-DD or " +
           (form == DateForm::local ? Date::GetLocalDateFormatMask() : "MM/DD/YYYY");
}

}  // namespace tessalink::cli
