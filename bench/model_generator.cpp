// model_generator ROWS COLUMNS NONZEROS SEED PREFIX: writes one random sparse LP as PREFIX.mps
// (free MPS) and PREFIX.lp (CPLEX LP), with coefficients as modelling tools print doubles
// (%.15g: small integers, short decimals and values with 15 significant digits), a mix of
// <=, >= and = rows, some two-sided (RANGES in MPS, two rows in LP), and bounds on some columns.
// Depends on nothing of lpconv, so it builds on its own.
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

struct Entry {
  unsigned row;
  std::string value;
};

std::string coefficient(std::mt19937_64& rng) {
  char text[64];
  const unsigned kind = rng() % 10;
  if (kind < 3) {
    int v = static_cast<int>(rng() % 19) - 9;
    if (v == 0) v = 1;
    std::snprintf(text, sizeof text, "%d", v);
  } else if (kind < 6) {
    std::snprintf(text, sizeof text, "%.15g", static_cast<double>(rng() % 20000) / 1000.0 - 10.0);
    if (std::string(text) == "0") return "0.5";
  } else {
    std::uniform_real_distribution<double> d(-100.0, 100.0);
    std::snprintf(text, sizeof text, "%.15g", d(rng));
  }
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fprintf(stderr, "usage: model_generator ROWS COLUMNS NONZEROS SEED PREFIX\n");
    return 2;
  }
  const unsigned rows = std::strtoul(argv[1], nullptr, 10);
  const unsigned columns = std::strtoul(argv[2], nullptr, 10);
  const unsigned long nonzeros = std::strtoul(argv[3], nullptr, 10);
  std::mt19937_64 rng(std::strtoull(argv[4], nullptr, 10));
  const std::string prefix = argv[5];

  // Each column gets its share of entries in distinct random rows.
  std::vector<std::vector<Entry>> byColumn(columns);
  std::vector<std::vector<std::pair<unsigned, std::string>>> byRow(rows);
  std::vector<std::string> objective(columns);
  for (unsigned j = 0; j < columns; ++j) {
    const unsigned long count = nonzeros / columns + (j < nonzeros % columns ? 1 : 0);
    unsigned row = static_cast<unsigned>(rng() % rows);
    const unsigned step = rows / (count + 1) > 0 ? rows / (count + 1) : 1;
    for (unsigned long k = 0; k < count; ++k) {
      row = (row + 1 + static_cast<unsigned>(rng() % step)) % rows;
      std::string v = coefficient(rng);
      byRow[row].emplace_back(j, v);
      byColumn[j].push_back({row, std::move(v)});
    }
    if (rng() % 4 == 0) objective[j] = coefficient(rng);
  }
  std::vector<char> type(rows);
  std::vector<std::string> rhs(rows), range(rows);
  for (unsigned i = 0; i < rows; ++i) {
    const unsigned t = rng() % 8;
    type[i] = t < 4 ? 'L' : t < 6 ? 'G' : 'E';
    rhs[i] = coefficient(rng);
    if (t == 7) {
      type[i] = 'G';
      range[i] = coefficient(rng);
      if (range[i][0] == '-') range[i].erase(0, 1);
    }
  }
  std::vector<std::string> upper(columns);
  for (unsigned j = 0; j < columns; ++j) {
    if (rng() % 3 == 0) upper[j] = std::to_string(1 + rng() % 1000);
  }

  FILE* mps = std::fopen((prefix + ".mps").c_str(), "w");
  // FREE on the NAME line tells the COIN reader the layout.
  std::fprintf(mps, "NAME generated FREE\nROWS\n N obj\n");
  for (unsigned i = 0; i < rows; ++i) std::fprintf(mps, " %c r%u\n", type[i], i + 1);
  std::fprintf(mps, "COLUMNS\n");
  for (unsigned j = 0; j < columns; ++j) {
    if (!objective[j].empty()) std::fprintf(mps, "    x%u obj %s\n", j + 1, objective[j].c_str());
    for (const Entry& e : byColumn[j]) {
      std::fprintf(mps, "    x%u r%u %s\n", j + 1, e.row + 1, e.value.c_str());
    }
  }
  std::fprintf(mps, "RHS\n");
  for (unsigned i = 0; i < rows; ++i) std::fprintf(mps, "    rhs r%u %s\n", i + 1, rhs[i].c_str());
  std::fprintf(mps, "RANGES\n");
  for (unsigned i = 0; i < rows; ++i) {
    if (!range[i].empty()) std::fprintf(mps, "    rng r%u %s\n", i + 1, range[i].c_str());
  }
  std::fprintf(mps, "BOUNDS\n");
  for (unsigned j = 0; j < columns; ++j) {
    if (!upper[j].empty()) std::fprintf(mps, " UP bnd x%u %s\n", j + 1, upper[j].c_str());
  }
  std::fprintf(mps, "ENDATA\n");
  std::fclose(mps);

  auto term = [](FILE* f, const std::string& v, unsigned j) {
    if (v[0] == '-') {
      std::fprintf(f, " - %s x%u", v.c_str() + 1, j + 1);
    } else {
      std::fprintf(f, " + %s x%u", v.c_str(), j + 1);
    }
  };
  FILE* lp = std::fopen((prefix + ".lp").c_str(), "w");
  std::fprintf(lp, "Minimize\n obj:");
  unsigned onLine = 0;
  for (unsigned j = 0; j < columns; ++j) {
    if (objective[j].empty()) continue;
    term(lp, objective[j], j);
    if (++onLine % 8 == 0) std::fprintf(lp, "\n");
  }
  std::fprintf(lp, "\nSubject To\n");
  // A ranged row has no single-row form every LP reader takes: it is written as two rows,
  // rN >= rhs and rN_up <= rhs + range, as LP writers do.
  for (unsigned i = 0; i < rows; ++i) {
    const bool ranged = !range[i].empty();
    for (int copy = 0; copy < (ranged ? 2 : 1); ++copy) {
      std::fprintf(lp, copy == 0 ? " r%u:" : " r%u_up:", i + 1);
      onLine = 0;
      for (const auto& [j, v] : byRow[i]) {
        term(lp, v, j);
        if (++onLine % 8 == 0) std::fprintf(lp, "\n");
      }
      if (copy == 1) {
        std::fprintf(lp, " <= %.15g\n",
                     std::strtod(rhs[i].c_str(), nullptr) + std::strtod(range[i].c_str(), nullptr));
      } else {
        std::fprintf(lp, " %s %s\n",
                     type[i] == 'L'   ? "<="
                     : type[i] == 'G' ? ">="
                                      : "=",
                     rhs[i].c_str());
      }
    }
  }
  std::fprintf(lp, "Bounds\n");
  for (unsigned j = 0; j < columns; ++j) {
    if (!upper[j].empty()) std::fprintf(lp, " x%u <= %s\n", j + 1, upper[j].c_str());
  }
  std::fprintf(lp, "End\n");
  std::fclose(lp);
  return 0;
}
