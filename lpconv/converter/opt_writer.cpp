#include <lpconv/converter/opt_writer.h>

namespace lpconv {

namespace {

// A matrix: "[", a line end, every row followed by a line end, "]".
template <typename Rows, typename WriteRow>
void writeMatrix(OutputBuffer& out, const Rows& rows, WriteRow writeRow) {
  out.put("[\n");
  for (const auto& row : rows) {
    writeRow(row);
    out.put("\n");
  }
  out.put("]");
}

template <typename Values, typename ValueOf>
void writeVector(OutputBuffer& out, const Values& values, ValueOf valueOf) {
  out.put("[ ");
  for (const auto& item : values) {
    out.put(valueOf(item));
    out.put(" ");
  }
  out.put("]");
}

// The bounds of x1..n, one side of each pair; unstated entries are +infinity.
void writeBoundVector(OutputBuffer& out, const VariableBounds& bounds, long n, bool lower) {
  out.put("[ ");
  long next = 1;
  for (const auto& [index, pair] : bounds.stated()) {
    out.putRepeated("inf ", index - next);
    out.put(lower ? pair.lower : pair.upper);
    out.put(" ");
    next = index + 1;
  }
  out.putRepeated("inf ", n + 1 - next);
  out.put("]");
}

}  // namespace

void writeDenseRow(OutputBuffer& out, const SparseRow& row, long n) {
  out.put("[ ");
  long next = 1;
  for (const RowEntry& entry : row.entries()) {
    out.putRepeated("0 ", entry.index - next);
    out.put(entry.value);
    out.put(" ");
    next = entry.index + 1;
  }
  out.putRepeated("0 ", n + 1 - next);
  out.put("]");
}

void writeOptFile(OutputBuffer& out, const LpModel& model,
                  const std::function<std::vector<InequalityRow>()>& pairing) {
  const long n = model.variables;
  const auto rowOf = [&](const auto& row) { writeDenseRow(out, row.coefficients, n); };
  const auto rhsOf = [](const ConstraintRow& row) -> const Coefficient& { return row.rhs; };

  // 1-2: the objective sense and coefficients; without an objective header both are empty.
  if (model.objective.present) {
    out.put(model.objective.minimise ? "[ -inf ]\n" : "[ inf ]\n");
    out.put("[\n");
    writeDenseRow(out, model.objective.row, n);
    out.put("\n]\n");
  } else {
    out.put("[ ]\n[\n]\n");
  }
  out.put("\n");

  // 4-7: the equations, their right-hand sides and the empty array.
  writeMatrix(out, model.constraints.equations, rowOf);
  out.put("\n");
  writeVector(out, model.constraints.equations, rhsOf);
  out.put("\n[ ]\n\n");

  // 8-11: the two-sided inequalities: the ">=" rows, then the "<=" rows no ">=" row took.
  const std::vector<ConstraintRow>& greaterEqual = model.constraints.greaterEqual;
  out.put("[\n");
  for (const ConstraintRow& row : greaterEqual) {
    writeDenseRow(out, row.coefficients, n);
    out.put("\n");
  }
  const std::vector<InequalityRow> inequalities = pairing();
  for (std::size_t i = greaterEqual.size(); i < inequalities.size(); ++i) {
    writeDenseRow(out, *inequalities[i].coefficients, n);
    out.put("\n");
  }
  out.put("]\n");
  writeVector(out, inequalities,
              [](const InequalityRow& row) -> const Coefficient& { return *row.lower; });
  out.put("\n");
  writeVector(out, inequalities,
              [](const InequalityRow& row) -> const Coefficient& { return *row.upper; });
  out.put("\n\n");

  // 12-14: the integer vector (all zero) and the variable bounds.
  out.put("[ ");
  out.putRepeated("0 ", n);
  out.put("]\n");
  writeBoundVector(out, model.bounds, n, true);
  out.put("\n");
  writeBoundVector(out, model.bounds, n, false);
  out.put("\n");
  out.flush();
}

}  // namespace lpconv
