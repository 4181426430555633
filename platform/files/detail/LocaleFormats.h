#pragma once

#include <string_view>

#include "platform/base/LocaleValues.h"

namespace tessalink::detail {

// What the system says about times and dates: formats of strftime and two texts, in UTF-8.
struct LocaleFormats {
    std::string_view time;        // "%H:%M:%S"
    std::string_view timeOfHalf;  // what %r stands for; may be empty
    std::string_view morning;
    std::string_view afternoon;
    std::string_view date;  // "%m/%d/%y"
};

// The values that such formats amount to. Whatever they don't tell keeps its default.
LocaleValues localeOf(const LocaleFormats& formats);

}  // namespace tessalink::detail
