#include <lpconv/python/bulk.h>

#include <pybind11/numpy.h>

#include <cstdint>

namespace py = pybind11;

namespace lpconv::python {

py::dict csrArrays(const Model& model, const ValueMaker& make) {
  const std::size_t rows = model.rowCount();
  const auto nonzeros = static_cast<py::ssize_t>(model.nonzeroCount());
  py::array_t<std::int64_t> indptr(static_cast<py::ssize_t>(rows + 1));
  py::array_t<std::int64_t> indices(nonzeros);
  py::array_t<std::int64_t> numerator(nonzeros);
  py::array_t<std::int64_t> denominator(nonzeros);
  py::dict overflow;
  std::int64_t* start = indptr.mutable_data();
  std::int64_t* column = indices.mutable_data();
  std::int64_t* num = numerator.mutable_data();
  std::int64_t* den = denominator.mutable_data();
  std::int64_t k = 0;
  start[0] = 0;
  for (Model::Index i = 0; i < rows; ++i) {
    const RowView row = model.row(i);
    for (std::size_t e = 0; e < row.size(); ++e, ++k) {
      column[k] = row.column(e);
      if (!fitsInt64(row.value(e), num[k], den[k])) {
        num[k] = 0;
        den[k] = 0;
        overflow[py::int_(k)] = make(row.value(e));
      }
    }
    start[i + 1] = k;
  }
  py::dict result;
  result["indptr"] = indptr;
  result["indices"] = indices;
  result["numerator"] = numerator;
  result["denominator"] = denominator;
  result["overflow"] = overflow;
  return result;
}

py::list matrixValues(const Model& model, const ValueMaker& make) {
  py::list values(model.nonzeroCount());
  std::size_t k = 0;
  for (Model::Index i = 0; i < model.rowCount(); ++i) {
    const RowView row = model.row(i);
    for (std::size_t e = 0; e < row.size(); ++e, ++k) {
      PyList_SET_ITEM(values.ptr(), static_cast<py::ssize_t>(k),
                      make(row.value(e)).release().ptr());
    }
  }
  return values;
}

}  // namespace lpconv::python
