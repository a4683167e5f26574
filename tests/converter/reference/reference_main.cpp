// lpconv_reference: the conversion written the slow, literal way, as an oracle for lpconv.
// It reads the input four times through one std::ifstream, tests lines with the regex helpers,
// keeps dense Vector<QQ> and Matrix<QQ> systems, pairs rows by linear search and writes every
// item through the containers' own stream operators. Same messages, streams, status and bytes as
// lpconv; only the speed differs.

#include <cstdint>
#include <ctime>
#include <fstream>
#include <iostream>
#include <string>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/vector.h>
#include "literal_scan.h"
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/full_precision.h>
#include <lpconv/util/paths.h>
#include <lpconv/util/patterns.h>
#include <lpconv/util/trace.h>

namespace lpconv::reference {
namespace {

const char kSections[] = "Bound|Gen|Bin";

bool has(const std::string& line, const char* pattern) { return search(line, pattern, false); }

[[noreturn]] void usage(const char* argv0) {
  std::cout << "Usage: " << baseName(argv0 == nullptr ? "" : argv0) << " *.lp" << endLine();
  lastOutputTime = std::time(nullptr);
  terminateWithFailure();
}

void rewind(std::ifstream& in) {
  in.clear();
  in.seekg(0);
}

void statusLine(const char* header, long value) {
  std::cout << enterLevel(false) << " " << header << value << leaveLevel(false);
  lastOutputTime = std::time(nullptr);
}

// Reads lines up to and including the first that contains "Subject To"; false at end of file.
bool skipToConstraints(std::ifstream& in) {
  std::string line;
  while (std::getline(in, line)) {
    if (has(line, "Subject To")) return true;
  }
  return false;
}

long discoverVariables(std::ifstream& in) {
  long n = 0;
  std::string line;
  while (std::getline(in, line)) {
    std::smatch match;
    if (!searchMatch(line, "x([0-9]+)", match)) continue;
    const std::string digits = match[1].str();
    const auto index = static_cast<std::int32_t>(std::strtol(digits.c_str(), nullptr, 10));
    if (index > n) n = index;
  }
  return n;
}

struct Counts {
  long less = 0;
  long greater = 0;
  long equal = 0;
};

struct Bounds {
  Vector<QQ> lower;
  Vector<QQ> upper;
};

// Reads the next line into `line`; at end of file `line` is left empty, as getline leaves it.
bool nextLine(std::ifstream& in, std::string& line) {
  if (std::getline(in, line)) return true;
  line.clear();
  return false;
}

void scanBoundLine(const std::string& line, long n, QQ& currentLower, Bounds& bounds) {
  long k = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') {
      k = readIndex(line.c_str() + i + 1);
    } else if (line[i] == '=' && k == 0) {
      currentLower = leadsToDigit(line, 0) ? readDecimalQQ(line.c_str()) : QQ::minusInfinity();
    } else if (line[i] == '=') {
      entry(bounds.lower, k, n) = currentLower;
      entry(bounds.upper, k, n) =
          leadsToDigit(line, i + 1) ? readDecimalQQ(line.c_str() + i + 1) : QQ::infinity();
      k = 0;
    }
  }
}

// The Bound, General and Binary sections, each entered only when `current` names it; `current`
// becomes the line that ended the section ("" at end of file).
void readSections(std::ifstream& in, long n, std::string current, Bounds& bounds) {
  QQ currentLower;
  std::string line;
  if (has(current, "Bound")) {
    current.clear();
    while (nextLine(in, line)) {
      if (has(line, kSections)) {
        current = line;
        break;
      }
      if (has(line, "<=")) {
        scanBoundLine(line, n, currentLower, bounds);
      } else if (has(line, "free")) {
        for (std::size_t i = 0; i < line.size(); ++i) {
          if (line[i] != 'x') continue;
          const long k = readIndex(line.c_str() + i + 1);
          entry(bounds.lower, k, n) = QQ::minusInfinity();
          entry(bounds.upper, k, n) = QQ::infinity();
        }
      } else if (!line.empty()) {
        current = line;
        break;
      }
    }
  }
  if (has(current, "Gen")) {
    current.clear();
    while (nextLine(in, line)) {
      if (has(line, kSections)) {
        current = line;
        break;
      }
      for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != 'x') continue;
        const long k = readIndex(line.c_str() + i + 1);
        if (compare(entry(bounds.lower, k, n), QQ::infinity()) == 0) {
          entry(bounds.lower, k, n) = QQ::minusInfinity();
          entry(bounds.upper, k, n) = QQ::infinity();
        }
      }
    }
  }
  if (has(current, "Bin")) {
    while (nextLine(in, line)) {
      if (has(line, kSections)) break;
      for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != 'x') continue;
        const long k = readIndex(line.c_str() + i + 1);
        entry(bounds.lower, k, n) = QQ(0);
        entry(bounds.upper, k, n) = QQ(1);
      }
    }
  }
}

