#include <lpconv/util/full_precision.h>

namespace lpconv {

std::uint8_t digitLimit = 18;

int fullPrecisionDigits() {
  static const int digits = static_cast<int>(digitLimit) - 1;
  return digits;
}

std::ostream& setFullPrecision(std::ostream& os) {
  os.unsetf(std::ios_base::floatfield);
  os.precision(fullPrecisionDigits());
  return os;
}

}  // namespace lpconv
