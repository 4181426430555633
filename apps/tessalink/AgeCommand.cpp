#include <string>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/DateText.h"
#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

namespace {

Date valid(const Date& date, const std::string& text, DateForm form) {
    if (!date.IsValid()) throw CException(noDate(text, form) + ".");
    return date;
}

std::string span(int count, const char* unit) {
    return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

}  // namespace

int printAge(const AgeOptions& options) {
    const DateForm form = options.isLocal ? DateForm::local : DateForm::us;
    const Date birth = valid(parseDate(options.birth, form), options.birth, form);
    const Date test = valid(parseTestDate(options.test, form), options.test, form);
    if (test < birth) throw CException("the test lies before the birth: exchange the dates.");
    int years = 0;
    int months = 0;
    int days = 0;
    test.Minus(birth, years, months, days);
    return printResult(span(years, "year") + ", " + span(months, "month") + ", " +
                       span(days, "day") + "\n");
}

}  // namespace tessalink::cli
