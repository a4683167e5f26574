// lpconv_reference: the conversion written the slow, literal way, as an oracle for lpconv. It
// reads the input four times through one std::ifstream, tests lines with the regex helpers, keeps
// dense Vector<QQ> and Matrix<QQ> systems, pairs rows by linear search and writes every item
// through the containers' own stream operators. Same messages, streams, status and bytes.
#include <cctype>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <string>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/vector.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/full_precision.h>
#include <lpconv/util/paths.h>
#include <lpconv/util/strings.h>
#include <lpconv/util/trace.h>

#include "patterns.h"

namespace lpconv::reference {
namespace {

const char kSections[] = "Bound|Gen|Bin";

bool has(const std::string& line, const char* pattern) { return search(line, pattern, false); }

// strtod on decimal forms only, widened: a hexadecimal prefix reads as the 0 before its x.
QQ readDecimal(const char* text) {
  const char* p = text;
  while (std::isspace(static_cast<unsigned char>(*p))) ++p;
  const bool negative = *p == '-';
  if (*p == '+' || *p == '-') ++p;
  if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) return fromDbl(negative ? -0.0L : 0.0L);
  return fromDbl(static_cast<dbl_t>(std::strtod(text, nullptr)));
}

long readIndex(const char* text) { return std::strtol(text, nullptr, 10); }

bool leadsToDigit(const std::string& text, std::size_t p) {
  while (p < text.size() && (text[p] == ' ' || text[p] == '+' || text[p] == '-')) ++p;
  if (p >= text.size()) reportFailure("scan for digit failed!");
  return text[p] >= '0' && text[p] <= '9';
}

// Every index the converter addresses lies in 1..n.
QQ& entry(Vector<QQ>& vector, long k, long n) {
  if (k < 1 || k > n) reportFailure("Array: index out of range");
  return vector.at(k);
}

// One side of a linear expression: row and constant reset, the normalised text scanned, and the
// trimmed rest from the first relation character after the expression returned.
std::string parseSide(const std::string& text, long n, QQ& constant, Vector<QQ>& row) {
  constant = QQ();
  if (n != 0) row.resize(n, false);
  for (long i = 1; i <= n; ++i) row.at(i) = QQ();
  std::string s = replacePattern(text, "( |\t|\r|\n)", "");
  s = replacePattern(s, "\\+-", "-");
  s = replacePattern(s, "-\\+", "-");
  s = replacePattern(s, "--", "+");
  s = replacePattern(s, "\\+\\+", "+");
  // A number read as 0 is a written 0 only when a "0" comes before the next x.
  const auto implicit = [&](const QQ& value, std::size_t from, bool negative) {
    if (!value.isZero()) return value;
    const std::size_t zero = s.find('0', from);
    if (zero != std::string::npos && zero < s.find('x', from)) return QQ();
    return negative ? QQ(-1) : QQ(1);
  };
  std::size_t p = s.find_first_not_of("<=>");
  QQ current;
  bool pending = false;
  std::string rest;
  while (p < s.size()) {
    const char c = s[p];
    if (c == 'x') {
      entry(row, readIndex(s.c_str() + p + 1), n) = current;
      pending = false;
    } else if (c == '<' || c == '=' || c == '>') {
      rest = trim(s.substr(p), " \t\n\r\f\v");
      break;
    } else if (c == '+' || c == '-') {
      if (pending) constant = constant + current;
      QQ value = readDecimal(s.c_str() + p + 1);
      if (c == '-') value = -value;
      current = implicit(value, p + 1, c == '-');
      pending = true;
    } else {
      current = implicit(readDecimal(s.c_str() + p), p, false);
      pending = true;
    }
    ++p;
    while (p < s.size() && s[p] >= '0' && s[p] <= '9') ++p;
  }
  if (pending) constant = constant + current;
  return rest;
}

void skipToConstraints(std::ifstream& in) {
  std::string line;
  while (std::getline(in, line) && !has(line, "Subject To")) {
  }
}

void statusLine(const char* header, long value) {
  std::cout << enterLevel(false) << " " << header << value << leaveLevel(false);
  lastOutputTime = std::time(nullptr);
}

// Calls visit(k) for the index after every lower-case x of the line.
template <typename Visit>
void forEachX(const std::string& line, Visit visit) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') visit(readIndex(line.c_str() + i + 1));
  }
}