// Second pass: counts, the balance rule, the status lines and the sections.
Counts countAndReadSections(std::ifstream& in, const std::string& argument, long n,
                            Bounds& bounds) {
  Counts counts;
  std::string current;
  skipToConstraints(in);
  std::string line;
  while (std::getline(in, line)) {
    if (has(line, kSections)) {
      current = line;
      break;
    }
    if (has(line, "<=")) {
      ++counts.less;
    } else if (has(line, ">=")) {
      ++counts.greater;
    } else if (has(line, "=")) {
      ++counts.equal;
    } else if (!line.empty()) {
      reportFailure("The file [ " + argument + " ] is incomplete!");
    }
  }
  if (counts.less != counts.greater) reportFailure("The amount of <= and >= equations differ!");
  statusLine("InEquations: ", counts.less);
  statusLine("Equations: ", counts.equal);
  statusLine("Variables: ", n);

  bounds.lower.resize(n, false);
  bounds.upper.resize(n, false);
  for (long i = 1; i <= n; ++i) {
    bounds.lower.at(i) = QQ::infinity();
    bounds.upper.at(i) = QQ::infinity();
  }
  readSections(in, n, current, bounds);
  return counts;
}

struct Objective {
  Vector<QQ> sense;
  Matrix<QQ> coefficients{",", false, false};
};

// Third pass: the text before "Subject To", its header and sense, and its expression.
void readObjective(std::ifstream& in, long n, Objective& objective) {
  std::string text;
  std::string line;
  while (std::getline(in, line)) {
    if (has(line, "Subject To")) break;
    text += line + "\n";
  }
  const std::string body = replacePattern(text, "(Min|Max)(.|\r|\n)*:", "");
  if (body == text) return;
  objective.sense.resize(1, false);
  objective.sense.at(1) =
      search(text, "min(.|\r|\n)*:", false) ? QQ::minusInfinity() : QQ::infinity();
  QQ constant;
  Vector<QQ> row;
  const std::string rest = parseSide(body, n, constant, row);
  if (!rest.empty()) reportFailure("Objective function error: relation sign found!");
  objective.coefficients.setZero(1, n);
  objective.coefficients.at(1) = row;
}

struct Group {
  Matrix<QQ> rows{",", false, false};
  Vector<QQ> rhs;
  long filled = 0;

  void size(long count, long n) {
    rows.setZero(count, n);
    rhs.resize(count, false);
  }
  // A group filled beyond its count fails in at() with "Array: index out of range".
  void file(const Vector<QQ>& row, const QQ& value) {
    ++filled;
    rows.at(filled) = row;
    rhs.at(filled) = value;
  }
};

// Fourth pass: every constraint line into its group, in input order.
void readConstraints(std::ifstream& in, long n, Group& greater, Group& less, Group& equal) {
  skipToConstraints(in);
  std::string line;
  while (std::getline(in, line)) {
    if (has(line, kSections)) break;
    if (line.empty()) continue;
    QQ left;
    Vector<QQ> a;
    const std::string rest = parseSide(line, n, left, a);
    if (rest.empty()) reportFailure("relation error: no sign found!");
    Group& group = has(rest, ">=") ? greater : has(rest, "<=") ? less : equal;
    QQ value = &group == &less ? left : -left;
    Vector<QQ> row = a;
    QQ right;
    Vector<QQ> b;
    parseSide(rest, n, right, b);
    value = value + right;
    row -= b;
    group.file(row, value);
  }
}

