#include "scores/detail/Logarithm.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace tessalink::detail {

namespace {

/// A number as the sum of two doubles that do not overlap: about 106 bits. The operations are those
/// of Dekker, A floating-point technique for extending the available precision (1971).
struct Pair {
    double high;
    double low;
};

/// a + b when |a| is not below |b|.
constexpr Pair sumOfOrdered(double a, double b) {
    const double high = a + b;
    return {high, b - (high - a)};
}

constexpr Pair sum(double a, double b) {
    const double high = a + b;
    const double part = high - a;
    return {high, (a - (high - part)) + (b - part)};
}

constexpr Pair halves(double a) {
    constexpr double splitter = 134217729;  // 2 to the 27th, plus 1
    const double scaled = splitter * a;
    const double high = scaled - (scaled - a);
    return {high, a - high};
}

constexpr Pair product(double a, double b) {
    const double high = a * b;
    const Pair x = halves(a);
    const Pair y = halves(b);
    return {high, ((x.high * y.high - high) + x.high * y.low + x.low * y.high) + x.low * y.low};
}

constexpr Pair operator+(Pair a, Pair b) {
    const Pair highs = sum(a.high, b.high);
    return sumOfOrdered(highs.high, highs.low + (a.low + b.low));
}

constexpr Pair operator*(Pair a, Pair b) {
    const Pair highs = product(a.high, b.high);
    return sumOfOrdered(highs.high, highs.low + (a.high * b.low + a.low * b.high));
}

constexpr Pair operator/(double a, Pair b) {
    const double quotient = a / b.high;
    const Pair back = product(quotient, b.high);
    const double rest = ((a - back.high) - back.low) - quotient * b.low;
    return sumOfOrdered(quotient, rest / b.high);
}

/// 1, 1/3, 1/5, ...: the coefficients of the area tangent. With |s| below 0.172 the first that is
/// left out adds less than 2 to the -73rd of the sum.
constexpr std::size_t cTerms = 14;
constexpr std::array<Pair, cTerms> makeCoefficients() {
    std::array<Pair, cTerms> coefficients{};
    for (std::size_t i = 0; i < cTerms; ++i) {
        coefficients[i] = 1.0 / Pair{2.0 * static_cast<double>(i) + 1, 0};
    }
    return coefficients;
}
constexpr std::array<Pair, cTerms> cCoefficients = makeCoefficients();
/// From this term on a double is exact enough.
constexpr std::size_t cPlainTerms = 8;

constexpr Pair cLogOf2 = {0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};
constexpr double cRootOfHalf = 0.70710678118654752;

/// The area tangent divided by s, from the square of s.
Pair areaTangentSeries(Pair square) {
    double plain = 0;
    for (std::size_t i = cTerms; i-- > cPlainTerms;) {
        plain = plain * square.high + cCoefficients[i].high;
    }
    Pair series = {plain, 0};
    for (std::size_t i = cPlainTerms; i-- > 0;) series = series * square + cCoefficients[i];
    return series;
}

}  // namespace

double logarithm(double x) noexcept {
    if (!(x > 0) || std::isinf(x)) return std::numeric_limits<double>::quiet_NaN();
    int exponent = 0;
    double m = std::frexp(x, &exponent);
    if (m < cRootOfHalf) {
        m *= 2;
        --exponent;
    }
    const Pair s = (m - 1) / sum(m, 1);  // log m = 2 artanh s
    const Pair ofMantissa = Pair{2 * s.high, 2 * s.low} * areaTangentSeries(s * s);
    return (cLogOf2 * Pair{static_cast<double>(exponent), 0} + ofMantissa).high;
}

}  // namespace tessalink::detail
