#pragma once
// Reading the numbers written in an LP line: string-to-double on decimal forms only, widened to
// dbl_t and made exact through its 17-significant-digit text.

#include <lpconv/numbers/coefficient.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

// C strtod on decimal forms (leading white space, sign, digits, ".", exponent, "inf",
// "infinity", "nan"), but never hexadecimal: "0x3" reads as 0. Returns 0 when nothing converts.
double readDecimal(const char* text);

// The exact value of readDecimal(text) as the converter sees it: fromDbl of the value widened to
// dbl_t. Plain digit runs take a fast path that gives the same value without the text round trip.
// A NaN reaches the QQ text parser, which throws std::invalid_argument("mpz_set_str").
Coefficient readCoefficient(const char* text);

}  // namespace lpconv
