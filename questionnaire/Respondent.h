#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/Date.h"
#include "core/Time.h"

namespace tessalink {

/// An answer: the position of a choice, from 1, or a whole number; nothing when it is missing.
using Answer = std::optional<std::int32_t>;

/// A value of the person's form: nothing, an integer or the position of a choice (from 1), a
/// decimal number, a text in UTF-8, a date or a time.
using FieldValue = std::variant<std::monostate, std::int32_t, double, std::string, Date, Time>;

/// What one person has answered. The lists are as long as those of the questionnaire.
struct Respondent {
    std::string id;                  ///< UTF-8
    std::vector<Answer> answers;     ///< one for each item
    std::vector<FieldValue> fields;  ///< one for each field
};

}  // namespace tessalink
