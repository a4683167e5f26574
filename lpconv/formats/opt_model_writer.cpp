// The .opt file from the sparse model, in the converter's layout and number text. Rows are
// expanded to their n entries on the fly: zeros come from one prebuilt block, values from the
// coefficients' own text writer, and everything goes to the stream buffer in large pieces.
#include <lpconv/formats/formats.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace lpconv {

namespace {

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }
bool isPlusInfinity(const Coefficient& c) { return isInfinite(c) && c.big().isPositive; }

// Collects text and hands it to the stream buffer in large pieces.
class OptText {
 public:
  explicit OptText(std::ostream& os) : os_(os) {
    text_.reserve(kFlushAt + 4096);
    zeros_.reserve(kZeroBlock);
    while (zeros_.size() + 2 <= kZeroBlock) zeros_ += "0 ";
  }
  ~OptText() { flush(); }
  OptText(const OptText&) = delete;
  OptText& operator=(const OptText&) = delete;

  void put(std::string_view text) {
    text_ += text;
    if (text_.size() >= kFlushAt) flush();
  }
  void put(const Coefficient& value) {
    appendText(text_, value);
    if (text_.size() >= kFlushAt) flush();
  }
  // `count` times "0 ".
  void putZeros(std::size_t count) {
    if (count * 2 < 256) {
      text_.append(zeros_.data(), count * 2);
      return;
    }
    flush();
    while (count > 0) {
      const std::size_t now = std::min(count, zeros_.size() / 2);
      write(zeros_.data(), now * 2);
      count -= now;
    }
  }
  void flush() {
    if (text_.empty()) return;
    write(text_.data(), text_.size());
    text_.clear();
  }

 private:
  // Straight to the stream buffer; a short write marks the stream bad, as its own writes would.
  void write(const char* data, std::size_t size) {
    if (!os_) return;
    const auto wanted = static_cast<std::streamsize>(size);
    if (os_.rdbuf()->sputn(data, wanted) != wanted) os_.setstate(std::ios::badbit);
  }

  static constexpr std::size_t kFlushAt = std::size_t{1} << 16;
  static constexpr std::size_t kZeroBlock = std::size_t{1} << 16;

  std::ostream& os_;
  std::string text_;
  std::string zeros_;
};

// "[ e1 ... en ]" from a sparse row.
void writeDenseRow(OptText& out, const RowView& row, std::size_t n) {
  out.put("[ ");
  std::size_t next = 0;
  for (std::size_t k = 0; k < row.size(); ++k) {
    out.putZeros(row.column(k) - next);
    out.put(row.value(k));
    out.put(" ");
    next = row.column(k) + 1;
  }
  out.putZeros(n - next);
  out.put("]");
}

template <typename ValueOf>
void writeVector(OptText& out, std::size_t count, ValueOf valueOf) {
  out.put("[ ");
  for (std::size_t k = 0; k < count; ++k) {
    out.put(valueOf(k));
    out.put(" ");
  }
  out.put("]");
}

std::string rowLabel(const Model& model, Model::Index i) {
  std::string label = "row '" + std::string(model.rowName(i)) + "'";
  if (model.rowLine(i) > 0) label += " (line " + std::to_string(model.rowLine(i)) + ")";
  return label;
}

void report(DiagnosticSink& sink, Severity severity, std::string message) {
  Diagnostic d;
  d.severity = severity;
  d.message = std::move(message);
  sink.report(d);
}

enum class RowKind { equation, inequality, dropped };

RowKind kindOf(const Model& model, Model::Index i) {
  const Coefficient& lower = model.rowLower(i);
  const Coefficient& upper = model.rowUpper(i);
  if (!isInfinite(lower) && identical(lower, upper)) return RowKind::equation;
  if (isInfinite(lower) && isInfinite(upper)) return RowKind::dropped;
  return RowKind::inequality;
}

}  // namespace

