// model_diff A B: reads two models (any format, by extension or --from-a/--from-b) and lists
// where they differ beyond a relative tolerance (1e-12 by default, --exact for none): sizes,
// objective sense, the columns' bounds, integrality and objective coefficients, the rows' sides
// and entries. Columns and rows are matched by name, so the order may differ; rows that are
// missing on one side and have no entry are listed apart (some readers drop them).
// Exit status 0 when they agree, 1 when they differ, 2 when a file cannot be read.
#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/formats.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using lpconv::Coefficient;
using lpconv::Model;

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }

struct Comparison {
  bool exact = false;
  double tolerance = 1e-12;
  std::vector<std::string> differences;

  bool same(const Coefficient& a, const Coefficient& b) const {
    if (isInfinite(a) || isInfinite(b)) return lpconv::identical(a, b);
    if (exact) return lpconv::identical(a, b);
    const long double x = lpconv::approximate(a);
    const long double y = lpconv::approximate(b);
    const long double scale = std::max({1.0L, std::fabs(x), std::fabs(y)});
    return std::fabs(x - y) <= tolerance * scale;
  }

  void check(const std::string& what, const Coefficient& a, const Coefficient& b) {
    if (!same(a, b)) {
      differences.push_back(what + ": " + lpconv::toString(a) + " vs " + lpconv::toString(b));
    }
  }
};

std::map<Model::Index, Coefficient> entriesOf(const Model& m, Model::Index i) {
  std::map<Model::Index, Coefficient> out;
  const lpconv::RowView r = m.row(i);
  for (std::size_t k = 0; k < r.size(); ++k) out[r.column(k)] = r.value(k);
  return out;
}

void compare(const Model& a, const Model& b, Comparison& c) {
  auto& d = c.differences;
  if (a.sense() != b.sense()) d.push_back("objective sense differs");
  c.check("objective constant", a.objectiveConstant(), b.objectiveConstant());
  if (a.columnCount() != b.columnCount()) {
    d.push_back("columns: " + std::to_string(a.columnCount()) + " vs " +
                std::to_string(b.columnCount()));
  }
  std::vector<Model::Index> columnInB(a.columnCount(), 0);
  for (Model::Index j = 0; j < a.columnCount(); ++j) {
    const std::string name(a.columnName(j));
    const auto k = b.findColumn(name);
    if (!k) {
      d.push_back("column " + name + " missing in the second");
      continue;
    }
    columnInB[j] = *k;
    c.check("column " + name + " lower", a.columnLower(j), b.columnLower(*k));
    c.check("column " + name + " upper", a.columnUpper(j), b.columnUpper(*k));
    c.check("column " + name + " objective", a.objective(j), b.objective(*k));
    if (a.isInteger(j) != b.isInteger(*k)) d.push_back("column " + name + " integrality");
  }
  for (Model::Index i = 0; i < a.rowCount(); ++i) {
    const std::string name(a.rowName(i));
    const auto k = b.findRow(name);
    if (!k) {
      d.push_back(std::string(a.row(i).empty() ? "empty " : "") + "row " + name +
                  " missing in the second");
      continue;
    }
    c.check("row " + name + " lower", a.rowLower(i), b.rowLower(*k));
    c.check("row " + name + " upper", a.rowUpper(i), b.rowUpper(*k));
    const auto ea = entriesOf(a, i);
    auto eb = entriesOf(b, *k);
    for (const auto& [j, v] : ea) {
      const auto it = eb.find(columnInB[j]);
      const std::string where = "row " + name + " column " + std::string(a.columnName(j));
      if (it == eb.end()) {
        d.push_back(where + ": " + lpconv::toString(v) + " vs none");
        continue;
      }
      c.check(where, v, it->second);
      eb.erase(it);
    }
    for (const auto& [j, v] : eb) {
      d.push_back("row " + name + " column " + std::string(b.columnName(j)) + ": none vs " +
                  lpconv::toString(v));
    }
  }
  for (Model::Index i = 0; i < b.rowCount(); ++i) {
    if (!a.findRow(b.rowName(i))) {
      d.push_back(std::string(b.row(i).empty() ? "empty " : "") + "row " +
                  std::string(b.rowName(i)) + " missing in the first");
    }
  }
}

