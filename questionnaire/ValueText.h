#pragma once

#include <string>
#include <string_view>

#include "platform/base/Export.h"
#include "questionnaire/QuestionnaireModel.h"
#include "questionnaire/Respondent.h"

/// Answers and values of fields as single texts in UTF-8, the same in every language and locale:
/// the code of a choice, a whole number, the shortest number with a decimal point that reads back,
/// a date as 2026-03-09, a time as 14:05 or 14:05:30, a text as it is. What is missing is the empty
/// text.
namespace tessalink {

/// An answer as text.
TESSALINK_API std::string answerText(const ResponseSet& set, const Answer& answer);
/// The value of a field as text.
TESSALINK_API std::string fieldText(const Field& field, const FieldValue& value);

/// Make `answer` or `value` what the text says. They return what is wrong with the text ("is not
/// between 0 and 120"), and then leave the value as it was; nothing when it is good.
TESSALINK_API std::string readAnswer(const ResponseSet& set, std::string_view utf8, Answer& answer);
/// Makes the value of a field what the text says; see readAnswer.
TESSALINK_API std::string readField(const Field& field, std::string_view utf8, FieldValue& value);

}  // namespace tessalink
