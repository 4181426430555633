#pragma once

#include <QString>
#include <optional>

#include "questionnaire/QuestionnaireModel.h"
#include "questionnaire/Respondent.h"

// Values of the person's form as the examiner reads and keys them: by the user's locale.
namespace tessalink::desk {

QString fieldShown(const Field& field, const FieldValue& value);
/// The value of what was keyed; nothing when the field can't have it. Dates and times may be those
/// of the locale or 2026-03-09 and 14:05; an empty text is no value.
std::optional<FieldValue> fieldKeyed(const Field& field, const QString& text);
/// What the field takes, as a sentence.
QString fieldRule(const Field& field);

}  // namespace tessalink::desk
