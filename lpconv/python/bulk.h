#pragma once
// The matrix and long value vectors for Python without a Python object per nonzero: numpy int64
// arrays of positions, numerators and denominators; only values beyond 64 bits (and
// infinities) become Python objects of their own.

#include <pybind11/pybind11.h>

#include <lpconv/model/model.h>
#include <lpconv/python/values.h>

namespace lpconv::python {

// A dict with the CSR arrays of the matrix: "indptr" (rows + 1 entries), "indices" (the column
// of each entry), "numerator" and "denominator" (int64; both 0 for an entry that does not fit,
// whose value is in "overflow", a dict from entry position to value).
pybind11::dict csrArrays(const Model& model, const ValueMaker& make);

// Every matrix value in CSR order as a Python list of values.
pybind11::list matrixValues(const Model& model, const ValueMaker& make);

}  // namespace lpconv::python
