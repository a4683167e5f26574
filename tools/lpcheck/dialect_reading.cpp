#include "dialect_reading.h"

#include <algorithm>
#include <stdexcept>

#include <lpconv/containers/messages.h>
#include <lpconv/converter/input_text.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/messages.h>
#include <lpconv/util/failure.h>

namespace lpcheck {

namespace {

// The objective pass over `lines` alone, as the program runs it on the lines before "Subject To".
lpconv::Objective objectiveOf(std::string_view lines, long n) {
  lpconv::ConstraintBlock block;
  block.subjectTo = lines.size();
  return lpconv::readObjective(lines, block, n);
}

// The constraint pass over one line, counted once in each group, so that it files that row.
lpconv::Constraints rowOf(std::string_view line, long n) {
  lpconv::ConstraintBlock block;
  block.counts = lpconv::RowCounts{1, 1, 1};
  block.rows = line;
  return lpconv::readConstraints(block, n);
}

using lpconv::FailureException;

// A failure or an abort of one pass, or nothing.
template <typename Pass>
std::optional<DialectFailure> attempt(Pass pass) {
  try {
    pass();
  } catch (const FailureException& e) {
    return DialectFailure{e.what(), 0, false};
  } catch (const std::invalid_argument& e) {
    return DialectFailure{std::string("the process aborts (") + e.what() + ")", 0, true};
  }
  return std::nullopt;
}

// The first line (counted from `firstLine`) of `text` whose prefix through it makes `pass`
// fail: the passes read line by line, so a failure found in a prefix is found in every longer
// one.
template <typename Pass>
long failingLine(std::string_view text, long firstLine, Pass pass) {
  std::vector<std::size_t> ends;
  lpconv::Lines lines(text);
  std::string_view line;
  while (lines.next(line)) ends.push_back(lines.position());
  std::size_t low = 0;
  std::size_t high = ends.size();
  while (low < high) {
    const std::size_t mid = low + (high - low) / 2;
    if (attempt([&] { pass(text.substr(0, ends[mid])); })) {
      high = mid;
    } else {
      low = mid + 1;
    }
  }
  return low < ends.size() ? firstLine + static_cast<long>(low) : 0;
}

}  // namespace

LineIndex::LineIndex(std::string_view text) : text_(text) {
  starts_.push_back(0);
  for (std::size_t i = text.find('\n'); i != std::string_view::npos; i = text.find('\n', i + 1)) {
    if (i + 1 < text.size()) starts_.push_back(i + 1);
  }
}

long LineIndex::lineOf(std::size_t offset) const {
  return static_cast<long>(std::upper_bound(starts_.begin(), starts_.end(), offset) -
                           starts_.begin());
}

std::string_view LineIndex::text(long line) const {
  const std::size_t start = startOf(line);
  const std::size_t end = text_.find('\n', start);
  return text_.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

DialectReading readDialect(std::string_view text, const LineIndex& index,
                           const std::string& argument) {
  DialectReading out;
  const lpconv::FailureHandler previous = lpconv::setFailureHandler(lpconv::throwFailure);
  struct Restore {
    lpconv::FailureHandler handler;
    ~Restore() { lpconv::setFailureHandler(handler); }
  } restore{previous};

  out.variables = lpconv::discoverVariables(text);
  if (out.variables > 0) {
    // The line that gave n: the first whose first variable reads as n.
    lpconv::Lines lines(text);
    std::string_view line;
    for (std::size_t start = 0; lines.next(line); start = lines.position()) {
      const auto digits = lpconv::firstVariableDigits(line);
      if (digits && lpconv::discoverVariables(line) == out.variables) {
        out.variablesLine = index.lineOf(start);
        out.variablesDigits = std::string(*digits);
        break;
      }
    }
  }

  lpconv::ConstraintBlock block;
  out.failure = attempt([&] { block = lpconv::countRows(text, argument); });
  if (out.failure) {
    if (out.failure->message != lpconv::messages::kUnbalanced) {
      out.failure->line = failingLine(
          text, 1, [&](std::string_view prefix) { lpconv::countRows(prefix, argument); });
    }
  }
  // The rows are read line by line below whatever the counting said, so that every row can be
  // compared even when lpconv stops in the counting.
  if (out.failure) {
    // countRows failed; find the block and its counts again, as far as the counting reads them.
    lpconv::Lines lines(text);
    std::string_view line;
    std::size_t begin = text.size();
    for (std::size_t start = 0; lines.next(line); start = lines.position()) {
      if (lpconv::containsSubjectTo(line)) {
        block.subjectTo = start;
        begin = lines.position();
        break;
      }
    }
    std::size_t end = text.size();
    for (std::size_t start = begin; lines.next(line); start = lines.position()) {
      if (lpconv::namesSection(line)) {
        end = start;
        block.sectionLine = line;
        break;
      }
      if (line.find("<=") != std::string_view::npos) {
        ++block.counts.lessEqual;
      } else if (line.find(">=") != std::string_view::npos) {
        ++block.counts.greaterEqual;
      } else if (line.find('=') != std::string_view::npos) {
        ++block.counts.equations;
      }
    }
    block.rows = begin < text.size() ? text.substr(begin, end - begin) : std::string_view();
    block.afterSectionLine = lines.position();
  }
  out.counts = block.counts;
  if (block.subjectTo < text.size()) out.subjectToLine = index.lineOf(block.subjectTo);
  if (!block.sectionLine.empty()) {
    out.sectionLine =
        index.lineOf(static_cast<std::size_t>(block.sectionLine.data() - text.data()));
  }

  const auto sections = [&](std::string_view prefix) {
    out.bounds = lpconv::readSections(prefix, block, out.variables);
  };
  if (!out.failure) {
    out.failure = attempt([&] { sections(text); });
    if (out.failure) {
      out.failure->line =
          failingLine(text.substr(block.afterSectionLine), index.lineOf(block.afterSectionLine),
                      [&](std::string_view p) {
                        lpconv::readSections(text.substr(0, block.afterSectionLine + p.size()),
                                             block, out.variables);
                      });
    }
  }

  const std::string_view objectiveLines = text.substr(0, block.subjectTo);
  const auto objectiveFailure =
      attempt([&] { out.objective = objectiveOf(objectiveLines, out.variables); });
  out.objectiveFailed = objectiveFailure.has_value();
  if (objectiveFailure && !out.failure) {
    out.failure = objectiveFailure;
    out.failure->line =
        failingLine(objectiveLines, 1, [&](std::string_view p) { objectiveOf(p, out.variables); });
    if (out.failure->line == 0) out.failure->line = index.lineOf(objectiveLines.size() - 1);
  }

  // Each constraint line on its own: the same pass, given one line, files that line's row.
  lpconv::RowCounts filed;
  if (!block.rows.empty()) {
    lpconv::Lines lines(block.rows);
    const std::size_t base = static_cast<std::size_t>(block.rows.data() - text.data());
    std::string_view line;
    for (std::size_t start = 0; lines.next(line); start = lines.position()) {
      if (line.empty()) continue;
      const long lineNumber = index.lineOf(base + start);
      lpconv::Constraints row;
      auto failure = attempt([&] { row = rowOf(line, out.variables); });
      if (failure) {
        if (!out.failure) {
          out.failure = failure;
          out.failure->line = lineNumber;
        }
        continue;
      }
      DialectRow dialect;
      dialect.line = lineNumber;
      long* count = nullptr;
      long counted = 0;
      std::vector<lpconv::ConstraintRow>* group = nullptr;
      if (!row.greaterEqual.empty()) {
        dialect.group = '>';
        group = &row.greaterEqual;
        count = &filed.greaterEqual;
        counted = out.counts.greaterEqual;
      } else if (!row.lessEqual.empty()) {
        dialect.group = '<';
        group = &row.lessEqual;
        count = &filed.lessEqual;
        counted = out.counts.lessEqual;
      } else {
        group = &row.equations;
        count = &filed.equations;
        counted = out.counts.equations;
      }
      // A group filled beyond the number counted for it fails with the index error.
      if (++*count > counted && !out.failure) {
        out.failure = DialectFailure{lpconv::messages::kArrayIndexOutOfRange, lineNumber, false};
      }
      dialect.coefficients = std::move(group->front().coefficients);
      dialect.rhs = std::move(group->front().rhs);
      out.rows.push_back(std::move(dialect));
    }
  }
  return out;
}

}  // namespace lpcheck
