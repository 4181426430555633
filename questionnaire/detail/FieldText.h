#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Date.h"
#include "core/Time.h"
#include "questionnaire/QuestionnaireModel.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/ResponseTable.h"

// Values of fields from texts.
namespace tessalink::detail {

/// How numbers and dates are written.
struct TextForms {
    bool hasDecimalComma = false;
    ResponseTableOptions::DateOrder dateOrder = ResponseTableOptions::DateOrder::Iso;
};

/// A day as YYYY-MM-DD, or in the order with "/", "-" or "." between year (four digits), month and
/// day. Nothing when it is none.
std::optional<Date> readDay(std::string_view text, ResponseTableOptions::DateOrder order);

/// A time as HH:MM or HH:MM:SS.
std::optional<Time> readClock(std::string_view text);

/// A whole number, which may have a decimal 0 as spreadsheets write it.
std::optional<int> readWhole(std::string_view text, bool hasDecimalComma);

/// Makes `value` that of a field other than a choice. Returns what is wrong with the text; empty
/// when nothing is.
std::string readFieldText(const Field& field, std::string_view utf8, const TextForms& forms,
                          FieldValue& value);

/// Makes `value` a number of the field. Returns what is wrong with it.
std::string takeNumber(const Field& field, double number, FieldValue& value);

/// "is not between 0 and 120".
std::string outOfRange(double lowest, double highest);

/// The codes or labels of choices for a message, UTF-8; the first 40 of them.
std::string listedChoices(const std::vector<Choice>& choices, bool hasLabels);

/// Names in small letters, to find them in letters of either case.
std::string lowered(std::string_view text);

/// The text without blanks and tabs at its ends.
std::string_view trimmedText(std::string_view text);

/// The start of a text for a message: UTF-8, whatever it is.
std::string shortened(std::string_view utf8);

}  // namespace tessalink::detail
