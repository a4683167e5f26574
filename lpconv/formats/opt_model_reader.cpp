// The .opt file into the sparse model, through the file reader's row observer: each row of the
// equation and inequality matrices becomes a sparse row as it is read, so memory follows the
// nonzeros. Names come from the name map when one is given; otherwise columns are C1..Cn,
// equations E1.. and inequalities I1.., numbered in their items.
#include <lpconv/formats/formats.h>

#include <charconv>
#include <cstring>
#include <istream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <lpconv/optfile/opt_file.h>
#include <lpconv/util/exceptions.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

// The lines of a LineSource as a stream, each with its line feed back.
class LineStreamBuffer : public std::streambuf {
 public:
  explicit LineStreamBuffer(LineSource& source) : source_(source) {}

 protected:
  int_type underflow() override {
    std::string_view line;
    if (!source_.next(line)) return traits_type::eof();
    buffer_.assign(line.data(), line.size());
    buffer_ += '\n';
    setg(buffer_.data(), buffer_.data(), buffer_.data() + buffer_.size());
    return traits_type::to_int_type(buffer_[0]);
  }

 public:
  // The 1-based column of the current line where reading stands; 0 past its end.
  long column() const {
    const long offset = gptr() - eback();
    return gptr() != nullptr && offset < static_cast<long>(buffer_.size()) - 1 ? offset + 1 : 0;
  }

 private:
  LineSource& source_;
  std::string buffer_;
};

// Installs the throwing failure handler for its lifetime and puts the old one back.
class ThrowingFailures {
 public:
  ThrowingFailures() : previous_(setFailureHandler(throwFailure)) {}
  ~ThrowingFailures() { setFailureHandler(previous_); }
  ThrowingFailures(const ThrowingFailures&) = delete;
  ThrowingFailures& operator=(const ThrowingFailures&) = delete;

 private:
  FailureHandler previous_;
};

struct NameMap {
  std::vector<std::string> columns;
  std::vector<std::string> equations;
  std::vector<std::string> inequalities;
  std::string objective;
  Coefficient constant;
};

void place(std::vector<std::string>& names, std::size_t index, std::string_view name) {
  if (names.size() < index) names.resize(index);
  names[index - 1] = name;
}

std::string_view nextWord(std::string_view& rest) {
  const std::size_t end = std::min(rest.find(' '), rest.size());
  const std::string_view word = rest.substr(0, end);
  rest.remove_prefix(end < rest.size() ? end + 1 : end);
  return word;
}

// The constant in the numbers' own text form ("3:1/2").
Coefficient constantOf(const LineSource& source, std::string_view text) {
  const ThrowingFailures failures;
  try {
    QQ value{std::string(text)};
    if (!value.isInf) return Coefficient(value);
  } catch (const GeneralException&) {
  } catch (const std::exception&) {
  }
  source.fail(text, "expected a finite number in the form 0, -1/2 or 3:1/2");
}

NameMap readNameMap(LineSource& source) {
  NameMap map;
  std::string_view line;
  while (source.next(line)) {
    if (line.empty()) continue;
    std::string_view rest = line;
    const std::string_view kind = nextWord(rest);
    if (kind == "objective") {
      map.objective = rest;
      continue;
    }
    if (kind == "constant") {
      map.constant = constantOf(source, rest);
      continue;
    }
    std::vector<std::string>* names = kind == "column"       ? &map.columns
                                      : kind == "equation"   ? &map.equations
                                      : kind == "inequality" ? &map.inequalities
                                                             : nullptr;
    if (names == nullptr) {
      source.fail(line, "unknown entry '" + std::string(kind) +
                            "' (expected column, equation, inequality, objective or constant)");
    }
    const std::string_view indexText = nextWord(rest);
    std::size_t index = 0;
    const auto [end, error] =
        std::from_chars(indexText.data(), indexText.data() + indexText.size(), index);
    if (error != std::errc() || end != indexText.data() + indexText.size() || index == 0 ||
        index > (std::size_t{1} << 32)) {
      source.fail(indexText, "expected an index from 1 on after '" + std::string(kind) + "'");
    }
    if (rest.empty()) source.fail(rest, "a name is missing");
    place(*names, index, rest);
  }
  return map;
}

// Builds the rows of the model as the file reader hands them over; their sides come later.
class ModelRows : public RowObserver {
 public:
  ModelRows(Model& model, const NameMap& names) : model_(model), names_(names) {}

  void row(OptItem item, const Vector<QQ>& row) override {
    addColumns(static_cast<std::size_t>(row.getDimension()));
    entries_.clear();
    for (long k = 1; k <= row.getDimension(); ++k) {
      if (!row[k].isZero()) entries_.push_back({static_cast<Model::Index>(k - 1), row[k]});
    }
    const bool equation = item == OptItem::equations;
    const std::size_t number = equation ? ++equations_ : ++inequalities_;
    const std::string name =
        nameOf(equation ? names_.equations : names_.inequalities, number, equation ? "E" : "I");
    if (model_.findRow(name)) throw std::runtime_error("the row name '" + name + "' is used twice");
    model_.addRow(name, entries_, Coefficient::minusInfinity(), Coefficient::infinity());
  }

