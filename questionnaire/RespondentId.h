#pragma once

#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// The longest id of a respondent, in bytes: file names of 255 bytes have room for the rest.
inline constexpr std::size_t cMaxRespondentId = 200;

/// What is wrong with an id as part of a file name: empty, too long, "/" or "\", characters that
/// file systems refuse (<>:"|?*), control characters, "." or blanks at an end, "." and "..", names
/// of devices, what is no UTF-8. Empty when it is good.
TESSALINK_API std::string respondentIdFault(std::string_view utf8);

/// The id in small letters: ids that are the same here are the same respondent. Letters beyond
/// ASCII too, by simple case folding of Latin, Greek and Cyrillic.
TESSALINK_API std::string foldRespondentId(std::string_view utf8);

}  // namespace tessalink
