#include "check.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include <lpconv/containers/messages.h>
#include <lpconv/converter/inequality_pairing.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/messages.h>
#include <lpconv/formats/exact_number.h>

#include "dialect_reading.h"
#include "standard_lp.h"

namespace lpcheck {

namespace {

using lpconv::Diagnostic;
using lpconv::QQ;
using lpconv::Severity;

// The dense output grows with n times the rows; beyond this many bytes it is worth a warning.
constexpr double kHugeOutputBytes = 1e9;

// A name the standard reading maps to a column: "x" and digits without a leading zero.
long columnOf(std::string_view name) {
  if (name.size() < 2 || name[0] != 'x' || name[1] == '0' || name.size() > 19)
    return 0;  // 18 digits fit
  long index = 0;
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] < '0' || name[i] > '9') return 0;
    index = index * 10 + (name[i] - '0');
  }
  return index;
}

std::string text(const QQ& value) { return lpconv::exactText(lpconv::Coefficient(value)); }
std::string text(const lpconv::Coefficient& value) { return lpconv::exactText(value); }

bool isInfinite(const lpconv::Coefficient& c) { return !c.isInline() && c.big().isInf; }

// What the double route does to a decimal that has no exact binary form.
constexpr char kThroughDouble[] =
    "lpconv reads a number as a double and makes it exact through its 17-digit text (0.1 becomes "
    "10000000000000001/100000000000000000); use integers, or accept the rounding";

// Whether the two values differ only as the double route rounds (relative 1/10^15).
bool throughDouble(const lpconv::Coefficient& lpconvValue, const lpconv::Coefficient& stated) {
  const lpconv::dbl_t a = lpconv::approximate(lpconvValue);
  const lpconv::dbl_t b = lpconv::approximate(stated);
  if (!std::isfinite(static_cast<double>(a)) || !std::isfinite(static_cast<double>(b)))
    return false;
  const lpconv::dbl_t scale = std::max<lpconv::dbl_t>(1, std::fabs(b));
  return std::fabs(a - b) <= scale * 1e-15L;
}

bool isDecimalWithIntegerPart(std::string_view written) {
  std::size_t i = 0;
  while (i < written.size() && (written[i] == '+' || written[i] == '-')) ++i;
  const std::size_t point = written.find_first_of(".eE", i);
  if (point == std::string_view::npos) return false;
  if (written[point] != '.') return true;  // an exponent is re-read just the same
  for (std::size_t k = i; k < point; ++k) {
    if (written[k] != '0') return true;
  }
  return written.find_first_of("eE", point) != std::string_view::npos;
}

bool isNegativeDecimal(std::string_view written) {
  return !written.empty() && written[0] == '-' && written.find('.') != std::string_view::npos;
}

class Checker {
 public:
  Checker(std::string_view text, const std::string& file)
      : text_(text), file_(file), lines_(text) {}

  CheckResult run() {
    checkBytes();
    if (!result_.messages.empty() && text_.empty()) return finish();
    dialect_ = readDialect(text_, lines_, file_);
    for (std::size_t i = 0; i < dialect_.rows.size(); ++i) dialectRowAt_[dialect_.rows[i].line] = i;
    standard_ = readStandardLp(text_, [this](const Row& row) {
      inRowComparison_ = true;
      checkRow(row);
      inRowComparison_ = false;
    });
    if (carriageReturnLines_) {
      // lpconv reads another file than the one a standard reader sees: its lines are not
      // the file's lines, so only its failure can be shown.
      checkFailure();
      return finish();
    }
    if (standard_.error) {
      // Nothing to compare with: lpconv's reading is shown beside the standard reader's error.
      const auto& [at, message] = *standard_.error;
      warn(at, "a standard LP reader stops here (" + message +
                   "), so the file states no model lpconv could mean");
      checkFailure();
      return finish();
    }
    checkNames();
    checkSections();
    checkVariableCount();
    checkObjective();
    checkUnreadRows();
    checkPairing();
    checkBounds();
    checkFailure();
    return finish();
  }

