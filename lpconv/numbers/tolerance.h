#pragma once
// The one tolerance of the library: two rationals count as equal when they differ by at most
// 1/10^9. The vector comparison and the converter's row pairing both decide with it.

#include <cmath>
#include <cstdint>

#include <lpconv/numbers/qq.h>

namespace lpconv {

// The tolerance's denominator, for integer arithmetic that decides the same question.
inline constexpr std::uint64_t kToleranceDenominator = 1000000000;

// 1/10^9, built once. The digit count is a one-byte value and the tolerance goes through the
// long double 10^9 on purpose, the way every other decimal constant enters the exact world.
inline const QQ& equalityTolerance() {
  static const std::uint8_t digits = 9;
  static const QQ tolerance = QQ(1L) / fromDbl(std::pow(10.0L, digits));
  return tolerance;
}

// True when a and b compare equal or |a - b| <= 1/10^9 (exactly 1/10^9 still counts). Equal
// infinities compare equal before any subtraction, so this never reports "INF - INF is not
// defined"; other infinite pairs report what QQ subtraction reports.
inline bool withinEqualityTolerance(const QQ& a, const QQ& b) {
  if (compare(a, b) == 0) return true;
  QQ difference;
  sub(difference, a, b);
  if (!difference.isPositive) difference = -difference;
  return compare(difference, equalityTolerance()) <= 0;
}

}  // namespace lpconv
