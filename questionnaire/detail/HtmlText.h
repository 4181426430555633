#pragma once

#include <string>
#include <string_view>

namespace tessalink::detail {

/// A text in UTF-8 without the tags and comments of HTML, its styles and programs; entities become
/// the characters that they name, and white space single blanks, none at the ends. "<" before
/// anything but a letter, "/" or "!" is no tag, and a name that is not known no entity.
std::string withoutHtml(std::string_view utf8);

/// White space as single blanks, none at the ends.
std::string withSingleBlanks(std::string_view text);

}  // namespace tessalink::detail
