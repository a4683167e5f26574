#include <lpconv/python/model_binding.h>

#include <pybind11/stl.h>

#include <cmath>
#include <fstream>
#include <optional>
#include <sstream>
#include <vector>

#include <lpconv/formats/formats.h>
#include <lpconv/python/bulk.h>

namespace py = pybind11;

namespace lpconv::python {

namespace {

using Index = Model::Index;

// A column or row given by its index (negative counts from the end, as Python does) or its name.
Index indexOf(py::handle key, Index count,
              std::optional<Index> (*find)(const Model&, std::string_view), const Model& model,
              const char* what) {
  if (PyUnicode_Check(key.ptr())) {
    const std::string name = key.cast<std::string>();
    if (const auto found = find(model, name)) return *found;
    throw py::key_error(std::string("no ") + what + " named '" + name + "'");
  }
  py::object index = py::reinterpret_steal<py::object>(PyNumber_Index(key.ptr()));
  if (!index) throw py::error_already_set();
  long long i = index.cast<long long>();
  if (i < 0) i += count;
  if (i < 0 || i >= count) throw py::index_error(std::string(what) + " index out of range");
  return static_cast<Index>(i);
}

Index columnOf(const Model& model, py::handle key) {
  return indexOf(
      key, model.columnCount(),
      [](const Model& m, std::string_view name) { return m.findColumn(name); }, model, "column");
}

Index rowOf(const Model& model, py::handle key) {
  return indexOf(
      key, model.rowCount(), [](const Model& m, std::string_view name) { return m.findRow(name); },
      model, "row");
}

template <class Get>
py::list listOf(Index count, Get get) {
  py::list out(count);
  for (Index k = 0; k < count; ++k) {
    PyList_SET_ITEM(out.ptr(), static_cast<py::ssize_t>(k), get(k).release().ptr());
  }
  return out;
}

py::object nameObject(std::string_view name) { return py::str(name.data(), name.size()); }

// The entries of a new row: a dict {column: value} or pairs (column, value), columns by index or
// name.
std::vector<ModelEntry> entriesOf(const Model& model, py::handle entries) {
  std::vector<ModelEntry> out;
  py::object items = py::isinstance<py::dict>(entries)
                         ? py::reinterpret_borrow<py::dict>(entries).attr("items")()
                         : py::reinterpret_borrow<py::object>(entries);
  for (py::handle item : items) {
    py::tuple pair = py::reinterpret_borrow<py::object>(item).cast<py::tuple>();
    if (pair.size() != 2) throw py::value_error("a row entry is a pair (column, value)");
    Coefficient value = toCoefficient(pair[1]);
    if (!value.isInline() && value.big().isInf) {
      throw py::value_error("a matrix entry must be finite");
    }
    out.push_back({columnOf(model, pair[0]), std::move(value)});
  }
  return out;
}

bool sameModel(const Model& a, const Model& b) {
  if (a.sense() != b.sense() || a.objectiveName() != b.objectiveName() ||
      !identical(a.objectiveConstant(), b.objectiveConstant()) ||
      a.columnCount() != b.columnCount() || a.rowCount() != b.rowCount() ||
      a.nonzeroCount() != b.nonzeroCount()) {
    return false;
  }
  for (Index j = 0; j < a.columnCount(); ++j) {
    if (a.columnName(j) != b.columnName(j) || a.isInteger(j) != b.isInteger(j) ||
        !identical(a.columnLower(j), b.columnLower(j)) ||
        !identical(a.columnUpper(j), b.columnUpper(j)) ||
        !identical(a.objective(j), b.objective(j))) {
      return false;
    }
  }
  for (Index i = 0; i < a.rowCount(); ++i) {
    const RowView ra = a.row(i);
    const RowView rb = b.row(i);
    if (a.rowName(i) != b.rowName(i) || !identical(a.rowLower(i), b.rowLower(i)) ||
        !identical(a.rowUpper(i), b.rowUpper(i)) || ra.size() != rb.size()) {
      return false;
    }
    for (std::size_t k = 0; k < ra.size(); ++k) {
      if (ra.column(k) != rb.column(k) || !identical(ra.value(k), rb.value(k))) return false;
    }
  }
  return true;
}

void writeModelFile(const PythonModel& self, const std::string& path,
                    std::optional<std::string> formatWordArg, std::optional<std::string> names) {
  std::optional<Format> chosen = formatWordArg ? formatOfWord(*formatWordArg) : formatOfName(path);
  if (!chosen) {
    throw py::value_error(formatWordArg ? "format must be \"lp\", \"mps\" or \"opt\", not \"" +
                                              *formatWordArg + "\""
                                        : "cannot tell the format from the name '" + path +
                                              "' (expected .lp, .mps or .opt); give format=");
  }
  if (names && *chosen != Format::opt) throw py::value_error("a name map belongs to an .opt file");
  if (path.size() >= 3 && path.compare(path.size() - 3, 3, ".gz") == 0) {
    throw py::value_error("writing compressed files is not supported: '" + path + "'");
  }
  CollectingSink sink;
  {
    py::gil_scoped_release release;
    std::ofstream out(path, std::ios::binary);
    if (!out) throw std::runtime_error("cannot open '" + path + "' for writing");
    switch (*chosen) {
      case Format::lp:
        writeLp(self.model, out);
        break;
      case Format::mps:
        writeMps(self.model, out);
        break;
      case Format::opt:
        writeOpt(self.model, out, sink);
        break;
    }
    out.close();
    if (!out) throw std::runtime_error("cannot write '" + path + "'");
    if (names) {
      std::ofstream map(*names, std::ios::binary);
      if (!map) throw std::runtime_error("cannot open '" + *names + "' for writing");
      writeNameMap(self.model, map);
      map.close();
      if (!map) throw std::runtime_error("cannot write '" + *names + "'");
    }
  }
  if (!sink.messages.empty()) {
    py::object warn = py::module_::import("warnings").attr("warn");
    for (const Diagnostic& d : sink.messages) warn(format(d));
  }
}

}  // namespace

void bindModel(py::module_& module) {
  py::class_<PythonModel> model(module, "Model", R"(An exact linear program.

Columns (variables) and rows (constraints) are numbered from 0 in the order they were added and
are named; values are Python ints where whole, fractions.Fraction otherwise (gmpy2.mpq for a
model read with values="mpq"), and the infinities are math.inf and -math.inf.)");

  model.def(py::init<>(), "An empty model: no columns, no rows, minimize 0.");

  model.def_property(
      "sense",
      [](const PythonModel& self) {
        return self.model.sense() == ObjectiveSense::maximize ? "maximize" : "minimize";
      },
      [](PythonModel& self, const std::string& word) {
        if (word == "minimize" || word == "min") {
          self.model.setSense(ObjectiveSense::minimize);
        } else if (word == "maximize" || word == "max") {
          self.model.setSense(ObjectiveSense::maximize);
        } else {
          throw py::value_error("sense must be \"minimize\" or \"maximize\", not \"" + word + "\"");
        }
      },
      "The objective sense: \"minimize\" or \"maximize\" (\"min\" and \"max\" are accepted when "
      "set).");

  model.def_property(
      "objective_name",
      [](const PythonModel& self) { return nameObject(self.model.objectiveName()); },
      [](PythonModel& self, const std::string& name) { self.model.setObjectiveName(name); },
      "The name of the objective row.");

  model.def_property(
      "constant",
      [](const PythonModel& self) { return ValueMaker(self.kind)(self.model.objectiveConstant()); },
      [](PythonModel& self, py::handle value) {
        self.model.setObjectiveConstant(toCoefficient(value));
      },
      "The constant term of the objective.");

  model.def_property(
      "values",
      [](const PythonModel& self) { return self.kind == ValueKind::mpq ? "mpq" : "fraction"; },
      [](PythonModel& self, const std::string& word) {
        const ValueKind kind = valueKindOf(word);
        ValueMaker check(kind);  // raises ImportError for "mpq" without gmpy2
        self.kind = kind;
      },
      "The kind of value the getters give: \"fraction\" (int or Fraction) or \"mpq\" (gmpy2.mpq).");

  model.def_property_readonly(
      "num_columns", [](const PythonModel& self) { return self.model.columnCount(); },
      "The number of columns.");
  model.def_property_readonly(
      "num_rows", [](const PythonModel& self) { return self.model.rowCount(); },
      "The number of rows.");
  model.def_property_readonly(
      "num_nonzeros", [](const PythonModel& self) { return self.model.nonzeroCount(); },
      "The number of stored matrix entries (none is zero).");

  model.def_property_readonly(
      "column_names",
      [](const PythonModel& self) {
        return listOf(self.model.columnCount(),
                      [&](Index j) { return nameObject(self.model.columnName(j)); });
      },
      "The column names, in column order (a new list).");
  model.def_property_readonly(
      "row_names",
      [](const PythonModel& self) {
        return listOf(self.model.rowCount(),
                      [&](Index i) { return nameObject(self.model.rowName(i)); });
      },
      "The row names, in row order (a new list).");

  // Per-column and per-row value lists.
  const auto columnValues = [](const Coefficient& (Model::*get)(Index) const) {
    return [get](const PythonModel& self) {
      const ValueMaker make(self.kind);
      return listOf(self.model.columnCount(), [&](Index j) { return make((self.model.*get)(j)); });
    };
  };
  const auto rowValues = [](const Coefficient& (Model::*get)(Index) const) {
    return [get](const PythonModel& self) {
      const ValueMaker make(self.kind);
      return listOf(self.model.rowCount(), [&](Index i) { return make((self.model.*get)(i)); });
    };
  };
  model.def_property_readonly("column_lower", columnValues(&Model::columnLower),
                              "The lower bound of every column (-math.inf where there is none).");
  model.def_property_readonly("column_upper", columnValues(&Model::columnUpper),
                              "The upper bound of every column (math.inf where there is none).");
  model.def_property_readonly("objective_vector", columnValues(&Model::objective),
                              "The objective coefficient of every column, zeros included.");
  model.def_property_readonly("row_lower", rowValues(&Model::rowLower),
                              "The lower side of every row (-math.inf where there is none).");
  model.def_property_readonly("row_upper", rowValues(&Model::rowUpper),
                              "The upper side of every row (math.inf where there is none).");
  model.def_property_readonly(
      "integrality",
      [](const PythonModel& self) {
        std::vector<bool> out(self.model.columnCount());
        for (Index j = 0; j < self.model.columnCount(); ++j) out[j] = self.model.isInteger(j);
        return out;
      },
      "Whether each column is integer (a list of bools).");

  model.def_property_readonly(
      "objective",
      [](const PythonModel& self) {
        const ValueMaker make(self.kind);
        py::dict out;
        for (Index j = 0; j < self.model.columnCount(); ++j) {
          if (!self.model.objective(j).isZero()) {
            out[nameObject(self.model.columnName(j))] = make(self.model.objective(j));
          }
        }
        return out;
      },
      "The non-zero objective coefficients as a dict {column name: value}.");

  model.def(
      "row",
      [](const PythonModel& self, py::handle key) {
        const RowView row = self.model.row(rowOf(self.model, key));
        const ValueMaker make(self.kind);
        py::dict out;
        for (std::size_t k = 0; k < row.size(); ++k) {
          out[nameObject(self.model.columnName(row.column(k)))] = make(row.value(k));
        }
        return out;
      },
      py::arg("row"),
      "The entries of one row (by index or name) as a dict {column name: value}, columns "
      "ascending.");

  model.def(
      "column_index",
      [](const PythonModel& self, py::handle key) { return columnOf(self.model, key); },
      py::arg("column"),
      "The index of a column given by name (or index); KeyError when there is none.");
  model.def(
      "row_index", [](const PythonModel& self, py::handle key) { return rowOf(self.model, key); },
      py::arg("row"), "The index of a row given by name (or index); KeyError when there is none.");

  model.def(
      "_csr_arrays",
      [](const PythonModel& self) { return csrArrays(self.model, ValueMaker(self.kind)); },
      "The CSR arrays as a dict (see Model.csr).");
  model.def(
      "_matrix_values",
      [](const PythonModel& self) { return matrixValues(self.model, ValueMaker(self.kind)); },
      "Every matrix value in CSR order as a list (see CSR.values).");

  // --- Building ---
  model.def(
      "add_column",
      [](PythonModel& self, const std::string& name, py::handle lower, py::handle upper,
         py::handle objective, bool integer) {
        if (self.model.findColumn(name))
          throw py::value_error("a column named '" + name + "' exists");
        Coefficient lo = toCoefficient(lower);
        Coefficient up = toCoefficient(upper);
        Coefficient cost = toCoefficient(objective);
        if (!cost.isInline() && cost.big().isInf)
          throw py::value_error("an objective coefficient must be finite");
        const Index j = self.model.addColumn(name);
        self.model.setColumnLower(j, std::move(lo));
        self.model.setColumnUpper(j, std::move(up));
        self.model.setObjective(j, std::move(cost));
        self.model.setInteger(j, integer);
        return j;
      },
      py::arg("name"), py::arg("lower") = 0, py::arg("upper") = INFINITY, py::arg("objective") = 0,
      py::arg("integer") = false,
      "Adds a column with a new name and returns its index. Values may be int, Fraction, "
      "gmpy2.mpq,\n"
      "float (taken exactly), math.inf or text such as \"0.1\" or \"1/3\".");

  model.def(
      "add_row",
      [](PythonModel& self, const std::string& name, py::handle entries, py::handle lower,
         py::handle upper) {
        if (self.model.findRow(name)) throw py::value_error("a row named '" + name + "' exists");
        std::vector<ModelEntry> list = entriesOf(self.model, entries);
        Coefficient lo = toCoefficient(lower);
        Coefficient up = toCoefficient(upper);
        return self.model.addRow(name, list, std::move(lo), std::move(up));
      },
      py::arg("name"), py::arg("entries"), py::arg("lower") = -INFINITY,
      py::arg("upper") = INFINITY,
      "Adds a row lower <= sum(value * column) <= upper and returns its index. `entries` is a "
      "dict\n"
      "{column: value} or pairs (column, value), columns by index or name; a column named twice\n"
      "adds up and zeros are dropped.");

  model.def(
      "set_bounds",
      [](PythonModel& self, py::handle column, py::handle lower, py::handle upper) {
        const Index j = columnOf(self.model, column);
        if (!lower.is_none()) self.model.setColumnLower(j, toCoefficient(lower));
        if (!upper.is_none()) self.model.setColumnUpper(j, toCoefficient(upper));
      },
      py::arg("column"), py::arg("lower") = py::none(), py::arg("upper") = py::none(),
      "Sets the bounds of a column (by index or name); None leaves a bound as it is.");
  model.def(
      "set_sides",
      [](PythonModel& self, py::handle row, py::handle lower, py::handle upper) {
        const Index i = rowOf(self.model, row);
        if (!lower.is_none()) self.model.setRowLower(i, toCoefficient(lower));
        if (!upper.is_none()) self.model.setRowUpper(i, toCoefficient(upper));
      },
      py::arg("row"), py::arg("lower") = py::none(), py::arg("upper") = py::none(),
      "Sets the sides of a row (by index or name); None leaves a side as it is.");
  model.def(
      "set_integer",
      [](PythonModel& self, py::handle column, bool integer) {
        self.model.setInteger(columnOf(self.model, column), integer);
      },
      py::arg("column"), py::arg("integer") = true,
      "Makes a column (by index or name) integer or continuous.");
  model.def(
      "set_objective",
      [](PythonModel& self, py::handle column, py::handle value) {
        Coefficient cost = toCoefficient(value);
        if (!cost.isInline() && cost.big().isInf)
          throw py::value_error("an objective coefficient must be finite");
        self.model.setObjective(columnOf(self.model, column), std::move(cost));
      },
      py::arg("column"), py::arg("value"),
      "Sets the objective coefficient of a column (by index or name).");

  model.def(
      "_write", &writeModelFile, py::arg("path"), py::arg("format") = py::none(),
      py::arg("names") = py::none(),
      "Writes the model to `path` as \"lp\", \"mps\" or \"opt\" (`format`, or the name's "
      "extension).\n"
      "For .opt, `names` is the path of the name map to write beside it. What an .opt file cannot\n"
      "hold is reported as a warning. The GIL is released while the file is written.");

  model.def_property_readonly(
      "messages", [](const PythonModel& self) { return self.messages; },
      "The notes and warnings of the read that made the model, as the programs print them.");

  model.def(
      "__eq__",
      [](const PythonModel& self, const PythonModel& other) {
        return sameModel(self.model, other.model);
      },
      py::arg("other"),
      "Exactly the same model: sense, objective, names, bounds, integrality, rows (their file "
      "lines aside).");
  model.def(
      "__repr__",
      [](const PythonModel& self) {
        std::ostringstream text;
        text << "<lpconv.Model "
             << (self.model.sense() == ObjectiveSense::maximize ? "maximize" : "minimize") << ", "
             << self.model.columnCount() << " columns, " << self.model.rowCount() << " rows, "
             << self.model.nonzeroCount() << " nonzeros>";
        return text.str();
      },
      "A short summary: sense and sizes.");
  model.attr("__hash__") = py::none();
}

}  // namespace lpconv::python
