#pragma once
// Exact values between the model and Python: a Coefficient becomes a Python int where it is
// whole, a fractions.Fraction otherwise (or a gmpy2.mpq on request), and an infinity becomes
// math.inf or -math.inf. The other way, ints, Fractions, mpq values, exact floats, infinities and
// decimal or p/q text all become Coefficients.

#include <pybind11/pybind11.h>

#include <cstdint>

#include <lpconv/numbers/coefficient.h>

namespace lpconv::python {

enum class ValueKind { fraction, mpq };

// "fraction" or "mpq"; anything else raises ValueError. Asking for "mpq" without gmpy2 raises
// ImportError.
ValueKind valueKindOf(const std::string& word);

// Where a Fraction keeps its two parts, when they can be filled in directly (both > 0).
struct FractionSlots {
  Py_ssize_t numerator = -1;
  Py_ssize_t denominator = -1;
  bool usable() const { return numerator > 0 && denominator > 0; }
};

// Makes Python values of one kind. Holds references to the Python types it builds, so it is
// made and used while the GIL is held.
class ValueMaker {
 public:
  explicit ValueMaker(ValueKind kind);
  pybind11::object operator()(const Coefficient& c) const;
  // numerator / denominator in lowest terms, denominator > 0.
  pybind11::object ratio(std::int64_t numerator, std::int64_t denominator) const;

 private:
  pybind11::object fromIntegers(pybind11::object numerator, pybind11::object denominator) const;

  ValueKind kind_;
  pybind11::object type_;
  FractionSlots slots_;
};

// A Python int of any size from a GMP integer.
pybind11::object intFromMpz(const mpz_t z);

// The exact value of a Python object (see the top of this file). Raises ValueError for NaN, for
// text that is not a number, and TypeError for an object of another type.
Coefficient toCoefficient(pybind11::handle value);

// Whether a finite value fits int64 numerator and denominator; sets both when it does.
bool fitsInt64(const Coefficient& c, std::int64_t& numerator, std::int64_t& denominator);

}  // namespace lpconv::python
