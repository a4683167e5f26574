#pragma once
// The Python class Model: the exact sparse model with the values kind its getters give and the
// notes and warnings of the read that made it.

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include <lpconv/model/model.h>
#include <lpconv/python/values.h>

namespace lpconv::python {

struct PythonModel {
  Model model;
  ValueKind kind = ValueKind::fraction;
  std::vector<std::string> messages;
};

// Adds the class Model to the module.
void bindModel(pybind11::module_& module);

}  // namespace lpconv::python