// Pairs each ">=" row with the first equal "<=" row still unpaired, taking that row out by moving
// the last one into its place, and appends the unpaired "<=" rows.
void mergeInequalities(Group& greater, Group& less, Matrix<QQ>& system, Vector<QQ>& lowerSides,
                       Vector<QQ>& upperSides) {
  const long g = greater.filled;
  long remaining = less.filled;
  Vector<QQ> upper;
  upper.resize(g, false);
  for (long i = 1; i <= g; ++i) {
    long found = 0;
    for (long j = 1; j <= remaining && found == 0; ++j) {
      if (greater.rows.at(i) == less.rows.at(j)) found = j;
    }
    if (found == 0) {
      upper.at(i) = QQ::infinity();
      continue;
    }
    upper.at(i) = less.rhs.at(found);
    less.rows.at(found) = less.rows.at(remaining);
    less.rhs.at(found) = less.rhs.at(remaining);
    --remaining;
  }
  system.resize(g + remaining, false);
  lowerSides.resize(g + remaining, false);
  upperSides.resize(g + remaining, false);
  for (long i = 1; i <= g; ++i) {
    system.at(i) = greater.rows.at(i);
    lowerSides.at(i) = greater.rhs.at(i);
    upperSides.at(i) = upper.at(i);
  }
  for (long j = 1; j <= remaining; ++j) {
    system.at(g + j) = less.rows.at(j);
    lowerSides.at(g + j) = QQ::minusInfinity();
    upperSides.at(g + j) = less.rhs.at(j);
  }
}

std::ostream& newline(std::ostream& os) { return os << "\n" << std::flush; }

int run(int argc, char** argv) {
  QQ::infinity();
  if (argc != 2) usage(argc > 0 ? argv[0] : nullptr);
  const std::string inputName = argv[1];
  const std::string outputName = replacePattern(inputName, ".lp$", ".opt");
  if (outputName == inputName) usage(argv[0]);

  std::ifstream in(inputName);
  if (!in) reportFailure("The input file [ " + inputName + " ] could not be opened!");
  std::ofstream out(outputName);
  if (!out) reportFailure("The output file [ " + outputName + " ] could not be opened!");
  std::cerr << "Note: This converter is not perfect, but it should" << std::endl;
  std::cerr << "work correctly, as long as ALL variables are named" << std::endl;
  std::cerr << "with a lower case 'x'." << std::endl;
  std::cerr << std::endl;

  const long n = discoverVariables(in);
  rewind(in);

  Bounds bounds;
  const Counts counts = countAndReadSections(in, inputName, n, bounds);
  Group greater;
  Group less;
  Group equal;
  greater.size(counts.greater, n);
  less.size(counts.less, n);
  equal.size(counts.equal, n);
  rewind(in);

  Objective objective;
  readObjective(in, n, objective);
  rewind(in);

  readConstraints(in, n, greater, less, equal);
  in.close();

  Matrix<QQ> inequalities(",", false, false);
  Vector<QQ> lowerSides;
  Vector<QQ> upperSides;
  mergeInequalities(greater, less, inequalities, lowerSides, upperSides);
  Vector<long> integers;
  integers.resize(n, false);
  for (long i = 1; i <= n; ++i) integers.at(i) = 0;

  setFullPrecision(out);
  out << objective.sense << newline;
  out << objective.coefficients << newline;
  out << newline;
  out << equal.rows << newline;
  out << equal.rhs << newline;
  out << "[ ]" << newline;
  out << newline;
  out << inequalities << newline;
  out << lowerSides << newline;
  out << upperSides << newline;
  out << newline;
  out << integers << newline;
  out << bounds.lower << newline;
  out << bounds.upper << newline;
  return 0;
}

}  // namespace
}  // namespace lpconv::reference

int main(int argc, char** argv) { return lpconv::reference::run(argc, argv); }
