#pragma once

#include <string_view>

#include "core/Date.h"

namespace tessalink::cli {

/// How texts of dates are read.
enum class DateForm {
    us,    ///< YYYY-MM-DD, or MM/DD/YYYY as Date::SetUS reads it
    local  ///< YYYY-MM-DD, or the user's form as Date::SetLocal reads it
};

/// The date of a text; empty when it is none.
Date parseDate(std::string_view text, DateForm form = DateForm::us);
/// Likewise, or the present day for `today`.
Date parseTestDate(std::string_view text, DateForm form = DateForm::us);

/// "'text' is not a date: write ..."
CString noDate(std::string_view text, DateForm form = DateForm::us);

}  // namespace tessalink::cli
