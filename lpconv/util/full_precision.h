#pragma once
// The decimal precision of the long floating type and the stream setting that shows all of it.

#include <cstdint>
#include <ostream>

namespace lpconv {

// Process-wide count of decimal digits that a long double carries (18). The exact numbers shorten
// approximations to it; setFullPrecision and the conversions copy it once, at first use.
extern std::uint8_t digitLimit;

// The precision setFullPrecision sets: digitLimit - 1, as digitLimit was at the first call.
int fullPrecisionDigits();

// Default floating notation (neither fixed nor scientific) with fullPrecisionDigits() significant
// digits (17). Returns the stream for chaining.
std::ostream& setFullPrecision(std::ostream& os);

}  // namespace lpconv
