#include "platform/base/NumberText.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

namespace tessalink {

namespace {

bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

bool isWhiteSpace(char ch) {
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

struct SignedText {
    bool negative;
    std::string_view digits;
};

SignedText splitSign(std::string_view text) {
    std::size_t start = 0;
    while (start < text.size() && isWhiteSpace(text[start])) ++start;
    const bool signPresent = start < text.size() && (text[start] == '-' || text[start] == '+');
    return {signPresent && text[start] == '-', text.substr(start + (signPresent ? 1 : 0))};
}

// The integer between `first` and `last`, saturating far beyond every exponent of a double.
long long readExponent(const char* first, const char* last) {
    constexpr long long cSaturated = 1'000'000'000'000;
    const bool negative = first != last && *first == '-';
    if (first != last && (*first == '-' || *first == '+')) ++first;
    long long value = 0;
    for (; first != last && isDigit(*first); ++first) {
        value = std::min(cSaturated, value * 10 + (*first - '0'));
    }
    return negative ? -value : value;
}

// Of a number that is out of a double's range: whether it is too large, not too small.
// `exponentMark` is the letter before the exponent; a digit counts `digitWeight` of its units.
bool isTooLarge(std::string_view number, char exponentMark, int digitWeight) {
    const auto isMark = [&](char ch) { return (ch | 0x20) == exponentMark; };
    const auto mark = std::find_if(number.begin(), number.end(), isMark);
    const std::string_view mantissa =
        number.substr(0, static_cast<std::size_t>(mark - number.begin()));
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t leading = mantissa.find_first_not_of("0.");
    if (leading == std::string_view::npos) return false;
    const long long digitsBeforePoint =
        static_cast<long long>(point) - static_cast<long long>(leading);
    const long long exponent =
        mark == number.end()
            ? 0
            : readExponent(number.data() + mantissa.size() + 1, number.data() + number.size());
    return digitsBeforePoint * digitWeight + exponent > 0;
}

// A number without sign; nothing where the text starts with none.
std::optional<double> readUnsigned(std::string_view text, std::chars_format format) {
    const bool isHex = format == std::chars_format::hex;
    double value = 0.0;
    const auto [end, fault] =
        std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (fault == std::errc()) return value;
    if (fault != std::errc::result_out_of_range) return std::nullopt;
    const std::string_view number = text.substr(0, static_cast<std::size_t>(end - text.data()));
    const bool tooLarge = isTooLarge(number, isHex ? 'p' : 'e', isHex ? 4 : 1);
    return tooLarge ? std::numeric_limits<double>::infinity() : 0.0;
}

constexpr int cFractionBits = 52;
constexpr int cExponentBias = 1075;
constexpr int cMaxFastDecimals = 3;
constexpr std::uint64_t cPowersOfTen[] = {1, 10, 100, 1000};

// The nearest integer to product / 2^shift, halves to the even one. The product is below 2^63.
std::uint64_t roundedShift(std::uint64_t product, int shift) {
    if (shift == 0) return product;
    if (shift >= 64) return 0;
    const std::uint64_t quotient = product >> shift;
    const std::uint64_t remainder = product & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    const bool up = remainder > half || (remainder == half && (quotient & 1) != 0);
    return quotient + (up ? 1 : 0);
}

// The number scaled / 10^DECIMALS. The constant lets the divisions become multiplications.
template <int DECIMALS>
char* writeScaled(char* out, std::uint64_t scaled) {
    constexpr std::uint64_t scale = cPowersOfTen[DECIMALS];
    out = std::to_chars(out, out + cMaxDoubleHead, scaled / scale).ptr;
    if constexpr (DECIMALS > 0) {
        *out = '.';
        auto fraction = static_cast<unsigned>(scaled % scale);
        for (int i = DECIMALS; i > 0; --i, fraction /= 10) {
            out[i] = static_cast<char>('0' + fraction % 10);
        }
        out += DECIMALS + 1;
    }
    return out;
}

// A finite number below 2^53 is mantissa / 2^shift with a mantissa of 53 bits, so that its product
// with 10^3 fits 64 bits and the remainder of the shift is exact.
char* writeShort(char* out, std::uint64_t mantissa, int shift, int decimals) {
    const std::uint64_t scaled = roundedShift(mantissa * cPowersOfTen[decimals], shift);
    switch (decimals) {
        case 0:
            return writeScaled<0>(out, scaled);
        case 1:
            return writeScaled<1>(out, scaled);
        case 2:
            return writeScaled<2>(out, scaled);
        default:
            return writeScaled<cMaxFastDecimals>(out, scaled);
    }
}

char* copyText(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

std::size_t paddingFor(std::size_t length, int width) {
    const auto size = static_cast<std::size_t>(width < 0 ? -static_cast<long long>(width) : width);
    return size > length ? size - length : 0;
}

}  // namespace

int toInt(double value) noexcept {
    if (std::isnan(value)) return 0;
    if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
    if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
    return static_cast<int>(value);
}

int readInt(std::string_view text) noexcept {
    const auto [negative, digits] = splitSign(text);
    constexpr std::int64_t cBeyond = std::int64_t{INT_MAX} + 1;
    std::int64_t value = 0;
    for (const char ch : digits) {
        if (!isDigit(ch)) break;
        value = std::min(cBeyond, value * 10 + (ch - '0'));
    }
    return static_cast<int>(negative ? -value : std::min<std::int64_t>(value, INT_MAX));
}

double readDouble(std::string_view text) noexcept {
    const auto [negative, number] = splitSign(text);
    if (number.empty() || number[0] == '-') return 0.0;
    const bool isHex =
        number.size() > 2 && number[0] == '0' && (number[1] | 0x20) == 'x' && number[2] != '-';
    std::optional<double> value;
    if (isHex) value = readUnsigned(number.substr(2), std::chars_format::hex);
    // "0x" without a digit is the number 0.
    if (!value) value = readUnsigned(number, std::chars_format::general);
    return negative && value ? -*value : value.value_or(0.0);
}

char* writeInt(char* out, int value) noexcept {
    return std::to_chars(out, out + cMaxIntText, value).ptr;
}

char* writeDouble(char* out, double value, int decimals) noexcept {
    if (decimals < 0) decimals = cDefaultDecimals;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    if (bits >> 63 != 0) *out++ = '-';
    const int exponent = static_cast<int>(bits >> cFractionBits) & 0x7FF;
    const std::uint64_t fraction = bits & ((std::uint64_t{1} << cFractionBits) - 1);
    if (exponent == 0x7FF) return copyText(out, fraction == 0 ? "inf" : "nan");
    if (decimals <= cMaxFastDecimals && exponent <= cExponentBias) {
        // Subnormal numbers have no leading bit, but they round to zero with it or without.
        const std::uint64_t leadingBit = std::uint64_t{1} << cFractionBits;
        return writeShort(out, fraction | leadingBit, cExponentBias - exponent, decimals);
    }
    char* const limit = out + cMaxDoubleHead - 1 + decimals;
    return std::to_chars(out, limit, std::fabs(value), std::chars_format::fixed, decimals).ptr;
}

CString formatText(std::string_view text, int width) {
    const std::size_t padding = paddingFor(text.size(), width);
    if (padding == 0) return CString(text);
    std::string field;
    field.reserve(text.size() + padding);
    if (width > 0) field.append(padding, ' ');
    field.append(text);
    if (width < 0) field.append(padding, ' ');
    return CString(std::move(field));
}

CString formatInt(int value, int width, int precision) {
    char digits[cMaxIntText];
    const char* const end = writeInt(digits, value);
    const char* const first = digits + (value < 0 ? 1 : 0);
    const auto count = static_cast<std::size_t>(end - first);
    if (precision < 0) precision = 1;
    const auto wanted = static_cast<std::size_t>(precision);
    if (count >= wanted && !(wanted == 0 && value == 0)) {
        return formatText({digits, static_cast<std::size_t>(end - digits)}, width);
    }
    std::string padded(value < 0 ? "-" : "");
    if (wanted > 0) padded.append(wanted - count, '0').append(first, count);
    return formatText(padded, width);
}

CString formatDouble(double value, int width, int decimals) {
    if (decimals < 0) decimals = cDefaultDecimals;
    constexpr int cMaxLocalDecimals = 64;
    if (decimals <= cMaxLocalDecimals) {
        char text[cMaxDoubleHead + cMaxLocalDecimals];
        const char* const end = writeDouble(text, value, decimals);
        return formatText({text, static_cast<std::size_t>(end - text)}, width);
    }
    std::string text(cMaxDoubleHead + static_cast<std::size_t>(decimals), '\0');
    const char* const end = writeDouble(text.data(), value, decimals);
    return formatText({text.data(), static_cast<std::size_t>(end - text.data())}, width);
}

}  // namespace tessalink
