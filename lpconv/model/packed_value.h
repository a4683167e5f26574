#pragma once
// A matrix value in 64 bits, so that a model's entries take 12 bytes each (column and value)
// instead of a full Coefficient: the decimals modelling tools print (m / 10^k with |m| < 2^55,
// k <= 18: integers, "0.25", "-16.0203754179043") are held in the word itself; any other value
// is an index into a table of Coefficients the owner keeps.

#include <cstdint>
#include <vector>

#include <lpconv/numbers/coefficient.h>

namespace lpconv::detail {

// Packs a value, appending it to `table` when it does not fit the word.
std::uint64_t packValue(const Coefficient& value, std::vector<Coefficient>& table);
// The value again, in its canonical form.
Coefficient unpackValue(std::uint64_t word, const std::vector<Coefficient>& table);

}  // namespace lpconv::detail