// The Bound, General and Binary sections, each entered only when `current` names it.
void readSections(std::ifstream& in, long n, std::string current, Vector<QQ>& lower,
                  Vector<QQ>& upper) {
  QQ currentLower;
  std::string line;
  const auto next = [&] {
    if (std::getline(in, line)) return true;
    line.clear();
    return false;
  };
  if (has(current, "Bound")) {
    current.clear();
    while (next()) {
      if (has(line, kSections)) {
        current = line;
        break;
      }
      if (has(line, "<=")) {
        long k = 0;
        for (std::size_t i = 0; i < line.size(); ++i) {
          if (line[i] == 'x') {
            k = readIndex(line.c_str() + i + 1);
          } else if (line[i] == '=' && k == 0) {
            currentLower = leadsToDigit(line, 0) ? readDecimal(line.c_str()) : QQ::minusInfinity();
          } else if (line[i] == '=') {
            entry(lower, k, n) = currentLower;
            entry(upper, k, n) =
                leadsToDigit(line, i + 1) ? readDecimal(line.c_str() + i + 1) : QQ::infinity();
            k = 0;
          }
        }
      } else if (has(line, "free")) {
        forEachX(line, [&](long k) {
          entry(lower, k, n) = QQ::minusInfinity(), entry(upper, k, n) = QQ::infinity();
        });
      } else if (!line.empty()) {
        current = line;
        break;
      }
    }
  }
  if (has(current, "Gen")) {
    current.clear();
    while (next()) {
      if (has(line, kSections)) {
        current = line;
        break;
      }
      forEachX(line, [&](long k) {
        if (compare(entry(lower, k, n), QQ::infinity()) != 0) return;
        entry(lower, k, n) = QQ::minusInfinity();
        entry(upper, k, n) = QQ::infinity();
      });
    }
  }
  while (has(current, "Bin") && next() && !has(line, kSections)) {
    forEachX(line, [&](long k) { entry(lower, k, n) = QQ(0), entry(upper, k, n) = QQ(1); });
  }
}

struct Group {
  Matrix<QQ> rows{",", false, false};
  Vector<QQ> rhs;
  long filled = 0;
};

std::ostream& newline(std::ostream& os) { return os << "\n" << std::flush; }