// GLPK's own problem text (glpsol --wglp): its values are the 15-digit decimals of the doubles
// GLPK read, close enough to compare with a relative tolerance of 1e-12.
Model readGlp(const std::string& path) {
  std::ifstream in(path);
  if (!in) {
    std::cerr << "model_diff: cannot open " << path << "\n";
    std::exit(2);
  }
  auto num = [](const std::string& text) {
    Coefficient c;
    if (lpconv::parseExactNumber(text, c) != lpconv::NumberError::none) {
      std::cerr << "model_diff: bad number " << text << "\n";
      std::exit(2);
    }
    return c;
  };
  struct Row {
    std::string name;
    // A row without an "i" line is fixed at 0; a column without a "j" line has [0, +inf), or
    // is binary in a MIP.
    Coefficient lower;
    Coefficient upper;
    std::vector<lpconv::ModelEntry> entries;
  };
  struct Column {
    std::string name;
    Coefficient lower, upper = Coefficient::infinity(), objective;
    bool integer = false;
  };
  std::vector<Row> rows;
  std::vector<Column> columns;
  Model m;
  Coefficient constant;
  auto sides = [&](std::istringstream& ls, Coefficient& lower, Coefficient& upper) {
    std::string kind, a, b;
    ls >> kind;
    lower = Coefficient::minusInfinity();
    upper = Coefficient::infinity();
    if (kind == "l") {
      ls >> a;
      lower = num(a);
    } else if (kind == "u") {
      ls >> a;
      upper = num(a);
    } else if (kind == "d") {
      ls >> a >> b;
      lower = num(a);
      upper = num(b);
    } else if (kind == "s") {
      ls >> a;
      lower = num(a);
      upper = lower;
    }
  };
  std::string line;
  while (std::getline(in, line)) {
    std::istringstream ls(line);
    std::string tag;
    ls >> tag;
    if (tag == "p") {
      std::string kind, sense;
      std::size_t r = 0, c = 0;
      ls >> kind >> sense >> r >> c;
      m.setSense(sense == "max" ? lpconv::ObjectiveSense::maximize
                                : lpconv::ObjectiveSense::minimize);
      rows.resize(r);
      columns.resize(c);
      for (std::size_t j = 0; j < c; ++j) {
        columns[j].name = "C" + std::to_string(j + 1);
        if (kind == "mip") {
          columns[j].integer = true;
          columns[j].upper = Coefficient(1);
        }
      }
      for (std::size_t i = 0; i < r; ++i) rows[i].name = "R" + std::to_string(i + 1);
    } else if (tag == "n") {
      std::string kind, name;
      std::size_t k = 0;
      ls >> kind;
      if (kind == "z") {
        ls >> name;
        m.setObjectiveName(name);
      } else if (kind == "i" || kind == "j") {
        ls >> k >> name;
        (kind == "i" ? rows[k - 1].name : columns[k - 1].name) = name;
      }
    } else if (tag == "i") {
      std::size_t k = 0;
      ls >> k;
      sides(ls, rows[k - 1].lower, rows[k - 1].upper);
    } else if (tag == "j") {
      std::size_t k = 0;
      ls >> k;
      Column& col = columns[k - 1];
      const std::streampos at = ls.tellg();
      std::string kind;
      ls >> kind;
      if (kind == "b") {
        col.integer = true;
        col.lower = Coefficient();
        col.upper = Coefficient(1);
        continue;
      }
      if (kind == "i" || kind == "c") {
        col.integer = kind == "i";
      } else {
        ls.seekg(at);
      }
      sides(ls, col.lower, col.upper);
    } else if (tag == "a") {
      std::size_t i = 0, j = 0;
      std::string v;
      ls >> i >> j >> v;
      if (i == 0 && j == 0) {
        constant = num(v);
      } else if (i == 0) {
        columns[j - 1].objective = num(v);
      } else {
        rows[i - 1].entries.push_back({static_cast<Model::Index>(j - 1), num(v)});
      }
    }
  }
  for (const Column& col : columns) {
    const Model::Index j = m.addColumn(col.name);
    m.setColumnLower(j, col.lower);
    m.setColumnUpper(j, col.upper);
    m.setObjective(j, col.objective);
    m.setInteger(j, col.integer);
  }
  for (Row& row : rows) m.addRow(row.name, row.entries, row.lower, row.upper);
  m.setObjectiveConstant(constant);
  return m;
}

std::optional<lpconv::Format> formatArgument(const std::string& word) {
  const auto f = lpconv::formatOfWord(word);
  if (!f) {
    std::cerr << "model_diff: unknown format " << word << "\n";
    std::exit(2);
  }
  return f;
}

}  // namespace

int main(int argc, char** argv) {
  Comparison comparison;
  std::optional<lpconv::Format> formats[2];
  std::vector<std::string> paths;
  bool quiet = false;
  for (int k = 1; k < argc; ++k) {
    const std::string arg = argv[k];
    if (arg == "--exact") {
      comparison.exact = true;
    } else if (arg == "--quiet") {
      quiet = true;
    } else if ((arg == "--from-a" || arg == "--from-b") && k + 1 < argc) {
      formats[arg == "--from-a" ? 0 : 1] = formatArgument(argv[++k]);
    } else {
      paths.push_back(arg);
    }
  }
  if (paths.size() != 2) {
    std::cerr << "usage: model_diff [--exact] [--quiet] [--from-a F] [--from-b F] A B\n";
    return 2;
  }
  std::ostringstream notes;
  lpconv::StreamSink sink(notes);
  std::vector<Model> models;
  for (int k = 0; k < 2; ++k) {
    try {
      if (paths[k].size() > 4 && paths[k].substr(paths[k].size() - 4) == ".glp") {
        models.push_back(readGlp(paths[k]));
        continue;
      }
      models.push_back(lpconv::readModel(paths[k], formats[k], sink));
    } catch (const lpconv::ParseError& e) {
      std::cerr << lpconv::format(e.diagnostic());
      return 2;
    }
  }
  compare(models[0], models[1], comparison);
  if (!quiet) {
    for (const std::string& d : comparison.differences) std::cout << d << "\n";
  }
  std::cout << comparison.differences.size() << " differences\n";
  return comparison.differences.empty() ? 0 : 1;
}
