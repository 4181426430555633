#pragma once

#include "core/Date.h"
#include "core/Time.h"
#include "platform/base/CString.h"
#include "questionnaire/QuestionnaireModel.h"

namespace tessalink::detail {

// Which results are ints: that follows from the questionnaire and not from the person, so that a
// template computes with the same kind of number for everyone.

/// Whether all answers count whole numbers.
bool hasWholeValues(const ResponseSet& set);
/// Whether a scale can have whole raw scores only.
bool isWholeScore(const QuestionnaireModel& model, const Scale& scale);
/// Whether an index counts something.
bool isCount(AnsweringIndex::Kind kind);

/// "2026-03-09"; "14:05", with seconds where there are any.
CString isoText(const Date& date);
CString isoText(const Time& time);

}  // namespace tessalink::detail