  void addColumns(std::size_t n) {
    while (model_.columnCount() < n) {
      const std::string name = nameOf(names_.columns, model_.columnCount() + 1, "C");
      if (model_.findColumn(name)) {
        throw std::runtime_error("the column name '" + name + "' is used twice");
      }
      model_.addColumn(name);
    }
  }

  // Without columns the file reader hands over no rows, only their sides.
  void addEmptyRows(long equations, long inequalities) {
    const Vector<QQ> empty;
    for (long k = 0; k < equations; ++k) row(OptItem::equations, empty);
    for (long k = 0; k < inequalities; ++k) row(OptItem::inequalities, empty);
  }

  std::size_t equations() const { return equations_; }
  std::size_t inequalities() const { return inequalities_; }

 private:
  static std::string nameOf(const std::vector<std::string>& names, std::size_t number,
                            const char* prefix) {
    if (number <= names.size() && !names[number - 1].empty()) return names[number - 1];
    return prefix + std::to_string(number);
  }

  Model& model_;
  const NameMap& names_;
  std::vector<ModelEntry> entries_;
  std::size_t equations_ = 0;
  std::size_t inequalities_ = 0;
};

[[noreturn]] void failAt(const LineSource& source, const std::string& message, long column = 0) {
  Diagnostic d = source.diagnostic(Severity::error, column, message);
  if (source.lineNumber() == 0) d.line = 0;
  throw ParseError(std::move(d));
}

void checkNameCount(const LineSource& names, const char* kind, std::size_t named,
                    std::size_t present) {
  if (named <= present) return;
  Diagnostic d;
  d.file = names.name();
  d.message = "names " + std::string(kind) + " " + std::to_string(named) +
              ", but the .opt file has " + std::to_string(present);
  throw ParseError(std::move(d));
}

Coefficient lowerBoundOf(const QQ& stated) {
  // +inf is the file's "no bound stated": the default lower bound 0.
  if (stated.isInf && stated.isPositive) return Coefficient();
  return Coefficient(stated);
}

}  // namespace

Model readOpt(LineSource& source, LineSource* names, DiagnosticSink&) {
  const NameMap map = names != nullptr ? readNameMap(*names) : NameMap{};
  Model model;
  ModelRows rows(model, map);
  OptFile file;
  {
    LineStreamBuffer buffer(source);
    std::istream in(&buffer);
    const ThrowingFailures failures;
    try {
      file = readOptFile(in, &rows);
    } catch (const ParseError&) {
      throw;
    } catch (const GeneralException& e) {
      // FailureException and ReadException: the reader's own messages.
      failAt(source, e.what(), buffer.column());
    } catch (const std::invalid_argument&) {
      // The integer parser's rejection of number text ("2/x").
      failAt(source, "malformed number", buffer.column());
    } catch (const std::exception& e) {
      // A name used twice.
      failAt(source, e.what(), buffer.column());
    }
  }
  const auto n = static_cast<std::size_t>(file.integers.getDimension());
  try {
    rows.addColumns(n);
    if (n == 0) rows.addEmptyRows(file.equationRhs.getDimension(), file.lower.getDimension());
  } catch (const std::runtime_error& e) {
    failAt(source, e.what());
  }
  if (names != nullptr) {
    checkNameCount(*names, "column", map.columns.size(), n);
    checkNameCount(*names, "equation", map.equations.size(), rows.equations());
    checkNameCount(*names, "inequality", map.inequalities.size(), rows.inequalities());
  }

  if (file.sense.getDimension() == 1 && file.sense[1].isPositive) {
    model.setSense(ObjectiveSense::maximize);
  }
  model.setObjectiveName(map.objective);
  model.setObjectiveConstant(map.constant);
  if (file.objective.getRows() == 1) {
    const Vector<QQ>& objective = file.objective[1];
    for (long k = 1; k <= objective.getDimension(); ++k) {
      if (!objective[k].isZero())
        model.setObjective(static_cast<Model::Index>(k - 1), objective[k]);
    }
  }
  Model::Index i = 0;
  for (long k = 1; k <= file.equationRhs.getDimension(); ++k, ++i) {
    model.setRowLower(i, file.equationRhs[k]);
    model.setRowUpper(i, file.equationRhs[k]);
  }
  for (long k = 1; k <= file.lower.getDimension(); ++k, ++i) {
    model.setRowLower(i, file.lower[k]);
    model.setRowUpper(i, file.upper[k]);
  }
  for (long k = 1; k <= static_cast<long>(n); ++k) {
    const auto j = static_cast<Model::Index>(k - 1);
    model.setInteger(j, file.integers[k] != 0);
    model.setColumnLower(j, lowerBoundOf(file.variableLower[k]));
    model.setColumnUpper(j, file.variableUpper[k]);
  }
  return model;
}

}  // namespace lpconv
