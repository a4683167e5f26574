#include <lpconv/converter/lp_reader.h>

#include <cstdint>

#include <lpconv/converter/expression_parser.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/number_reader.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

// Truncation of the discovered index to a 32-bit signed integer, modulo 2^32.
long truncateTo32Bits(long value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<unsigned long>(value)));
}

// Moves `lines` past the first line containing "Subject To"; false at end of input.
bool skipToSubjectTo(InputLines& lines) {
  std::string_view line;
  while (lines.next(line)) {
    if (containsSubjectTo(line)) return true;
  }
  return false;
}

// Calls visit(index) for every lower-case "x" of the line, with the index that follows it.
template <typename Visit>
void forEachVariable(const std::string& line, Visit visit) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') visit(readIndex(line.c_str() + i + 1));
  }
}

// Reads the lines of one section up to the next section line, which becomes `sectionLine`
// (empty at end of input). handle(line) returns false to end the section at that line.
template <typename Handle>
void readSection(InputLines& lines, std::string& sectionLine, Handle handle) {
  std::string_view view;
  while (lines.next(view)) {
    std::string line(view);
    if (startsSection(line) || !handle(line)) {
      sectionLine = std::move(line);
      return;
    }
  }
  sectionLine.clear();
}

void readBoundLine(const std::string& line, long n, QQ& lowerValue, VariableBounds& bounds) {
  long index = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') {
      index = readIndex(line.c_str() + i + 1);
    } else if (line[i] == '=') {
      if (index == 0) {
        lowerValue =
            leadsToDigit(line, 0) ? readCoefficient(line.c_str()).toQQ() : QQ::minusInfinity();
      } else {
        checkIndex(index, n);
        VariableBounds::Pair& pair = bounds.at(index);
        pair.lower = lowerValue;
        pair.upper = leadsToDigit(line, i + 1) ? readCoefficient(line.c_str() + i + 1).toQQ()
                                                : QQ::infinity();
        index = 0;
      }
    }
  }
}

}  // namespace

bool leadsToDigit(const std::string& text, std::size_t from) {
  for (std::size_t i = from; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ' ' || c == '+' || c == '-') continue;
    return c >= '0' && c <= '9';
  }
  reportFailure("scan for digit failed!");
}

long discoverVariables(InputLines& lines) {
  long n = 0;
  std::string_view line;
  while (lines.next(line)) {
    const auto digits = firstVariableDigits(line);
    if (!digits) continue;
    const long index = truncateTo32Bits(readIndex(std::string(*digits).c_str()));
    if (index > n) n = index;
  }
  return n;
}

RowCounts countRows(InputLines& lines, const std::string& argument, std::string& sectionLine) {
  RowCounts counts;
  sectionLine.clear();
  if (skipToSubjectTo(lines)) {
    std::string_view line;
    while (lines.next(line)) {
      if (startsSection(line)) {
        sectionLine = std::string(line);
        break;
      }
      if (line.find("<=") != std::string_view::npos) {
        ++counts.lessEqual;
      } else if (line.find(">=") != std::string_view::npos) {
        ++counts.greaterEqual;
      } else if (line.find('=') != std::string_view::npos) {
        ++counts.equations;
      } else if (!line.empty()) {
        reportFailure("The file [ " + argument + " ] is incomplete!");
      }
    }
  }
  if (counts.lessEqual != counts.greaterEqual) {
    reportFailure("The amount of <= and >= equations differ!");
  }
  return counts;
}

void readSections(InputLines& lines, std::string sectionLine, long n, VariableBounds& bounds) {
  if (containsIgnoringCase(sectionLine, "bound")) {
    QQ lowerValue;  // carried from line to line
    readSection(lines, sectionLine, [&](const std::string& line) {
      if (line.find("<=") != std::string::npos) {
        readBoundLine(line, n, lowerValue, bounds);
      } else if (containsIgnoringCase(line, "free")) {
        forEachVariable(line, [&](long index) {
          checkIndex(index, n);
          VariableBounds::Pair& pair = bounds.at(index);
          pair.lower = QQ::minusInfinity();
          pair.upper = QQ::infinity();
        });
      } else if (!line.empty()) {
        return false;
      }
      return true;
    });
  }
  if (containsIgnoringCase(sectionLine, "gen")) {
    readSection(lines, sectionLine, [&](const std::string& line) {
      forEachVariable(line, [&](long index) {
        checkIndex(index, n);
        VariableBounds::Pair& pair = bounds.at(index);
        // "No bound stated" is a value test: a lower bound that is +infinity, however it got so.
        if (pair.lower.isInf && pair.lower.isPositive) {
          pair.lower = QQ::minusInfinity();
          pair.upper = QQ::infinity();
        }
      });
      return true;
    });
  }
  if (containsIgnoringCase(sectionLine, "bin")) {
    readSection(lines, sectionLine, [&](const std::string& line) {
      forEachVariable(line, [&](long index) {
        checkIndex(index, n);
        VariableBounds::Pair& pair = bounds.at(index);
        pair.lower = QQ(0L);
        pair.upper = QQ(1L);
      });
      return true;
    });
  }
}

void readObjective(InputLines& lines, LpModel& model) {
  std::string text;
  std::string_view line;
  while (lines.next(line)) {
    if (containsSubjectTo(line)) break;
    text.append(line);
    text.push_back('\n');
  }
  model.minimise = hasMinimiseHeader(text);
  model.hasObjective = removeObjectiveHeader(text);
  if (!model.hasObjective) return;
  QQ constant;
  const std::string rest = parseExpression(text, model.variables, constant, model.objective);
  if (!rest.empty()) reportFailure("Objective function error: relation sign found!");
}

namespace {

// Files a finished row at the next free position of its group; a group filled beyond the number
// counted for it fails with the container's index error.
void fileRow(std::vector<ConstraintRow>& group, long counted, ConstraintRow&& row) {
  if (static_cast<long>(group.size()) >= counted) reportFailure("Array: index out of range");
  group.push_back(std::move(row));
}

}  // namespace

void readConstraints(InputLines& lines, LpModel& model) {
  if (!skipToSubjectTo(lines)) return;
  const long n = model.variables;
  model.greaterEqual.reserve(model.counts.greaterEqual);
  model.lessEqual.reserve(model.counts.lessEqual);
  model.equations.reserve(model.counts.equations);

  QQ leftConstant;
  QQ rightConstant;
  SparseRow rightRow;
  std::string_view line;
  while (lines.next(line)) {
    if (startsSection(line)) break;
    if (line.empty()) continue;
    ConstraintRow row;
    const std::string rest = parseExpression(line, n, leftConstant, row.coefficients);
    if (rest.empty()) reportFailure("relation error: no sign found!");
    const bool greater = rest.find(">=") != std::string::npos;
    const bool less = !greater && rest.find("<=") != std::string::npos;
    // A "<=" row keeps its left constant as it is; the others move it across negated.
    row.rhs = less ? leftConstant : -leftConstant;
    parseExpression(rest, n, rightConstant, rightRow);
    add(row.rhs, row.rhs, rightConstant);
    row.coefficients.subtract(rightRow);
    if (greater) {
      fileRow(model.greaterEqual, model.counts.greaterEqual, std::move(row));
    } else if (less) {
      fileRow(model.lessEqual, model.counts.lessEqual, std::move(row));
    } else {
      fileRow(model.equations, model.counts.equations, std::move(row));
    }
  }
}

}  // namespace lpconv
