#pragma once

namespace tessalink::detail {

/// The natural logarithm of a positive finite number, rounded to the nearest double (but for
/// perhaps one number in a million). The C library's differs in the last digit from one processor
/// to the next; this one is made of basic operations alone, in a fixed order. NaN for anything
/// else.
double logarithm(double x) noexcept;

}  // namespace tessalink::detail
