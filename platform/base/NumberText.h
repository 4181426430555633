#pragma once

#include <climits>
#include <cstddef>
#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// Numbers to text and back, and the arithmetic of 32-bit integers, for the whole library. Nothing
/// here depends on the process locale: the decimal point is always a full stop. All functions may
/// be called from any thread.
namespace tessalink {

/// The bytes that "%d" needs at most, without a NUL: "-2147483648".
inline constexpr std::size_t cMaxIntText = 11;
/// The bytes of sign, integer digits and point that "%.*f" needs at most: "-", 309 digits, ".".
inline constexpr std::size_t cMaxDoubleHead = 311;
/// The bytes that "%1.2f" needs at most, without a NUL.
inline constexpr std::size_t cMaxDoubleText = cMaxDoubleHead + 2;
/// The decimals that printf writes when a format names none.
inline constexpr int cDefaultDecimals = 6;

/// The number without its fraction; the nearest integer when it is beyond 32 bits, 0 for NaN.
TESSALINK_API int toInt(double value) noexcept;

/// The decimal number at the start of the text, as atoi reads it: after white space (blank and 9 to
/// 13) and one sign; 0 when there is no digit, the nearest integer when it is beyond 32 bits.
TESSALINK_API int readInt(std::string_view text) noexcept;

/// The number at the start of the text, as atof reads it in the C locale: after white space and one
/// sign a decimal or (0x) hexadecimal number with fraction and exponent, "inf", "infinity", "nan";
/// 0.0 when there is none. Too large gives an infinity, too small a subnormal number or zero.
TESSALINK_API double readDouble(std::string_view text) noexcept;

/// Two's complement arithmetic that wraps around at 32 bits.
constexpr int wrapAdd(int a, int b) noexcept {
    return static_cast<int>(static_cast<unsigned>(a) + static_cast<unsigned>(b));
}
/// The difference, wrapped likewise.
constexpr int wrapSub(int a, int b) noexcept {
    return static_cast<int>(static_cast<unsigned>(a) - static_cast<unsigned>(b));
}
/// The product, wrapped likewise.
constexpr int wrapMul(int a, int b) noexcept {
    return static_cast<int>(static_cast<unsigned>(a) * static_cast<unsigned>(b));
}
/// The negative, wrapped likewise: -2147483648 stays what it is.
constexpr int wrapNeg(int a) noexcept {
    return wrapSub(0, a);
}

/// The quotient without its fraction; -2147483648 / -1 wraps. `b` must not be 0.
constexpr int divide(int a, int b) noexcept {
    return b == -1 ? wrapNeg(a) : a / b;
}

/// Writes "%d" and returns the end of what was written; no NUL is added. `out` has room for
/// cMaxIntText bytes.
TESSALINK_API char* writeInt(char* out, int value) noexcept;

/// Writes "%.*f", digit for digit as C does (halves of the exact binary value go to the even digit;
/// "inf", "-inf", "nan", "-nan"), and returns the end of what was written; no NUL is added.
/// Negative `decimals` stand for 6. `out` has room for cMaxDoubleHead + decimals bytes.
TESSALINK_API char* writeDouble(char* out, double value, int decimals) noexcept;

/// "%W.Pd": at least `precision` digits (1 when it is negative; 0 writes nothing for the value 0)
/// in a field of at least `width` characters, left-aligned when the width is negative.
TESSALINK_API CString formatInt(int value, int width, int precision);

/// "%W.Df": `decimals` digits after the point (6 when it is negative), in a field likewise.
TESSALINK_API CString formatDouble(double value, int width, int decimals);

/// "%Ws": the text in a field likewise; a NUL in the text is a character like any other.
TESSALINK_API CString formatText(std::string_view text, int width);

}  // namespace tessalink
