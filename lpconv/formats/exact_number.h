#pragma once
// Numbers of the standard formats, read exactly from their text: "0.1" is 1/10, "1e-1" is 1/10,
// "2.5e-05" is 1/40000, and "p/q" (the exact solvers' own form) is p/q. Nothing goes through a
// binary floating type.

#include <string>
#include <string_view>

#include <lpconv/numbers/coefficient.h>

namespace lpconv {

enum class NumberError {
  none,
  empty,            // no text at all
  malformed,        // not a number
  hexadecimal,      // "0x1p3" and the like
  notANumber,       // "nan"
  infinity,         // "inf", "infinity" where a finite value is due
  exponentRange,    // an exponent beyond +-kMaxDecimalExponent
  zeroDenominator,  // "1/0"
};

// The largest exponent magnitude a decimal text may carry; the numbers' own text parser has the
// same bound.
inline constexpr long kMaxDecimalExponent = 1000000;

// Reads the whole text as [sign] digits [. digits] [(e|E) [sign] digits], with at least one
// digit in the mantissa, or [sign] digits / digits. Returns NumberError::none and sets `value`,
// or says why the text is not a finite number (and leaves `value` alone).
NumberError parseExactNumber(std::string_view text, Coefficient& value);

// What a reader says about the error: "hexadecimal numbers are not supported", ...
const char* describe(NumberError error);

// Appends the exact text of a finite value that the readers read back to the same value: the
// shortest exact decimal where the value has one ("2.5", "-0.001", "1e-20", "3e+30"), and
// "p/q" otherwise ("1/3"). An infinity is written "inf" or "-inf".
void appendExactText(std::string& out, const Coefficient& value);
std::string exactText(const Coefficient& value);

// Whether the text is one of the infinity spellings the readers accept: "inf" or "infinity" in
// any case, after an optional sign; `positive` receives the sign.
bool isInfinityText(std::string_view text, bool& positive);

}  // namespace lpconv
