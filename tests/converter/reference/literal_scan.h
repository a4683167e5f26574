#pragma once
// The character-level pieces of the slow reference converter: number reading, the digit scan and
// the linear-expression scan, written as plainly as the rules allow. Nothing here is fast on
// purpose; lpconv's own reader must agree with it byte for byte.

#include <string>

#include <lpconv/containers/vector.h>
#include <lpconv/numbers/qq.h>

namespace lpconv::reference {

// strtod for decimal forms only, widened to the long floating type: a hexadecimal prefix reads
// as the 0 before its x ("0x3" is 0), everything else (white space, sign, exponent, inf, nan)
// as strtod reads it.
dbl_t readDecimal(const char* text);

// The exact value of readDecimal(text), through the 17-digit text of the long double.
QQ readDecimalQQ(const char* text);

// The index after an x: base-10 strtol of text, white space and sign included.
long readIndex(const char* text);

// Skips blanks, "+" and "-" from position `from`; returns whether the next character is a decimal
// digit. Reports "scan for digit failed!" when the text ends first.
bool leadsToDigit(const std::string& text, std::size_t from);

// Entry k of a row or bound vector of n entries; any k outside 1..n reports
// "Array: index out of range".
QQ& entry(Vector<QQ>& vector, long k, long n);

// One side of a linear expression (the objective, or a constraint line and then its rest): resets
// constant to 0 and row to n zeros (row keeps its size when n is 0), scans the normalised text and
// returns the trimmed rest from the first relation character after the expression ("" when
// there is none).
std::string parseSide(const std::string& text, long n, QQ& constant, Vector<QQ>& row);

}  // namespace lpconv::reference
