#include "dataentry/FloatEditCtl.h"

#include <algorithm>
#include <string_view>

#include "dataentry/detail/DecimalPoint.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::isDigit;

namespace {

constexpr bool isSpace(char ch) {
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

/// Takes the characters of a kind off the front and returns how many there were.
template <class Kind>
int take(std::string_view& text, Kind kind) {
    const auto end = std::find_if_not(text.begin(), text.end(), kind);
    const auto count = end - text.begin();
    text.remove_prefix(static_cast<std::size_t>(count));
    return static_cast<int>(count);
}

}  // namespace

bool FloatEditCtl::accepts(char ch) const {
    return isDigit(ch) || ch == tessalink::decimalPoint() || (ch == '-' && m_allowNegative != 0);
}

bool FloatEditCtl::IsValid(const CString& text) const {
    std::string_view rest = text.View();
    take(rest, isSpace);
    if (m_allowNegative != 0 && !rest.empty() && rest.front() == '-') rest.remove_prefix(1);
    take(rest, isDigit);
    if (m_decimals > 0 && !rest.empty() && rest.front() == tessalink::decimalPoint()) {
        rest.remove_prefix(1);
        if (take(rest, isDigit) > m_decimals) return false;
    }
    take(rest, isSpace);
    return rest.empty();
}
