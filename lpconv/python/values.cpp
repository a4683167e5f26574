#include <lpconv/python/values.h>

#include <structmember.h>

#include <cmath>
#include <string>

#include <lpconv/formats/exact_number.h>
#include <lpconv/numbers/qq.h>

namespace py = pybind11;

namespace lpconv::python {

namespace {

// Fraction keeps its parts in the slots _numerator and _denominator. Filling the slots of a
// freshly allocated Fraction skips the gcd its constructor would compute again for parts that
// are in lowest terms already, and the constructor's Python code. The slot offsets come from the
// class's member descriptors; the result is checked once against the constructor, so a Python
// whose Fraction is built otherwise falls back to the constructor.
Py_ssize_t slotOffset(const py::object& type, const char* name) {
  py::object descriptor = type.attr(name);
  if (Py_TYPE(descriptor.ptr()) != &PyMemberDescr_Type) return -1;
  const PyMemberDef* member = reinterpret_cast<PyMemberDescrObject*>(descriptor.ptr())->d_member;
  return member->type == T_OBJECT_EX ? member->offset : -1;
}

// A new reference to a Fraction holding the two parts (references stolen).
PyObject* fillFraction(const py::object& type, const FractionSlots& slots, PyObject* numerator,
                       PyObject* denominator) {
  auto* fractionType = reinterpret_cast<PyTypeObject*>(type.ptr());
  PyObject* made = fractionType->tp_alloc(fractionType, 0);
  if (made == nullptr) {
    Py_DECREF(numerator);
    Py_DECREF(denominator);
    throw py::error_already_set();
  }
  *reinterpret_cast<PyObject**>(reinterpret_cast<char*>(made) + slots.numerator) = numerator;
  *reinterpret_cast<PyObject**>(reinterpret_cast<char*>(made) + slots.denominator) = denominator;
  return made;
}

FractionSlots directFractionSlots(const py::object& fractionType) {
  try {
    FractionSlots slots{slotOffset(fractionType, "_numerator"),
                        slotOffset(fractionType, "_denominator")};
    if (!slots.usable()) return {};
    py::object made = py::reinterpret_steal<py::object>(
        fillFraction(fractionType, slots, PyLong_FromLong(-3), PyLong_FromLong(7)));
    py::object expected = fractionType(-3, 7);
    if (made.equal(expected) && py::hash(made) == py::hash(expected) &&
        py::str(made).cast<std::string>() == "-3/7" &&
        py::object(made.attr("denominator")).equal(py::int_(7))) {
      return slots;
    }
  } catch (const py::error_already_set&) {
  }
  return {};
}

py::object int64Object(std::int64_t v) {
  return py::reinterpret_steal<py::object>(PyLong_FromLongLong(v));
}

// The numerator and denominator of a finite big value, as GMP integers.
void bigParts(const QQ& q, mpz_t numerator, mpz_t denominator) {
  mpz_mul(numerator, q.ganze.value, q.nenner.value);
  mpz_add(numerator, numerator, q.zaehler.value);
  if (!q.isPositive) mpz_neg(numerator, numerator);
  mpz_set(denominator, q.nenner.value);
}

py::object infinityObject(bool positive) { return py::float_(positive ? INFINITY : -INFINITY); }

// A Python int as a GMP integer, by its hexadecimal text ("-0x1f"), which GMP reads with base 0.
void mpzFromInt(mpz_t out, py::handle value) {
  py::object hex = py::reinterpret_steal<py::object>(PyNumber_ToBase(value.ptr(), 16));
  if (!hex) throw py::error_already_set();
  const std::string text = hex.cast<std::string>();
  if (mpz_set_str(out, text.c_str(), 0) != 0) throw py::value_error("cannot read integer " + text);
}

Coefficient fromIntegerPair(py::handle numerator, py::handle denominator) {
  int overflow = 0;
  const long long n = PyLong_AsLongLongAndOverflow(numerator.ptr(), &overflow);
  int overflowDen = 0;
  const long long d = PyLong_AsLongLongAndOverflow(denominator.ptr(), &overflowDen);
  if ((n == -1 || d == -1) && PyErr_Occurred()) throw py::error_already_set();
  if (overflow == 0 && overflowDen == 0) {
    if (d == 0) throw py::value_error("a value with the denominator 0");
    if (d == 1) return Coefficient(static_cast<long>(n));
    return Coefficient(QQ(static_cast<long>(n), static_cast<long>(d)));
  }
  ZZ num;
  ZZ den;
  mpzFromInt(num.value, numerator);
  mpzFromInt(den.value, denominator);
  if (mpz_sgn(den.value) == 0) throw py::value_error("a value with the denominator 0");
  return Coefficient(QQ(std::move(num), std::move(den)));
}

Coefficient fromText(const std::string& text) {
  bool positive = true;
  if (isInfinityText(text, positive)) {
    return positive ? Coefficient::infinity() : Coefficient::minusInfinity();
  }
  Coefficient value;
  const NumberError error = parseExactNumber(text, value);
  if (error != NumberError::none) {
    throw py::value_error("'" + text + "' is not an exact number: " + describe(error));
  }
  return value;
}

}  // namespace

ValueKind valueKindOf(const std::string& word) {
  if (word == "fraction") return ValueKind::fraction;
  if (word == "mpq") return ValueKind::mpq;
  throw py::value_error("values must be \"fraction\" or \"mpq\", not \"" + word + "\"");
}

ValueMaker::ValueMaker(ValueKind kind) : kind_(kind) {
  if (kind == ValueKind::mpq) {
    type_ = py::module_::import("gmpy2").attr("mpq");
  } else {
    type_ = py::module_::import("fractions").attr("Fraction");
    static const FractionSlots slots = directFractionSlots(type_);
    slots_ = slots;
  }
}

py::object ValueMaker::fromIntegers(py::object numerator, py::object denominator) const {
  if (kind_ == ValueKind::fraction && slots_.usable()) {
    return py::reinterpret_steal<py::object>(
        fillFraction(type_, slots_, numerator.release().ptr(), denominator.release().ptr()));
  }
  return type_(numerator, denominator);
}

py::object ValueMaker::ratio(std::int64_t numerator, std::int64_t denominator) const {
  if (denominator == 1 && kind_ == ValueKind::fraction) return int64Object(numerator);
  return fromIntegers(int64Object(numerator), int64Object(denominator));
}

py::object ValueMaker::operator()(const Coefficient& c) const {
  if (c.isInline()) return ratio(c.numerator(), c.denominator());
  const QQ& q = c.big();
  if (q.isInf) return infinityObject(q.isPositive);
  ZZ numerator;
  ZZ denominator;
  bigParts(q, numerator.value, denominator.value);
  py::object num = intFromMpz(numerator.value);
  if (mpz_cmp_ui(denominator.value, 1) == 0 && kind_ == ValueKind::fraction) return num;
  return fromIntegers(std::move(num), intFromMpz(denominator.value));
}

py::object intFromMpz(const mpz_t z) {
  if (mpz_fits_slong_p(z)) return int64Object(mpz_get_si(z));
  std::string text(mpz_sizeinbase(z, 16) + 2, '\0');
  mpz_get_str(text.data(), 16, z);
  PyObject* value = PyLong_FromString(text.c_str(), nullptr, 16);
  if (value == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::object>(value);
}

Coefficient toCoefficient(py::handle value) {
  if (PyLong_Check(value.ptr())) return fromIntegerPair(value, py::int_(1));
  if (PyFloat_Check(value.ptr())) {
    const double v = PyFloat_AsDouble(value.ptr());
    if (std::isnan(v)) throw py::value_error("NaN is not a value");
    if (std::isinf(v)) return v > 0 ? Coefficient::infinity() : Coefficient::minusInfinity();
    // Every finite double is an exact binary fraction.
    py::tuple parts = value.attr("as_integer_ratio")();
    return fromIntegerPair(parts[0], parts[1]);
  }
  if (PyUnicode_Check(value.ptr())) return fromText(value.cast<std::string>());
  if (py::hasattr(value, "numerator") && py::hasattr(value, "denominator")) {
    // gmpy2's mpz parts are no Python ints; their index is.
    py::object numerator =
        py::reinterpret_steal<py::object>(PyNumber_Index(value.attr("numerator").ptr()));
    if (!numerator) throw py::error_already_set();
    py::object denominator =
        py::reinterpret_steal<py::object>(PyNumber_Index(value.attr("denominator").ptr()));
    if (!denominator) throw py::error_already_set();
    return fromIntegerPair(numerator, denominator);
  }
  throw py::type_error("cannot use a value of type " +
                       py::str(py::type::handle_of(value).attr("__name__")).cast<std::string>() +
                       " (int, Fraction, gmpy2.mpq, float or text expected)");
}

bool fitsInt64(const Coefficient& c, std::int64_t& numerator, std::int64_t& denominator) {
  if (c.isInline()) {
    numerator = c.numerator();
    denominator = c.denominator();
    return true;
  }
  const QQ& q = c.big();
  if (q.isInf) return false;
  ZZ num;
  ZZ den;
  bigParts(q, num.value, den.value);
  if (!mpz_fits_slong_p(num.value) || !mpz_fits_slong_p(den.value)) return false;
  numerator = mpz_get_si(num.value);
  denominator = mpz_get_si(den.value);
  return true;
}

}  // namespace lpconv::python
