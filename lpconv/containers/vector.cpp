#include <lpconv/containers/vector.h>

#include <lpconv/numbers/tolerance.h>

namespace lpconv::detail {

const QQ& vectorTolerance() { return equalityTolerance(); }

bool nearlyEqual(const QQ& a, const QQ& b) { return withinEqualityTolerance(a, b); }

}  // namespace lpconv::detail
