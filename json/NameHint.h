#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// A text between apostrophes, as messages quote it.
TESSALINK_API std::string inQuotes(std::string_view text);

/// The candidate that differs least from a mistyped name: by one letter, or by one in three of a
/// longer name. Empty when all differ more.
TESSALINK_API std::string_view nearestName(std::string_view name,
                                           std::span<const std::string_view> candidates);

/// How the message about an unknown name ends: "; did you mean 'width'?", or the first 40
/// candidates, "; there are width, height".
TESSALINK_API std::string nameHint(std::string_view name,
                                   std::span<const std::string_view> candidates);

}  // namespace tessalink