 private:
  void add(Severity severity, long line, long column, std::string message) {
    Diagnostic d;
    d.severity = severity;
    d.file = file_;
    d.line = line;
    d.column = line > 0 ? column : 0;
    d.message = std::move(message);
    if (line > 0 && line <= lines_.count()) d.sourceLine = std::string(lines_.text(line));
    if (!seen_.insert({line, d.column, d.message}).second) return;
    if (severity == Severity::warning) ++result_.warnings;
    result_.messages.push_back(std::move(d));
    secondary_.push_back(inRowComparison_);
  }
  void warn(long line, long column, std::string message) {
    add(Severity::warning, line, column, std::move(message));
  }
  void warn(const Place& at, std::string message) { warn(at.line, at.column, std::move(message)); }

  CheckResult finish() {
    // Line and column order; at one place the trap found by itself comes before the
    // differences of the row comparison that it explains.
    std::vector<std::size_t> order(result_.messages.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    const auto& m = result_.messages;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      if (m[a].line != m[b].line) return m[a].line < m[b].line;
      if (m[a].column != m[b].column) return m[a].column < m[b].column;
      return secondary_[a] < secondary_[b];
    });
    std::vector<Diagnostic> sorted;
    sorted.reserve(order.size());
    for (const std::size_t i : order) sorted.push_back(std::move(result_.messages[i]));
    result_.messages = std::move(sorted);
    return std::move(result_);
  }

  // Bytes lpconv reads otherwise than a text editor shows them.
  void checkBytes() {
    if (text_.empty()) {
      warn(0, 0, "the file is empty: lpconv writes an empty model and exits 0");
      return;
    }
    if (text_.find('\0') != std::string_view::npos) {
      warn(0, 0, "the file is binary (it holds NUL bytes), not an LP text");
    }
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") {
      warn(1, 1,
           "byte-order mark: lpconv reads its three bytes as part of the first line; save the "
           "file without a byte-order mark");
    }
    for (std::size_t i = text_.find('\r'); i != std::string_view::npos;
         i = text_.find('\r', i + 1)) {
      if (i + 1 < text_.size() && text_[i + 1] != '\n') {
        const long line = lines_.lineOf(i);
        carriageReturnLines_ = true;
        warn(line, static_cast<long>(i - lines_.startOf(line)) + 1,
             "carriage return without a line feed: lpconv does not end a line here, so the lines "
             "around it are one line to it; end lines with a line feed");
        break;
      }
    }
  }

  // Every variable name the standard reading found that is not x1..xn.
  void checkNames() {
    for (const auto& [name, at] : standard_.firstMention) {
      const long column = columnOf(name);
      if (column > 0) {
        maxColumn_ = std::max(maxColumn_, column);
        continue;
      }
      if (name.size() > 1 && name[0] == 'X' && columnOf("x" + name.substr(1)) > 0) {
        warn(at, "upper-case \"" + name +
                     "\": lpconv counts it for the number of variables but never reads it as a "
                     "variable, so its coefficients and bounds are lost; write x" +
                     name.substr(1));
      } else if (lpconv::namesSection(name)) {
        // Reported where the word ends a section.
        nonColumn_.insert(name);
      } else {
        warn(at, "the name \"" + name +
                     "\" is not x<digits>: lpconv reads only x1..xn as variables; rename the "
                     "variables x1, x2, ...");
      }
      nonColumn_.insert(name);
    }
  }

  bool standardSectionAt(long line) const {
    return std::any_of(standard_.sections.begin(), standard_.sections.end(),
                       [line](const SectionMark& s) { return s.at.line == line; });
  }

  void checkSections() {
    bool binarySeen = false;
    int boundsSections = 0;
    for (const SectionMark& mark : standard_.sections) {
      if (mark.word == "binary") binarySeen = true;
      if (mark.word == "general" && binarySeen) {
        warn(mark.at,
             "a General section after Binary is not read by lpconv; write General before Binary");
      }
      if (mark.word == "bounds" && ++boundsSections > 1) {
        warn(mark.at,
             "a second Bounds section is not read by lpconv; write every bound in one Bounds "
             "section");
      }
    }
    if (dialect_.subjectToLine == 0) return;
    // A section word inside a name or label ends the constraint block (or a section) for lpconv.
    for (long line = dialect_.subjectToLine + 1; line <= lines_.count(); ++line) {
      const std::string_view lineText = lines_.text(line);
      if (!lpconv::namesSection(lineText) || standardSectionAt(line)) continue;
      std::string folded(lineText);
      for (char& c : folded) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
      std::size_t column = std::string::npos;
      std::string word;
      for (const auto& section : lpconv::kSectionWords) {
        const std::size_t found = folded.find(section.word);
        if (found < column) {
          column = found;
          word = std::string(section.word);
        }
      }
      warn(line, static_cast<long>(column) + 1,
           "\"" + word +
               "\" in a name or label: lpconv takes this line for a section line, which "
               "ends the constraint block or section before it; rename it so that \"bin\", \"gen\" "
               "and "
               "\"bound\" appear in no name or label");
      break;
    }
    // In the Bounds section a line with ">=" or "=" and no "<=" ends the section for lpconv.
    for (std::size_t s = 0; s < standard_.sections.size(); ++s) {
      if (standard_.sections[s].word != "bounds") continue;
      const long first = standard_.sections[s].at.line + 1;
      const long last = s + 1 < standard_.sections.size() ? standard_.sections[s + 1].at.line - 1
                                                          : lines_.count();
      for (long line = first; line <= last; ++line) {
        const std::string_view lineText = lines_.text(line);
        if (lineText.find("<=") != std::string_view::npos ||
            lpconv::containsIgnoringCase(lineText, "free"))
          continue;
        const std::size_t sign = lineText.find_first_of(">=");
        if (sign == std::string_view::npos) continue;
        warn(line, static_cast<long>(sign) + 1,
             "a bound line with \">=\" or \"=\" silently ends lpconv's Bounds section: the bound "
             "lines after it are not read; write every bound as \"l <= x <= u\"");
        break;
      }
      break;
    }
  }

  void checkVariableCount() {
    const long n = dialect_.variables;
    if (dialect_.variablesLine > 0 && dialect_.variablesDigits.size() >= 10) {
      const double raw = std::stod(dialect_.variablesDigits);
      if (raw > 2147483647.0) {
        add(Severity::note, dialect_.variablesLine, 1,
            "the index " + dialect_.variablesDigits +
                " is past 2^31: lpconv cuts it to 32 bits, n = " + std::to_string(n));
      }
    }
    if (n > 0 && dialect_.variablesLine > 0) {
      const double rows = 3.0 + static_cast<double>(dialect_.rows.size());
      const double bytes = rows * 2.0 * static_cast<double>(n);
      if (bytes > kHugeOutputBytes) {
        warn(dialect_.variablesLine, 1,
             "this index makes n = " + std::to_string(n) +
                 ": lpconv writes every row densely, about " +
                 std::to_string(static_cast<long long>(bytes / 1e6)) +
                 " MB of output for this file; number the variables from x1 without gaps");
      }
    }
    if (n > maxColumn_ && dialect_.variablesLine > 0) {
      warn(dialect_.variablesLine, 1,
           "lpconv takes n = " + std::to_string(n) +
               " from the first x<digits> of this line, but "
               "the file's variables end at x" +
               std::to_string(maxColumn_) + ": the output has columns the file does not state");
    } else if (n < maxColumn_) {
      const auto at = standard_.firstMention.find("x" + std::to_string(maxColumn_));
      if (at != standard_.firstMention.end()) {
        const bool cut = maxColumn_ > 2147483647L;
        warn(at->second, "x" + std::to_string(maxColumn_) +
                             (cut ? " is past 2^31 and lpconv cuts indices to 32 bits when it "
                                    "counts the variables: it takes n = "
                                  : " is never the first variable of a line: lpconv takes n = ") +
                             std::to_string(n) + " and fails with \"" +
                             lpconv::messages::kArrayIndexOutOfRange + "\"; " +
                             (cut ? std::string("number the variables from x1 without gaps")
                                  : std::string("write the highest variable first on some line")));
      }
    }
  }

  // The reason a term reads otherwise, when its text shows one.
  std::string termTrap(const std::vector<Term>& terms, const Term& term, bool labelled) {
    const long count = std::count_if(terms.begin(), terms.end(),
                                     [&](const Term& t) { return t.name == term.name; });
    if (count > 1) {
      return term.name +
             " is named twice: lpconv keeps the last coefficient where a standard "
             "reader adds them; name each variable once per row";
    }
    if (labelled && term.first) {
      return "the row label is read as part of the expression, changing the first term and the "
             "right-hand side; lpconv has no row names: remove the label";
    }
    if (term.first && term.written.empty()) {
      return "a leading variable without a number gets the coefficient 0; write 1 " + term.name;
    }
    if (isNegativeDecimal(term.written)) {
      return "a negative decimal loses its sign (lpconv reads \"-0.5\" as +1/2); scale the row to "
             "integers";
    }
    if (isDecimalWithIntegerPart(term.written)) {
      return "lpconv reads a decimal only from its point on (\"2.5\" as 1/2, \"1e3\" as 1); use "
             "integers or decimals below 1";
    }
    return "";
  }

  // Compares one expression: the dialect's row against the standard terms.
  void compareTerms(const lpconv::SparseRow& dialectRow, const std::vector<Term>& terms,
                    bool labelled, const Place& rowAt, const char* what) {
    using lpconv::Coefficient;
    // The standard terms by column, a column named twice summed (its last term kept for the
    // place); both sides are then walked in column order together.
    standardTerms_.clear();
    for (const Term& term : terms) {
      const long column = columnOf(term.name);
      if (column != 0) standardTerms_.push_back({column, term.value, &term});
    }
    std::stable_sort(standardTerms_.begin(), standardTerms_.end(),
                     [](const ColumnTerm& a, const ColumnTerm& b) { return a.column < b.column; });
    std::size_t out = 0;
    for (std::size_t k = 0; k < standardTerms_.size(); ++k) {
      if (out > 0 && standardTerms_[out - 1].column == standardTerms_[k].column) {
        standardTerms_[out - 1].value =
            lpconv::add(standardTerms_[out - 1].value, standardTerms_[k].value);
        standardTerms_[out - 1].term = standardTerms_[k].term;
      } else {
        standardTerms_[out++] = std::move(standardTerms_[k]);
      }
    }
    standardTerms_.resize(out);
    const auto& dialect = dialectRow.entries();
    const Coefficient zero;
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < dialect.size() || b < standardTerms_.size()) {
      const long da = a < dialect.size() ? dialect[a].index : LONG_MAX;
      const long sb = b < standardTerms_.size() ? standardTerms_[b].column : LONG_MAX;
      const long c = std::min(da, sb);
      const Coefficient& d = da == c ? dialect[a].value : zero;
      const Coefficient& s = sb == c ? standardTerms_[b].value : zero;
      const Term* last = sb == c ? standardTerms_[b].term : nullptr;
      if (da == c) ++a;
      if (sb == c) ++b;
      if (lpconv::identical(d, s)) continue;
      const std::string reads = "lpconv reads the " + std::string(what) + " coefficient of x" +
                                std::to_string(c) + " as " + text(d) + " where the file states " +
                                text(s);
      if (last == nullptr) {
        warn(labelled ? rowAt : rowAt, reads + (labelled ? ": the row label is read as part of "
                                                           "the expression; remove the label"
                                                         : ""));
        continue;
      }
      std::string trap = throughDouble(d, s) ? kThroughDouble
                         : isInfinite(d)
                             ? "a number beyond the double range (over about 309 digits) "
                               "reads as infinity; scale the row"
                             : termTrap(terms, *last, labelled);
      warn(labelled && last->first ? rowAt : last->at, trap.empty() ? reads : reads + ": " + trap);
    }
  }

  void checkObjective() {
    const Objective& s = standard_.objective;
    const lpconv::Objective& d = dialect_.objective;
    if (dialect_.objectiveFailed) return;  // the failure is reported at its line
    if (!s.present) {
      if (d.present) warn(1, 1, "lpconv finds an objective header where the file states none");
      return;
    }
    if (!d.present) {
      warn(s.senseAt,
           "lpconv finds no objective: its header needs \"Minimize\" or \"Maximize\" "
           "(with that capital) and a label with \":\" (\"obj:\") after it");
      return;
    }
    if (d.minimise != s.minimise) {
      warn(s.senseAt, std::string("lpconv reads the sense as ") +
                          (d.minimise ? "minimise" : "maximise") +
                          ": it minimises whenever \"min\" and a \":\" after it appear before "
                          "Subject To");
    }
    compareTerms(d.row, s.terms, false, s.at, "objective");
    lpconv::Coefficient constant;
    for (const auto& [value, at] : s.constants) constant = lpconv::add(constant, value);
    if (!constant.isZero()) {
      warn(s.constants.front().second, "lpconv drops the objective constant " + text(constant) +
                                           "; leave it out or carry it yourself");
    }
  }

  static const Term* nameNotColumn(const std::vector<Term>& terms) {
    for (const Term& term : terms) {
      if (columnOf(term.name) == 0) return &term;
    }
    return nullptr;
  }

  // One row of the standard reading against the dialect's row of the same line.
  void checkRow(const Row& s) {
    if (s.lastLine > s.at.line) {
      warn(s.at.line + 1, 1,
           "a row split over lines: lpconv reads each line of the constraint block on its own; "
           "write every row on one line");
    }
    if (!standardRowLines_.insert(s.at.line).second) {
      warn(s.at,
           "a second row on one line: lpconv reads one row per line (from its first "
           "relation sign on, the rest is its right side); write one row per line");
      return;
    }
    const auto found = dialectRowAt_.find(s.at.line);
    if (found == dialectRowAt_.end()) {
      if (!dialect_.failure) {
        warn(s.at,
             "lpconv does not read this row as a constraint: its constraint block ends "
             "before it");
      }
      return;
    }
    const DialectRow& d = dialect_.rows[found->second];
    const bool labelled = !s.label.empty();
    const char sense = d.group;
    if (sense != s.sense) {
      warn(s.relationAt, std::string("lpconv files this row as a \"") +
                             (sense == '='   ? "="
                              : sense == '<' ? "<="
                                             : ">=") +
                             "\" row; write the relation as \"<=\", \">=\" or \"=\"");
    }
    compareTerms(d.coefficients, s.terms, labelled, s.at, "row's");
    lpconv::Coefficient rhs = s.rhs;
    for (const auto& [value, at] : s.leftConstants) rhs = lpconv::subtract(rhs, value);
    const lpconv::Coefficient& dialectRhs = d.rhs;
    if (lpconv::identical(dialectRhs, rhs)) return;
    const std::string reads = "lpconv reads the right-hand side as " + text(dialectRhs) +
                              " where the file states " + text(rhs);
    if (throughDouble(dialectRhs, rhs)) {
      warn(s.rhsAt, reads + ": " + kThroughDouble);
    } else if (labelled) {
      warn(s.at, reads + ": the row label is read as part of the expression; remove the label");
    } else if (s.sense == '<' && !s.leftConstants.empty()) {
      warn(s.leftConstants.front().second,
           reads +
               ": a \"<=\" row keeps the sign of a constant on its left side; move the "
               "constant to the right side yourself");
    } else if (isDecimalWithIntegerPart(s.rhsWritten) || isNegativeDecimal(s.rhsWritten)) {
      warn(s.rhsAt, reads + ": lpconv reads a decimal only from its point on; use integers");
    } else if (const Term* odd = nameNotColumn(s.terms)) {
      warn(odd->nameAt, reads + ": \"" + odd->name +
                            "\" is not a variable to lpconv, and its "
                            "text is read as a number; name the variables x1, x2, ...");
    } else {
      warn(s.at, reads);
    }
  }

  // Rows lpconv reads on lines where the file states none.
  void checkUnreadRows() {
    for (const DialectRow& d : dialect_.rows) {
      if (standardRowLines_.count(d.line) == 0) {
        warn(d.line, 1, "lpconv reads a row here that the file does not state as one");
      }
    }
  }

  // lpconv merges a ">=" row with the first "<=" row whose coefficients are equal within
  // 1/10^9: a twin that is not exactly equal loses its own coefficients.
  void checkPairing() {
    if (dialect_.failure) return;
    lpconv::Constraints constraints;
    std::vector<long> lessLines;
    std::vector<long> greaterLines;
    for (const DialectRow& row : dialect_.rows) {
      if (row.group == '>') {
        constraints.greaterEqual.push_back({row.coefficients, row.rhs});
        greaterLines.push_back(row.line);
      } else if (row.group == '<') {
        constraints.lessEqual.push_back({row.coefficients, row.rhs});
        lessLines.push_back(row.line);
      }
    }
    if (constraints.lessEqual.empty() || constraints.greaterEqual.empty()) return;
    const auto merged = lpconv::pairInequalities(constraints);
    const auto firstUpper = reinterpret_cast<std::uintptr_t>(&constraints.lessEqual.front().rhs);
    for (std::size_t k = 0; k < constraints.greaterEqual.size() && k < merged.size(); ++k) {
      // The upper side of a merged row is the right-hand side of its "<=" twin.
      const auto upper = reinterpret_cast<std::uintptr_t>(merged[k].upper);
      if (upper < firstUpper) continue;
      const std::size_t j = (upper - firstUpper) / sizeof(lpconv::ConstraintRow);
      if (j >= constraints.lessEqual.size() || &constraints.lessEqual[j].rhs != merged[k].upper) {
        continue;
      }
      if (constraints.lessEqual[j].coefficients == constraints.greaterEqual[k].coefficients) {
        continue;
      }
      warn(lessLines[j], 1,
           "lpconv merges this row with the \">=\" row of line " + std::to_string(greaterLines[k]) +
               ", whose coefficients differ from it by at most 1/10^9: this row's own "
               "coefficients are lost; make twin rows exactly equal");
    }
  }

  void checkBounds() {
    long unstated = 0;
    long firstUnstated = 0;
    long integers = 0;
    // Only the variables the file names: an index far beyond the others costs nothing here.
    std::map<long, const std::pair<const std::string, Place>*> named;
    for (const auto& mentioned : standard_.firstMention) {
      const long column = columnOf(mentioned.first);
      if (column > 0) named.emplace(column, &mentioned);
    }
    for (const auto& [j, mention] : named) {
      const std::string& name = mention->first;
      Bound s;
      const auto stated = standard_.bounds.find(name);
      if (stated != standard_.bounds.end()) s = stated->second;
      const bool binary = standard_.binaries.count(name) > 0;
      if (binary) {
        s.lower = QQ(0L);
        s.upper = QQ(1L);
      }
      if (standard_.integers.count(name) > 0 && integers++ == 0) {
        warn(standard_.integers.at(name),
             "lpconv's output marks no variable integer: " + name +
                 " and every other General or Binary variable are continuous in it");
      }
      if (j > dialect_.variables) continue;
      const auto& d = dialect_.bounds.at(j);
      if (d.lower.isInf && d.lower.isPositive) {
        if (s.lower == QQ(0L) && s.upper.isInf && s.upper.isPositive) {
          if (unstated++ == 0) firstUnstated = j;
          continue;
        }
      } else if (d.lower == s.lower && d.upper == s.upper) {
        continue;
      }
      const Place at = s.stated ? s.at : mention->second;
      std::string reads = "lpconv reads the bounds of " + name + " as " +
                          (d.lower.isInf && d.lower.isPositive ? "none stated" : text(d.lower)) +
                          " .. " + text(d.upper) + " where the file states " + text(s.lower) +
                          " .. " + text(s.upper);
      if (s.stated) {
        const std::string_view line = lines_.text(at.line);
        const std::size_t x = line.find('x');
        const std::size_t eq = line.find('=');
        if (x != std::string_view::npos && eq != std::string_view::npos && x < eq &&
            line.find("<=") != std::string_view::npos) {
          reads +=
              ": a bound line without a lower value takes the lower value of the last "
              "bound line that had one; write \"0 <= " +
              name + " <= ...\"";
        }
      } else if (standard_.integers.count(name) > 0 && !binary) {
        reads +=
            ": lpconv's General section frees a variable without a bound line; state its "
            "bounds";
      }
      warn(at, reads);
    }
    if (unstated > 0) {
      const std::string name = "x" + std::to_string(firstUnstated);
      add(Severity::note, standard_.firstMention.at(name).line,
          standard_.firstMention.at(name).column,
          std::to_string(unstated) + (unstated == 1 ? " variable has" : " variables have") +
              " no bound line (" + name +
              " is the first): lpconv writes the lower bound +inf, "
              "\"no bound stated\", which means 0 .. +inf as a standard reader takes it");
    }
  }

  void checkFailure() {
    if (!dialect_.failure) return;
    const DialectFailure& f = *dialect_.failure;
    result_.lpconvFails = true;
    result_.failure = f.message;
    std::string why;
    long line = f.line;
    long column = 1;
    if (f.aborts) {
      why =
          "a coefficient that reads as NaN (\"nan\", or a label beginning with \"nan\") aborts "
          "lpconv";
    } else if (f.message == lpconv::messages::fileIncomplete(file_)) {
      const std::string_view lineText = line > 0 ? lines_.text(line) : std::string_view();
      if (lpconv::containsIgnoringCase(lineText, "end")) {
        why =
            "End in the constraint block: every non-empty line there needs a relation sign; "
            "put a Bounds, General or Binary section before End, or leave End out";
      } else {
        why =
            "every non-empty line of the constraint block needs \"<=\", \">=\" or \"=\" (no "
            "comments, no rows split over lines)";
      }
    } else if (f.message == lpconv::messages::kUnbalanced) {
      why = "the balance rule: every \"<=\" row needs a \">=\" row; " + leftOver(line);
    } else if (f.message == lpconv::messages::kArrayIndexOutOfRange) {
      why = "a variable index outside 1..n (n = " + std::to_string(dialect_.variables) +
            "): x0, a highest variable never first on a line, or a row with two relation signs";
    } else if (f.message == lpconv::messages::kObjectiveRelationSign) {
      why = "a relation sign before Subject To: \"Subject To\" is missing or misspelt";
    } else if (f.message == lpconv::messages::kNoRelationSign) {
      why = "a constraint line that begins with its relation sign";
    } else if (f.message == lpconv::messages::kDigitScanFailed) {
      why = "a bound line that ends after its sign (\"x1 <=\"); write the value";
    } else if (f.message.find("INF - INF") != std::string::npos) {
      why = "a coefficient beyond the double range on both sides of the row, at one variable";
    } else {
      why = "see the manual page of lpconv";
    }
    if (line == 0) column = 0;
    warn(line, column, "lpconv fails here: \"" + f.message + "\": " + why);
  }

  // The rows the balance rule leaves over; `line` receives the first of them.
  std::string leftOver(long& line) {
    std::map<std::string, std::vector<long>> lessEqual;
    auto key = [](const lpconv::SparseRow& row) {
      std::string k;
      for (const auto& e : row.entries()) {
        k += std::to_string(e.index) + ":";
        lpconv::appendText(k, e.value);
        k += " ";
      }
      return k;
    };
    for (const DialectRow& d : dialect_.rows) {
      if (d.group == '<') lessEqual[key(d.coefficients)].push_back(d.line);
    }
    std::vector<long> left;
    for (const DialectRow& d : dialect_.rows) {
      if (d.group != '>') continue;
      auto& twins = lessEqual[key(d.coefficients)];
      if (twins.empty()) {
        left.push_back(d.line);
      } else {
        twins.erase(twins.begin());
      }
    }
    for (const auto& [k, lines] : lessEqual) left.insert(left.end(), lines.begin(), lines.end());
    std::sort(left.begin(), left.end());
    std::string list;
    for (std::size_t i = 0; i < left.size() && i < 10; ++i) {
      list += (i ? ", " : "") + std::to_string(left[i]);
    }
    if (left.size() > 10) list += ", ...";
    line = left.empty() ? dialect_.subjectToLine : left.front();
    return std::to_string(dialect_.counts.lessEqual) + " \"<=\" and " +
           std::to_string(dialect_.counts.greaterEqual) +
           " \">=\" rows; the rows without a twin "
           "are on lines " +
           (list.empty() ? std::string("(none)") : list) +
           "; write a one-sided row as a pair, or negate it";
  }

  std::string_view text_;
  std::string file_;
  LineIndex lines_;
  DialectReading dialect_;
  StandardReading standard_;
  long maxColumn_ = 0;
  struct ColumnTerm {
    long column;
    lpconv::Coefficient value;
    const Term* term;
  };
  std::vector<ColumnTerm> standardTerms_;  // reused from row to row
  bool inRowComparison_ = false;
  std::vector<bool> secondary_;  // per message: found by the row comparison
  std::unordered_map<long, std::size_t> dialectRowAt_;
  std::unordered_set<long> standardRowLines_;
  bool carriageReturnLines_ = false;
  std::set<std::string> nonColumn_;
  std::set<std::tuple<long, long, std::string>> seen_;
  CheckResult result_;
};

}  // namespace

std::string CheckResult::summary(const std::string& file) const {
  if (lpconvFails) {
    return file + ": lpconv fails on this file (\"" + failure + "\"); " + std::to_string(warnings) +
           (warnings == 1 ? " warning" : " warnings");
  }
  if (warnings > 0) {
    return file + ": " + std::to_string(warnings) + (warnings == 1 ? " warning" : " warnings") +
           ": lpconv's output does not mean the model the file states";
  }
  return file + ": no differences: lpconv's output means the model the file states";
}

CheckResult checkFile(std::string_view text, const std::string& file) {
  return Checker(text, file).run();
}

}  // namespace lpcheck
