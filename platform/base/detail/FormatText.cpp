#include "platform/base/detail/FormatText.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"

namespace tessalink::detail {

namespace {

enum class Length { None, Char, Short, Long, LongLong, Max, Size, Difference, Fixed32, LongDouble };

// One conversion of the format, "%-08.3ld" for instance.
struct Conversion {
    bool leftAligned = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    bool zeroPadded = false;
    int width = 0;
    int precision = -1;  // negative: none was given
    Length length = Length::None;
    char letter = '\0';
};

// What a number consists of: the sign or "0x", then the digits. Zero padding goes between the two.
struct NumberParts {
    std::string head;
    std::string body;
};

struct LengthName {
    std::string_view name;
    Length length;
};

// Longer names before their own beginnings.
constexpr LengthName cLengthNames[] = {{"hh", Length::Char},      {"h", Length::Short},
                                       {"ll", Length::LongLong},  {"l", Length::Long},
                                       {"j", Length::Max},        {"z", Length::Size},
                                       {"t", Length::Difference}, {"I64", Length::LongLong},
                                       {"I32", Length::Fixed32},  {"L", Length::LongDouble}};

constexpr int cPrecisionOfRoundTrip = -1;

class Formatter {
public:
    Formatter(std::string& text, const char* format, std::va_list arguments)
        : m_text(text), m_next(format) {
        va_copy(m_arguments, arguments);
    }
    ~Formatter() { va_end(m_arguments); }
    Formatter(const Formatter&) = delete;
    Formatter& operator=(const Formatter&) = delete;

    void Run() {
        while (*m_next != '\0') {
            const char* const start = m_next;
            m_next = start + std::strcspn(start, "%");
            m_text.append(start, m_next);
            if (*m_next == '%') Convert(ReadConversion());
        }
    }

private:
    Conversion ReadConversion();
    void ReadFlags(Conversion& conversion);
    int ReadNumber();
    Length ReadLength();
    void Convert(const Conversion& conversion);
    void ConvertText(const Conversion& conversion);
    void ConvertSigned(const Conversion& conversion);
    void ConvertUnsigned(const Conversion& conversion);
    void ConvertPointer(Conversion conversion);
    void ConvertDouble(const Conversion& conversion);
    std::intmax_t NextSigned(Length length);
    std::uintmax_t NextUnsigned(Length length);
    void Pad(const Conversion& conversion, const NumberParts& parts, bool zeroPadded);

