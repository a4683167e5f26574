#include <lpconv/converter/lp_reader.h>

#include <cstdint>
#include <string>

#include <lpconv/converter/expression_parser.h>
#include <lpconv/converter/input_text.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/messages.h>
#include <lpconv/converter/number_reader.h>
#include <lpconv/converter/text_scan.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

// Truncation of the discovered index to a 32-bit signed integer, modulo 2^32.
long truncateTo32Bits(long value) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<unsigned long>(value)));
}

// Moves `lines` past the first line containing "Subject To" and returns where that line starts;
// the text's size when there is none.
std::size_t skipToSubjectTo(std::string_view text, Lines& lines) {
  std::string_view line;
  for (std::size_t start = lines.position(); lines.next(line); start = lines.position()) {
    if (containsSubjectTo(line)) return start;
  }
  return text.size();
}

// Calls visit(index) for every lower-case "x" of the line, with the index that follows it.
template <typename Visit>
void forEachVariable(const std::string& line, Visit visit) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') visit(readIndex(line.c_str() + i + 1));
  }
}

// A bound line: "=" before a variable sets the carried lower value, "=" after one sets its bounds.
void readBoundLine(const std::string& line, long n, QQ& lowerValue, VariableBounds& bounds) {
  long index = 0;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == 'x') {
      index = readIndex(line.c_str() + i + 1);
    } else if (line[i] == '=' && index == 0) {
      lowerValue =
          leadsToDigit(line, 0) ? readCoefficient(line.c_str()).toQQ() : QQ::minusInfinity();
    } else if (line[i] == '=') {
      checkIndex(index, n);
      // The lower bound is stored before the digit scan of the upper value can fail.
      bounds.set(index, lowerValue, bounds.at(index).upper);
      bounds.set(index, lowerValue,
                 leadsToDigit(line, i + 1) ? readCoefficient(line.c_str() + i + 1).toQQ()
                                           : QQ::infinity());
      index = 0;
    }
  }
}

// One section's lines up to the next section line or a line the section does not take
// (handle(line) returns false); that line is returned, empty at the end of the text.
template <typename Handle>
std::string readSection(Lines& lines, Handle handle) {
  std::string_view view;
  while (lines.next(view)) {
    std::string line(view);
    if (namesSection(line) || !handle(line)) return line;
  }
  return std::string();
}

}  // namespace

long discoverVariables(std::string_view text) {
  long n = 0;
  Lines lines(text);
  std::string_view line;
  while (lines.next(line)) {
    const auto digits = firstVariableDigits(line);
    if (!digits) continue;
    const long index = truncateTo32Bits(readIndex(std::string(*digits).c_str()));
    if (index > n) n = index;
  }
  return n;
}

ConstraintBlock countRows(std::string_view text, const std::string& argument) {
  ConstraintBlock block;
  Lines lines(text);
  block.subjectTo = skipToSubjectTo(text, lines);
  if (block.subjectTo != text.size()) {
    const std::size_t begin = lines.position();
    std::size_t end = text.size();
    std::string_view line;
    for (std::size_t start = begin; lines.next(line); start = lines.position()) {
      if (namesSection(line)) {
        block.sectionLine = line;
        end = start;
        break;
      }
      switch (classifyRelation(line, FirstTried::kLessEqual)) {
        case Relation::kLessEqual:
          ++block.counts.lessEqual;
          break;
        case Relation::kGreaterEqual:
          ++block.counts.greaterEqual;
          break;
        case Relation::kEquation:
          ++block.counts.equations;
          break;
        case Relation::kNone:
          if (!line.empty()) reportFailure(messages::fileIncomplete(argument));
          break;
      }
    }
    block.rows = text.substr(begin, end - begin);
  }
  block.afterSectionLine = lines.position();
  if (block.counts.lessEqual != block.counts.greaterEqual) reportFailure(messages::kUnbalanced);
  return block;
}

