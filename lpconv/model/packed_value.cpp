#include <lpconv/model/packed_value.h>

#include <lpconv/numbers/internal/powers_of_ten.h>

namespace lpconv::detail {

namespace {

constexpr std::int64_t kMantissaLimit = std::int64_t{1} << 55;
constexpr unsigned kMaxScale = 18;

std::uint64_t inTable(const Coefficient& value, std::vector<Coefficient>& table) {
  table.push_back(value);
  return (static_cast<std::uint64_t>(table.size() - 1) << 1) | 1;
}

std::int64_t power(std::int64_t base, unsigned exponent) {
  std::int64_t r = 1;
  while (exponent-- > 0) r *= base;
  return r;
}

}  // namespace

// Word layout: bit 0 clear: bits 1-6 hold k, bits 7-63 the signed mantissa m; bit 0 set: the
// rest is the table index.
std::uint64_t packValue(const Coefficient& value, std::vector<Coefficient>& table) {
  if (!value.isInline()) return inTable(value, table);
  const std::int64_t p = value.numerator();
  std::int64_t q = value.denominator();
  unsigned twos = 0;
  unsigned fives = 0;
  while ((q & 1) == 0) {
    q >>= 1;
    ++twos;
  }
  while (q % 5 == 0) {
    q /= 5;
    ++fives;
  }
  if (q != 1 || twos > kMaxScale || fives > kMaxScale) return inTable(value, table);
  const unsigned k = twos > fives ? twos : fives;
  const std::int64_t factor = power(2, k - twos) * power(5, k - fives);
  const std::int64_t magnitude = p < 0 ? -p : p;
  if (magnitude >= kMantissaLimit / factor) return inTable(value, table);
  const std::int64_t m = p * factor;
  return (static_cast<std::uint64_t>(m) << 7) | (static_cast<std::uint64_t>(k) << 1);
}

Coefficient unpackValue(std::uint64_t word, const std::vector<Coefficient>& table) {
  if ((word & 1) != 0) return table[word >> 1];
  std::int64_t m = static_cast<std::int64_t>(word) >> 7;
  unsigned k = static_cast<unsigned>((word >> 1) & 63);
  if (k == 0) return Coefficient::fromLowestTerms(m, 1);
  // Cancel the factors 2 and 5 that m shares with 10^k.
  std::int64_t q = kPowersOfTen[k];
  unsigned twos = k;
  unsigned fives = k;
  while (twos > 0 && (m & 1) == 0) {
    m /= 2;
    q /= 2;
    --twos;
  }
  while (fives > 0 && m % 5 == 0) {
    m /= 5;
    q /= 5;
    --fives;
  }
  return Coefficient::fromLowestTerms(m, q);
}

}  // namespace lpconv::detail
