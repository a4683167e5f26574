#include <lpconv/formats/mps_rules.h>

namespace lpconv::detail {

bool isLargeAsInfinity(const Coefficient& value) {
  // Inline values stay below 2^62 < 1e30 in magnitude.
  if (value.isInline()) return false;
  const QQ& q = value.big();
  if (q.isInf) return false;
  static const QQ threshold("1000000000000000000000000000000");
  return q.isPositive ? !(q < threshold) : !(-q < threshold);
}

}  // namespace lpconv::detail
