#include <lpconv/containers/vector.h>

#include <cmath>
#include <cstdint>

namespace lpconv::detail {

const QQ& vectorTolerance() {
  // The digit count is a one-byte value; the tolerance goes through the long double 10^9 on
  // purpose, the way every other decimal constant enters the exact world.
  static const std::uint8_t digits = 9;
  static const QQ tolerance = QQ(1L) / fromDbl(std::pow(10.0L, digits));
  return tolerance;
}

bool nearlyEqual(const QQ& a, const QQ& b) {
  if (compare(a, b) == 0) return true;
  QQ difference;
  sub(difference, a, b);
  if (!difference.isPositive) difference = -difference;
  return compare(difference, vectorTolerance()) <= 0;
}

}  // namespace lpconv::detail
