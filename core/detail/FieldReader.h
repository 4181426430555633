#pragma once

#include <algorithm>
#include <limits>
#include <string_view>

namespace tessalink::detail {

/// Takes numbers and separators from the start of a text, as times and dates are typed.
class FieldReader {
public:
    explicit FieldReader(std::string_view text) : m_rest(text) {}

    /// Takes blanks, at least one digit, and blanks; a number beyond 32 bits becomes the largest.
    /// When there is no digit, the blanks are taken all the same.
    bool TakeNumber(int& number) {
        SkipBlanks();
        const auto length = std::min(m_rest.find_first_not_of("0123456789"), m_rest.size());
        if (length == 0) return false;
        constexpr long long largest = std::numeric_limits<int>::max();
        long long value = 0;
        for (const char digit : m_rest.substr(0, length)) {
            value = std::min(value * 10 + (digit - '0'), largest);
        }
        number = static_cast<int>(value);
        m_rest.remove_prefix(length);
        SkipBlanks();
        return true;
    }

    /// Takes exactly this text.
    bool Take(std::string_view text) {
        if (!m_rest.starts_with(text)) return false;
        m_rest.remove_prefix(text.size());
        return true;
    }

    /// Takes this text in letters of either case.
    bool TakeNoCase(std::string_view text) {
        const std::string_view start = m_rest.substr(0, text.size());
        if (!std::equal(start.begin(), start.end(), text.begin(), text.end(), equalNoCase)) {
            return false;
        }
        m_rest.remove_prefix(text.size());
        return true;
    }

    void SkipBlanks() { SkipBlanks(m_rest.size()); }
    void SkipBlanks(std::size_t limit) {
        m_rest.remove_prefix(std::min({m_rest.find_first_not_of(' '), m_rest.size(), limit}));
    }

    bool IsAtEnd() const { return m_rest.empty(); }

private:
    static bool equalNoCase(char a, char b) { return lower(a) == lower(b); }
    static char lower(char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
    }

    std::string_view m_rest;
};

}  // namespace tessalink::detail
