#pragma once
// The .opt file: fourteen items in a fixed order, each vector and matrix in the text form its
// container class writes ("[ a b ]" for a vector; "[", one row per line, "]" for a matrix).

#include <functional>
#include <vector>

#include <lpconv/converter/lp_model.h>
#include <lpconv/converter/output_buffer.h>

namespace lpconv {

// Writes the whole problem. Sparse rows and bound tables are expanded to n entries on the fly;
// the bytes equal those of the corresponding Vector<QQ> / Matrix<QQ> / Vector<long> output.
// `pairing` returns the merged inequality system of pairInequalities, whose first rows are the
// ">=" rows in input order. It is called once, only after those rows are written (they do not
// depend on the pairing), so the pairing may still be under way while the writing begins.
void writeOptFile(OutputBuffer& out, const LpModel& model,
                  const std::function<std::vector<InequalityRow>()>& pairing);

// One dense row of n entries, "[ e1 e2 ... en ]", zeros written as "0".
void writeDenseRow(OutputBuffer& out, const SparseRow& row, long n);

}  // namespace lpconv