VariableBounds readSections(std::string_view text, const ConstraintBlock& block, long n) {
  VariableBounds bounds;
  Lines lines(text, block.afterSectionLine);
  std::string current(block.sectionLine);
  QQ lowerValue;  // carried from bound line to bound line
  const auto boundLine = [&](const std::string& line) {
    if (line.find("<=") != std::string::npos) {
      readBoundLine(line, n, lowerValue, bounds);
    } else if (containsIgnoringCase(line, "free")) {
      forEachVariable(line, [&](long index) {
        checkIndex(index, n);
        bounds.set(index, QQ::minusInfinity(), QQ::infinity());
      });
    } else if (!line.empty()) {
      return false;
    }
    return true;
  };
  const auto generalLine = [&](const std::string& line) {
    forEachVariable(line, [&](long index) {
      checkIndex(index, n);
      // "No bound stated" is a value test: a lower bound that is +infinity, however it got so.
      const QQ& lower = bounds.at(index).lower;
      if (lower.isInf && lower.isPositive) bounds.set(index, QQ::minusInfinity(), QQ::infinity());
    });
    return true;
  };
  const auto binaryLine = [&](const std::string& line) {
    forEachVariable(line, [&](long index) {
      checkIndex(index, n);
      bounds.set(index, QQ(0L), QQ(1L));
    });
    return true;
  };
  for (const SectionWord& section : kSectionWords) {
    if (!containsIgnoringCase(current, section.word)) continue;
    switch (section.section) {
      case Section::kBound:
        current = readSection(lines, boundLine);
        break;
      case Section::kGeneral:
        current = readSection(lines, generalLine);
        break;
      case Section::kBinary:
        current = readSection(lines, binaryLine);
        break;
    }
  }
  return bounds;
}

Objective readObjective(std::string_view text, const ConstraintBlock& block, long n) {
  const std::string_view lines = text.substr(0, block.subjectTo);
  Objective objective;
  // The header patterns end at a ":", and the line feeds are blanks to the expression: the lines
  // are read where they are, without a copy (an objective line may be most of the file).
  objective.minimise = hasMinimiseHeader(lines);
  const auto header = objectiveHeader(lines);
  objective.present = header.has_value();
  if (!objective.present) return objective;
  Expression parsed;
  ExpressionScanner().scanJoined(lines.substr(0, header->first), lines.substr(header->second), n,
                                 parsed);
  if (!parsed.rest.empty()) reportFailure(messages::kObjectiveRelationSign);
  objective.row = std::move(parsed.row);
  return objective;
}

namespace {

// Files a finished row at the next free position of its group; a group filled beyond the number
// counted for it fails with the container's index error.
void fileRow(std::vector<ConstraintRow>& group, long counted, ConstraintRow&& row) {
  if (static_cast<long>(group.size()) >= counted) reportFailure(messages::kArrayIndexOutOfRange);
  group.push_back(std::move(row));
}

}  // namespace

Constraints readConstraints(const ConstraintBlock& block, long n) {
  const RowCounts& counts = block.counts;
  Constraints constraints;
  Lines lines(block.rows);
  constraints.greaterEqual.reserve(counts.greaterEqual);
  constraints.lessEqual.reserve(counts.lessEqual);
  constraints.equations.reserve(counts.equations);

  ExpressionScanner scanner;
  Expression left;
  Expression right;
  std::string_view line;
  while (lines.next(line)) {
    if (line.empty()) continue;
    scanner.scan(line, n, left);
    if (left.rest.empty()) reportFailure(messages::kNoRelationSign);
    // The rest starts at a relation character; one without "=" ("<", ">") files as an equation.
    const Relation relation = classifyRelation(left.rest, FirstTried::kGreaterEqual);
    const bool greater = relation == Relation::kGreaterEqual;
    const bool less = relation == Relation::kLessEqual;
    ConstraintRow row;
    // A "<=" row keeps its left constant as it is; the others move it across negated.
    if (!less) left.constant.negate();
    scanner.scan(left.rest, n, right);
    row.rhs = add(left.constant, right.constant);
    row.coefficients = std::move(left.row);
    row.coefficients.subtract(right.row);
    if (greater) {
      fileRow(constraints.greaterEqual, counts.greaterEqual, std::move(row));
    } else if (less) {
      fileRow(constraints.lessEqual, counts.lessEqual, std::move(row));
    } else {
      fileRow(constraints.equations, counts.equations, std::move(row));
    }
  }
  return constraints;
}

}  // namespace lpconv
