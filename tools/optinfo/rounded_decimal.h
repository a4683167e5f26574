#pragma once
// Values that look like a rounded decimal of a simple fraction: a decimal of 12 or more
// significant digits that lies within one unit of its last digit of p/d, with d at most
// kSimpleDenominator, without being that fraction (0.333333333333 for 1/3). Such a value usually
// came out of a program that printed a double, and an exact solver takes it at its word.

#include <lpconv/numbers/coefficient.h>

namespace lpconv {

inline constexpr long kRoundedDecimalDigits = 12;
inline constexpr long kSimpleDenominator = 100;

bool looksLikeRoundedFraction(const Coefficient& value);

}  // namespace lpconv