int run(int argc, char** argv) {
  QQ::infinity();
  const auto usage = [&] {
    std::cout << "Usage: " << baseName(argc > 0 ? argv[0] : "") << " *.lp" << endLine();
    lastOutputTime = std::time(nullptr);
    terminateWithFailure();
  };
  if (argc != 2) usage();
  const std::string inputName = argv[1];
  const std::string outputName = replacePattern(inputName, ".lp$", ".opt");
  if (outputName == inputName) usage();
  std::ifstream in(inputName);
  if (!in) reportFailure("The input file [ " + inputName + " ] could not be opened!");
  std::ofstream out(outputName);
  if (!out) reportFailure("The output file [ " + outputName + " ] could not be opened!");
  for (const char* note :
       {"Note: This converter is not perfect, but it should",
        "work correctly, as long as ALL variables are named", "with a lower case 'x'.", ""}) {
    std::cerr << note << std::endl;
  }
  const auto rewind = [&] { in.clear(), in.seekg(0); };

  // Pass 1: the largest index of the first match of each line, truncated to 32 bits.
  long n = 0;
  std::string line;
  while (std::getline(in, line)) {
    std::smatch match;
    if (!searchMatch(line, "x([0-9]+)", match)) continue;
    n = std::max<long>(n,
                       static_cast<std::int32_t>(std::strtol(match[1].str().c_str(), nullptr, 10)));
  }
  rewind();

  // Pass 2: counts, the balance rule, the status lines and the sections.
  long less = 0, greater = 0, equal = 0;
  std::string current;
  skipToConstraints(in);
  while (std::getline(in, line)) {
    if (has(line, kSections)) {
      current = line;
      break;
    }
    if (has(line, "<=")) {
      ++less;
    } else if (has(line, ">=")) {
      ++greater;
    } else if (has(line, "=")) {
      ++equal;
    } else if (!line.empty()) {
      reportFailure("The file [ " + inputName + " ] is incomplete!");
    }
  }
  if (less != greater) reportFailure("The amount of <= and >= equations differ!");
  statusLine("InEquations: ", less);
  statusLine("Equations: ", equal);
  statusLine("Variables: ", n);
  Vector<QQ> lower, upper;
  lower.resize(n, false), upper.resize(n, false);
  for (long i = 1; i <= n; ++i) lower.at(i) = upper.at(i) = QQ::infinity();
  readSections(in, n, current, lower, upper);
  Group groups[3];  // ">=", "<=", "="
  const long counts[3] = {greater, less, equal};
  for (int g = 0; g < 3; ++g) {
    groups[g].rows.setZero(counts[g], n), groups[g].rhs.resize(counts[g], false);
  }
  rewind();

  // Pass 3: the objective.
  std::string text;
  while (std::getline(in, line) && !has(line, "Subject To")) text += line + "\n";
  Vector<QQ> sense;
  Matrix<QQ> objective(",", false, false);
  const std::string body = replacePattern(text, "(Min|Max)(.|\r|\n)*:", "");
  if (body != text) {
    sense.resize(1, false);
    sense.at(1) = search(text, "min(.|\r|\n)*:", false) ? QQ::minusInfinity() : QQ::infinity();
    QQ constant;
    Vector<QQ> row;
    const std::string rest = parseSide(body, n, constant, row);
    if (!rest.empty()) reportFailure("Objective function error: relation sign found!");
    objective.setZero(1, n);
    objective.at(1) = row;
  }
  rewind();

  // Pass 4: every constraint line into its group (filing beyond the count fails in at()).
  skipToConstraints(in);
  while (std::getline(in, line) && !has(line, kSections)) {
    if (line.empty()) continue;
    QQ left, right;
    Vector<QQ> a, b;
    const std::string rest = parseSide(line, n, left, a);
    if (rest.empty()) reportFailure("relation error: no sign found!");
    const int g = has(rest, ">=") ? 0 : has(rest, "<=") ? 1 : 2;
    QQ value = g == 1 ? left : -left;
    Vector<QQ> row = a;
    parseSide(rest, n, right, b);
    value = value + right;
    row -= b;
    ++groups[g].filled;
    groups[g].rows.at(groups[g].filled) = row;
    groups[g].rhs.at(groups[g].filled) = value;
  }
  in.close();

  // Each ">=" row takes the first equal "<=" row left, which the last one replaces.
  Group& ge = groups[0];
  Group& le = groups[1];
  long remaining = le.filled;
  Vector<QQ> upperOfGe;
  upperOfGe.resize(ge.filled, false);
  for (long i = 1; i <= ge.filled; ++i) {
    upperOfGe.at(i) = QQ::infinity();
    for (long j = 1; j <= remaining; ++j) {
      if (!(ge.rows.at(i) == le.rows.at(j))) continue;
      upperOfGe.at(i) = le.rhs.at(j);
      le.rows.at(j) = le.rows.at(remaining);
      le.rhs.at(j) = le.rhs.at(remaining);
      --remaining;
      break;
    }
  }
  const long r = ge.filled + remaining;
  Matrix<QQ> system(",", false, false);
  Vector<QQ> lowerSides, upperSides;
  system.resize(r, false), lowerSides.resize(r, false), upperSides.resize(r, false);
  for (long i = 1; i <= r; ++i) {
    const bool paired = i <= ge.filled;
    system.at(i) = paired ? ge.rows.at(i) : le.rows.at(i - ge.filled);
    lowerSides.at(i) = paired ? ge.rhs.at(i) : QQ::minusInfinity();
    upperSides.at(i) = paired ? upperOfGe.at(i) : le.rhs.at(i - ge.filled);
  }
  Vector<long> integers;
  integers.resize(n, false);
  for (long i = 1; i <= n; ++i) integers.at(i) = 0;

  setFullPrecision(out);
  out << sense << newline << objective << newline << newline;
  out << groups[2].rows << newline << groups[2].rhs << newline << "[ ]" << newline << newline;
  out << system << newline << lowerSides << newline << upperSides << newline << newline;
  out << integers << newline << lower << newline << upper << newline;
  // A failed write or close leaves an empty file and a failure.
  out.close();
  if (!out) {
    std::ofstream(outputName).close();
    reportFailure("The output file [ " + outputName + " ] could not be written!");
  }
  return 0;
}

}  // namespace
}  // namespace lpconv::reference

int main(int argc, char** argv) {
  std::signal(SIGXFSZ, SIG_IGN);  // a file-size limit is a failed write, not the end
  return lpconv::reference::run(argc, argv);
}