    std::string& m_text;
    const char* m_next;
    std::va_list m_arguments;
};

void Formatter::ReadFlags(Conversion& conversion) {
    for (;; ++m_next) {
        switch (*m_next) {
            case '-':
                conversion.leftAligned = true;
                break;
            case '+':
                conversion.plus = true;
                break;
            case ' ':
                conversion.blank = true;
                break;
            case '#':
                conversion.alternate = true;
                break;
            case '0':
                conversion.zeroPadded = true;
                break;
            default:
                return;
        }
    }
}

int Formatter::ReadNumber() {
    if (*m_next == '*') {
        ++m_next;
        return va_arg(m_arguments, int);
    }
    const int value = readInt(std::string_view(m_next, std::strspn(m_next, "0123456789")));
    m_next += std::strspn(m_next, "0123456789");
    return value;
}

Length Formatter::ReadLength() {
    for (const LengthName& entry : cLengthNames) {
        if (std::strncmp(m_next, entry.name.data(), entry.name.size()) == 0) {
            m_next += entry.name.size();
            return entry.length;
        }
    }
    return Length::None;
}

Conversion Formatter::ReadConversion() {
    Conversion conversion;
    ++m_next;
    ReadFlags(conversion);
    conversion.width = ReadNumber();
    if (conversion.width < 0) {
        conversion.leftAligned = true;
        conversion.width = conversion.width == INT_MIN ? INT_MAX : -conversion.width;
    }
    if (*m_next == '.') {
        ++m_next;
        conversion.precision = ReadNumber();
    }
    conversion.length = ReadLength();
    conversion.letter = *m_next;
    if (conversion.letter != '\0') ++m_next;
    return conversion;
}

void Formatter::Convert(const Conversion& conversion) {
    switch (conversion.letter) {
        case '%':
            m_text.push_back('%');
            break;
        case 'c':
        case 's':
            ConvertText(conversion);
            break;
        case 'd':
        case 'i':
            ConvertSigned(conversion);
            break;
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            ConvertUnsigned(conversion);
            break;
        case 'p':
            ConvertPointer(conversion);
            break;
        case 'a':
        case 'A':
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
            ConvertDouble(conversion);
            break;
        default:
            AfxThrowInvalidArgException();
    }
}

void Formatter::Pad(const Conversion& conversion, const NumberParts& parts, bool zeroPadded) {
    const std::size_t length = parts.head.size() + parts.body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t padding = width > length ? width - length : 0;
    const bool zeros = zeroPadded && !conversion.leftAligned;
    if (!zeros && !conversion.leftAligned) m_text.append(padding, ' ');
    m_text.append(parts.head);
    if (zeros) m_text.append(padding, '0');
    m_text.append(parts.body);
    if (conversion.leftAligned) m_text.append(padding, ' ');
}

// The text ends at its NUL, or sooner after `limit` characters unless that is negative.
std::size_t lengthUpTo(const char* text, int limit) {
    if (limit < 0) return std::strlen(text);
    const auto most = static_cast<std::size_t>(limit);
    const void* const end = std::memchr(text, '\0', most);
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : most;
}

void Formatter::ConvertText(const Conversion& conversion) {
    if (conversion.length == Length::Long) AfxThrowInvalidArgException();
    if (conversion.letter == 'c') {
        const char ch = static_cast<char>(va_arg(m_arguments, int));
        return Pad(conversion, {{}, std::string(1, ch)}, false);
    }
    const char* text = va_arg(m_arguments, const char*);
    if (text == nullptr) text = "(null)";
    Pad(conversion, {{}, std::string(text, lengthUpTo(text, conversion.precision))}, false);
}

std::intmax_t Formatter::NextSigned(Length length) {
    switch (length) {
        case Length::Char:
            return static_cast<signed char>(va_arg(m_arguments, int));
        case Length::Short:
            return static_cast<short>(va_arg(m_arguments, int));
        case Length::Long:
            return va_arg(m_arguments, long);
        case Length::LongLong:
            return va_arg(m_arguments, long long);
        case Length::Max:  // NOLINT(bugprone-branch-clone): the same type here, not everywhere
            return va_arg(m_arguments, std::intmax_t);
        case Length::Size:
        case Length::Difference:
            return va_arg(m_arguments, std::ptrdiff_t);
        default:
            return va_arg(m_arguments, int);
    }
}

std::uintmax_t Formatter::NextUnsigned(Length length) {
    const auto value = static_cast<std::uintmax_t>(NextSigned(length));
    switch (length) {
        case Length::Char:
            return static_cast<unsigned char>(value);
        case Length::Short:
            return static_cast<unsigned short>(value);
        case Length::None:
        case Length::Fixed32:
            return static_cast<unsigned>(value);
        default:
            return value;
    }
}

// The digits in the base, at least `precision` of them; none for zero with the precision 0.
std::string digitsOf(std::uintmax_t value, int base, int precision) {
    char digits[sizeof(value) * CHAR_BIT];
    const char* const end = std::to_chars(digits, digits + sizeof(digits), value, base).ptr;
    const auto count = value == 0 && precision == 0 ? 0 : static_cast<std::size_t>(end - digits);
    const auto wanted = static_cast<std::size_t>(std::max(precision, 0));
    return std::string(wanted > count ? wanted - count : 0, '0').append(digits, count);
}

std::string signOf(bool negative, const Conversion& conversion) {
    return negative ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
}

void makeUpper(std::string& text) {
    for (char& ch : text) {
        if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 'a' + 'A');
    }
}

void Formatter::ConvertSigned(const Conversion& conversion) {
    const std::intmax_t value = NextSigned(conversion.length);
    const auto bits = static_cast<std::uintmax_t>(value);
    const NumberParts parts{signOf(value < 0, conversion),
                            digitsOf(value < 0 ? 0 - bits : bits, 10, conversion.precision)};
    Pad(conversion, parts, conversion.zeroPadded && conversion.precision < 0);
}

void Formatter::ConvertUnsigned(const Conversion& conversion) {
    const std::uintmax_t value = NextUnsigned(conversion.length);
    const int base = conversion.letter == 'u' ? 10 : conversion.letter == 'o' ? 8 : 16;
    NumberParts parts{{}, digitsOf(value, base, conversion.precision)};
    if (conversion.alternate && base == 16 && value != 0) parts.head = "0x";
    const bool needsZero = parts.body.empty() || parts.body[0] != '0';
    if (conversion.alternate && base == 8 && needsZero) parts.body.insert(0, 1, '0');
    if (conversion.letter == 'X') {
        makeUpper(parts.head);
        makeUpper(parts.body);
    }
    Pad(conversion, parts, conversion.zeroPadded && conversion.precision < 0);
}

void Formatter::ConvertPointer(Conversion conversion) {
    const auto value = reinterpret_cast<std::uintptr_t>(va_arg(m_arguments, void*));
    if (value == 0) return Pad(conversion, {{}, "(nil)"}, false);
    Pad(conversion, {"0x", digitsOf(value, 16, conversion.precision)}, conversion.zeroPadded);
}

std::string toChars(double value, std::chars_format format, int precision) {
    std::string text(cMaxDoubleHead + 16 + static_cast<std::size_t>(std::max(precision, 13)), '\0');
    char* const end = text.data() + text.size();
    const auto result = precision == cPrecisionOfRoundTrip
                            ? std::to_chars(text.data(), end, value, format)
                            : std::to_chars(text.data(), end, value, format, precision);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

// Puts the point in that the '#' flag asks for where there is no fraction.
void forcePoint(std::string& text) {
    const std::size_t mantissaEnd = std::min(text.find_first_of("ep"), text.size());
    if (text.find('.') == std::string::npos) text.insert(mantissaEnd, 1, '.');
}

void dropTrailingZeros(std::string& text) {
    if (text.find('.') == std::string::npos) return;
    const std::size_t mantissaEnd = std::min(text.find('e'), text.size());
    std::size_t keep = text.find_last_not_of('0', mantissaEnd - 1) + 1;
    if (text[keep - 1] == '.') --keep;
    text.erase(keep, mantissaEnd - keep);
}

// "%g": the shorter form by the exponent that "%e" would write, without trailing zeros.
std::string generalDigits(double value, int precision, bool keepZeros) {
    precision = std::max(precision, 1);
    std::string text = toChars(value, std::chars_format::scientific, precision - 1);
    const std::string_view exponentText = std::string_view(text).substr(text.find('e') + 1);
    const int exponent = readInt(exponentText);
    if (exponent >= -4 && exponent < precision) {
        text = toChars(value, std::chars_format::fixed, precision - 1 - exponent);
    }
    if (keepZeros) {
        forcePoint(text);
    } else {
        dropTrailingZeros(text);
    }
    return text;
}

std::string finiteDigits(double value, char letter, const Conversion& conversion) {
    const int precision = conversion.precision < 0 ? cDefaultDecimals : conversion.precision;
    if (letter == 'g') return generalDigits(value, precision, conversion.alternate);
    const int hexPrecision =
        conversion.precision < 0 ? cPrecisionOfRoundTrip : conversion.precision;
    std::string text = letter == 'f'   ? toChars(value, std::chars_format::fixed, precision)
                       : letter == 'e' ? toChars(value, std::chars_format::scientific, precision)
                                       : toChars(value, std::chars_format::hex, hexPrecision);
    if (conversion.alternate) forcePoint(text);
    return text;
}

void Formatter::ConvertDouble(const Conversion& conversion) {
    const double value = conversion.length == Length::LongDouble
                             ? static_cast<double>(va_arg(m_arguments, long double))
                             : va_arg(m_arguments, double);
    const char letter = static_cast<char>(conversion.letter | 0x20);
    NumberParts parts{signOf(std::signbit(value), conversion), {}};
    const bool finite = std::isfinite(value);
    if (finite) {
        if (letter == 'a') parts.head += "0x";
        parts.body = finiteDigits(std::fabs(value), letter, conversion);
    } else {
        parts.body = std::isnan(value) ? "nan" : "inf";
    }
    if (conversion.letter != letter) {
        makeUpper(parts.head);
        makeUpper(parts.body);
    }
    Pad(conversion, parts, conversion.zeroPadded && finite);
}

}  // namespace

void appendFormat(std::string& text, const char* format, std::va_list arguments) {
    if (format == nullptr) AfxThrowInvalidArgException();
    Formatter(text, format, arguments).Run();
}

}  // namespace tessalink::detail
