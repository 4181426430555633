#pragma once

#include <string>

#include "questionnaire/ResponseSource.h"

namespace tessalink::test {

/// A respondent as a text: all that is known, or why nothing is.
inline std::string shown(const RespondentRow& row) {
    std::string text =
        std::to_string(row.number) + "@" + std::to_string(row.line) + " " + row.respondent.id;
    if (row.failure) return text + " !" + row.failure->column + "! " + row.failure->reason;
    for (const Answer& answer : row.respondent.answers) {
        text += "|" + (answer ? std::to_string(*answer) : "");
    }
    struct Show {
        std::string operator()(std::monostate) const { return ""; }
        std::string operator()(std::int32_t value) const { return std::to_string(value); }
        std::string operator()(double value) const { return std::to_string(value); }
        std::string operator()(const std::string& value) const { return value; }
        std::string operator()(const Date& value) const { return std::to_string(value.Get()); }
        std::string operator()(const Time& value) const { return std::to_string(value.Get()); }
    };
    for (const FieldValue& value : row.respondent.fields) text += "|" + std::visit(Show(), value);
    for (const std::string& cell : row.carried) text += "+" + cell;
    return text;
}

}  // namespace tessalink::test
