// The model a file means, in one canonical text, so that two readings of it can be compared with
// diff: the objective (or "none" when it has no non-zero coefficient), every constraint as its
// one-sided halves sorted, and every column's bounds and integrality.
//
//   canonical_model opt FILE.opt   the model lpconv's output means ("no bound stated" is 0)
//   canonical_model lp FILE.lp     the model a standard LP reader reads (x1..xn as columns)
//
// Status 3 when the file has no such reading (a standard reader stops, a name is not x<digits>).

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <lpconv/formats/exact_number.h>
#include <lpconv/optfile/opt_file.h>

#include "standard_lp.h"

namespace {

using lpconv::QQ;

std::string text(const QQ& value) { return lpconv::exactText(lpconv::Coefficient(value)); }
bool isPlusInf(const QQ& q) { return q.isInf && q.isPositive; }
bool isMinusInf(const QQ& q) { return q.isInf && !q.isPositive; }

struct Canonical {
  long columns = 0;
  std::string objective = "none";
  std::vector<std::string> halves;
  std::map<long, std::string> bounds;

  void print() const {
    std::cout << "columns " << columns << "\nobjective " << objective << "\n";
    std::vector<std::string> sorted = halves;
    std::sort(sorted.begin(), sorted.end());
    for (const auto& h : sorted) std::cout << h << "\n";
    for (long j = 1; j <= columns; ++j) {
      const auto b = bounds.find(j);
      std::cout << "x" << j << " " << (b == bounds.end() ? "0 inf" : b->second) << "\n";
    }
  }
};

std::string rowText(const std::map<long, QQ>& row) {
  std::string out;
  for (const auto& [j, v] : row) {
    if (!v.isZero()) out += " " + std::to_string(j) + ":" + text(v);
  }
  return out;
}

std::map<long, QQ> denseRow(const lpconv::Matrix<QQ>& m, long i) {
  std::map<long, QQ> row;
  for (long j = 1; j <= m.at(i).getDimension(); ++j) row[j] = m.at(i).at(j);
  return row;
}

int fromOpt(const char* path) {
  std::ifstream in(path);
  const lpconv::OptFile file = lpconv::readOptFile(in);
  Canonical c;
  c.columns = file.variableLower.getDimension();
  if (file.objective.getRows() > 0) {
    const std::string row = rowText(denseRow(file.objective, 1));
    if (!row.empty()) c.objective = (isMinusInf(file.sense.at(1)) ? "min" : "max") + row;
  }
  for (long i = 1; i <= file.equations.getRows(); ++i) {
    c.halves.push_back("= " + text(file.equationRhs.at(i)) + " |" +
                       rowText(denseRow(file.equations, i)));
  }
  for (long i = 1; i <= file.inequalities.getRows(); ++i) {
    const std::string row = rowText(denseRow(file.inequalities, i));
    if (!isMinusInf(file.lower.at(i)))
      c.halves.push_back("> " + text(file.lower.at(i)) + " |" + row);
    if (!isPlusInf(file.upper.at(i)))
      c.halves.push_back("< " + text(file.upper.at(i)) + " |" + row);
  }
  for (long j = 1; j <= c.columns; ++j) {
    // A lower bound of +inf is "no bound stated": the default lower bound 0.
    const QQ lower = isPlusInf(file.variableLower.at(j)) ? QQ(0L) : file.variableLower.at(j);
    c.bounds[j] = text(lower) + " " + text(file.variableUpper.at(j)) +
                  (file.integers.at(j) != 0 ? " int" : "");
  }
  c.print();
  return 0;
}

long columnOf(const std::string& name) {
  if (name.size() < 2 || name[0] != 'x' || name[1] == '0' || name.size() > 12) return 0;
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] < '0' || name[i] > '9') return 0;
  }
  return std::stol(name.substr(1));
}

int fromLp(const char* path) {
  std::ifstream in(path, std::ios::binary);
  const std::string content((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const lpcheck::StandardReading r = lpcheck::readStandardLp(content);
  if (r.error) return 3;
  Canonical c;
  for (const auto& [name, at] : r.firstMention) {
    const long j = columnOf(name);
    if (j == 0) return 3;
    c.columns = std::max(c.columns, j);
  }
  // A model of millions of columns is not compared here: lpconv's output for it is cut short.
  if (c.columns > 1000000) return 3;
  const auto sum = [](const std::vector<lpcheck::Term>& terms) {
    std::map<long, QQ> row;
    for (const auto& t : terms) {
      auto [it, fresh] = row.emplace(columnOf(t.name), t.value.toQQ());
      if (!fresh) it->second = it->second + t.value.toQQ();
    }
    return row;
  };
  if (r.objective.present) {
    const std::string row = rowText(sum(r.objective.terms));
    if (!row.empty()) c.objective = (r.objective.minimise ? "min" : "max") + row;
  }
  for (const auto& row : r.rows) {
    QQ rhs = row.rhs.toQQ();
    for (const auto& [value, at] : row.leftConstants) rhs = rhs - value.toQQ();
    c.halves.push_back(std::string(1, row.sense) + " " + text(rhs) + " |" +
                       rowText(sum(row.terms)));
  }
  for (long j = 1; j <= c.columns; ++j) {
    const std::string name = "x" + std::to_string(j);
    QQ lower(0L);
    QQ upper = QQ::infinity();
    if (const auto b = r.bounds.find(name); b != r.bounds.end()) {
      lower = b->second.lower;
      upper = b->second.upper;
    }
    if (r.binaries.count(name) > 0) {
      lower = QQ(0L);
      upper = QQ(1L);
    }
    c.bounds[j] = text(lower) + " " + text(upper) + (r.integers.count(name) > 0 ? " int" : "");
  }
  c.print();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: canonical_model opt|lp FILE\n";
    return 2;
  }
  const std::string mode = argv[1];
  return mode == "opt" ? fromOpt(argv[2]) : fromLp(argv[2]);
}
