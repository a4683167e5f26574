// The compiled core of the Python package lpconv: reading models, the Model class, and the
// library's failures turned into Python exceptions instead of ending the process.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>

#include <lpconv/formats/formats.h>
#include <lpconv/python/model_binding.h>
#include <lpconv/python/values.h>
#include <lpconv/util/failure.h>

namespace py = pybind11;

namespace lpconv::python {

namespace {

// The Python classes the errors become, handed over by the package's __init__.py. Kept for the
// life of the process: the translator may run until the interpreter ends.
py::handle parseErrorType;
py::handle libraryErrorType;

void setErrorTypes(py::object parseError, py::object libraryError) {
  parseErrorType = parseError.release();
  libraryErrorType = libraryError.release();
}

void raiseParseError(const ParseError& error) {
  const Diagnostic& d = error.diagnostic();
  std::string text = format(d);
  while (!text.empty() && text.back() == '\n') text.pop_back();
  py::object instance =
      py::reinterpret_borrow<py::object>(parseErrorType)(text, d.file, d.line, d.column, d.message);
  PyErr_SetObject(parseErrorType.ptr(), instance.ptr());
}

std::unique_ptr<PythonModel> readFile(const std::string& path,
                                      std::optional<std::string> formatWordArg,
                                      std::optional<std::string> names, const std::string& values) {
  std::optional<Format> chosen;
  if (formatWordArg) {
    chosen = formatOfWord(*formatWordArg);
    if (!chosen) {
      throw py::value_error("format must be \"lp\", \"mps\" or \"opt\", not \"" + *formatWordArg +
                            "\"");
    }
  }
  auto result = std::make_unique<PythonModel>();
  result->kind = valueKindOf(values);
  ValueMaker check(result->kind);  // an ImportError for "mpq" before the work, not after it
  CollectingSink sink;
  {
    py::gil_scoped_release release;
    result->model = readModel(path, chosen, sink, names ? &*names : nullptr);
  }
  for (const Diagnostic& d : sink.messages) {
    std::string text = format(d);
    while (!text.empty() && text.back() == '\n') text.pop_back();
    result->messages.push_back(std::move(text));
  }
  return result;
}

}  // namespace

}  // namespace lpconv::python

PYBIND11_MODULE(_core, module) {
  using namespace lpconv::python;
  module.doc() = "The compiled core of lpconv; use the package lpconv instead.";

  // A failure inside the library throws instead of ending the interpreter.
  lpconv::setFailureHandler(lpconv::throwFailure);
  py::register_exception_translator([](std::exception_ptr caught) {
    try {
      if (caught) std::rethrow_exception(caught);
    } catch (const lpconv::ParseError& error) {
      if (!parseErrorType) throw;
      raiseParseError(error);
    } catch (const lpconv::GeneralException& error) {
      if (!libraryErrorType) throw;
      PyErr_SetString(libraryErrorType.ptr(), error.what());
    }
  });

  module.def("_set_error_types", &setErrorTypes, py::arg("parse_error"), py::arg("library_error"),
             "Registers the exception classes that ParseError and library failures become.");

  module.def(
      "_report_failure", [](const std::string& message) { lpconv::reportFailure(message); },
      py::arg("message"),
      "Reports a library failure, as a failing library operation would (for the package's tests).");

  bindModel(module);

  module.def("read", &readFile, py::arg("path"), py::arg("format") = py::none(),
             py::arg("names") = py::none(), py::arg("values") = "fraction",
             "Reads a model; see lpconv.read.");
}