void writeOpt(const Model& model, std::ostream& os, DiagnosticSink& sink) {
  const std::size_t n = model.columnCount();
  std::vector<Model::Index> equations;
  std::vector<Model::Index> inequalities;
  for (Model::Index i = 0; i < model.rowCount(); ++i) {
    switch (kindOf(model, i)) {
      case RowKind::equation:
        equations.push_back(i);
        break;
      case RowKind::inequality:
        inequalities.push_back(i);
        break;
      case RowKind::dropped:
        report(sink, Severity::note,
               rowLabel(model, i) + " has no finite side; the .opt file leaves it out");
        break;
    }
  }
  for (Model::Index j = 0; j < n; ++j) {
    if (isPlusInfinity(model.columnLower(j))) {
      Diagnostic d;
      d.message = "column '" + std::string(model.columnName(j)) +
                  "' has the lower bound +inf, which the .opt file cannot hold";
      throw ParseError(std::move(d));
    }
  }
  if (!model.objectiveConstant().isZero()) {
    report(sink, Severity::warning,
           "the objective constant " + toString(model.objectiveConstant()) +
               " cannot be held by the .opt file; it goes into the name map");
  }

  OptText out(os);
  // 1-2: the sense and the objective row over all n columns.
  out.put(model.sense() == ObjectiveSense::maximize ? "[ inf ]\n[\n[ " : "[ -inf ]\n[\n[ ");
  for (Model::Index j = 0; j < n; ++j) {
    const Coefficient& c = model.objective(j);
    if (c.isZero()) {
      out.put("0 ");
    } else {
      out.put(c);
      out.put(" ");
    }
  }
  out.put("]\n]\n\n");

  // 4-7: the equations, their right-hand sides, the empty array.
  out.put("[\n");
  for (Model::Index i : equations) {
    writeDenseRow(out, model.row(i), n);
    out.put("\n");
  }
  out.put("]\n");
  writeVector(out, equations.size(),
              [&](std::size_t k) -> const Coefficient& { return model.rowLower(equations[k]); });
  out.put("\n[ ]\n\n");

  // 8-11: every other row with its two sides.
  out.put("[\n");
  for (Model::Index i : inequalities) {
    writeDenseRow(out, model.row(i), n);
    out.put("\n");
  }
  out.put("]\n");
  writeVector(out, inequalities.size(),
              [&](std::size_t k) -> const Coefficient& { return model.rowLower(inequalities[k]); });
  out.put("\n");
  writeVector(out, inequalities.size(),
              [&](std::size_t k) -> const Coefficient& { return model.rowUpper(inequalities[k]); });
  out.put("\n\n");

  // 12-14: integrality and the bounds; the lower bound is always stated.
  out.put("[ ");
  for (Model::Index j = 0; j < n; ++j) out.put(model.isInteger(j) ? "1 " : "0 ");
  out.put("]\n");
  writeVector(out, n, [&](std::size_t j) -> const Coefficient& {
    return model.columnLower(static_cast<Model::Index>(j));
  });
  out.put("\n");
  writeVector(out, n, [&](std::size_t j) -> const Coefficient& {
    return model.columnUpper(static_cast<Model::Index>(j));
  });
  out.put("\n");
  out.flush();
  os.flush();
}

void writeNameMap(const Model& model, std::ostream& os) {
  std::string text;
  const auto spill = [&] {
    if (text.size() < (std::size_t{1} << 16)) return;
    os << text;
    text.clear();
  };
  for (Model::Index j = 0; j < model.columnCount(); ++j) {
    text += "column " + std::to_string(j + 1) + " ";
    text += model.columnName(j);
    text += "\n";
    spill();
  }
  std::size_t equations = 0;
  std::size_t inequalities = 0;
  for (Model::Index i = 0; i < model.rowCount(); ++i) {
    const RowKind kind = kindOf(model, i);
    if (kind == RowKind::dropped) continue;
    text += kind == RowKind::equation ? "equation " + std::to_string(++equations) + " "
                                      : "inequality " + std::to_string(++inequalities) + " ";
    text += model.rowName(i);
    text += "\n";
    spill();
  }
  if (!model.objectiveName().empty()) {
    text += "objective ";
    text += model.objectiveName();
    text += "\n";
  }
  if (!model.objectiveConstant().isZero()) {
    text += "constant ";
    appendText(text, model.objectiveConstant());
    text += "\n";
  }
  os << text;
  os.flush();
}

}  // namespace lpconv
