// The MPS reader: fixed and free MPS told apart line by line, streamed into the model. Rows come
// first, the matrix column by column, then right-hand sides, ranges and bounds. Where the
// established readers disagree the reader applies one rule and says so in a note at the line.
#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/formats.h>
#include <lpconv/formats/mps_fields.h>
#include <lpconv/formats/mps_rules.h>

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace lpconv {

namespace {

using detail::MpsRecord;

enum class Section { start, name, objsense, objname, rows, columns, rhs, ranges, bounds, end };

bool equalsIgnoringCase(std::string_view text, std::string_view upperWord) {
  if (text.size() != upperWord.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (c != upperWord[i]) return false;
  }
  return true;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v'; }

std::string quoted(std::string_view name) {
  std::string text;
  text.reserve(name.size() + 2);
  text += '\'';
  text += name;
  text += '\'';
  return text;
}

// Sections the model cannot hold, and what the error calls them.
struct UnsupportedSection {
  std::string_view word;
  std::string_view what;
};
constexpr UnsupportedSection kUnsupported[] = {
    {"SOS", "SOS constraints"},
    {"SETS", "SOS constraints"},
    {"QUADOBJ", "quadratic objectives"},
    {"QMATRIX", "quadratic objectives"},
    {"QSECTION", "quadratic objectives"},
    {"QCMATRIX", "quadratic constraints"},
    {"CSECTION", "conic constraints"},
    {"INDICATORS", "indicator constraints"},
    {"GENCONS", "general constraints"},
    {"PWLOBJ", "piecewise-linear objectives"},
    {"PWLNAM", "piecewise-linear objectives"},
    {"PWLCON", "piecewise-linear constraints"},
    {"LAZYCONS", "lazy constraints"},
    {"USERCUTS", "user cuts"},
    {"BRANCH", "branching priorities"},
    {"SCENARIOS", "stochastic scenarios"},
};

enum class RowKind { constraint, objective, droppedObjective };

struct RowRef {
  RowKind kind;
  Model::Index index;  // the model row of a constraint
};

// What the reader knows of a column beyond the model: which bounds BOUNDS named, whether it
// was declared integer between markers.
enum ColumnFlag : unsigned char {
  kLowerNamed = 1,
  kUpperNamed = 2,
  kMarkerInteger = 4,
};

// A field to read, and where a message about it points.
struct Problem {
  std::string_view at;
  std::string message;
};

class MpsReader {
 public:
  MpsReader(LineSource& source, DiagnosticSink& sink) : source_(source), sink_(sink) {}

  Model read() {
    std::string_view line;
    while (source_.next(line)) {
      if (line.empty() || line[0] == '*') continue;
      if (!isBlank(line[0])) {
        header(line);
        if (section_ == Section::end) break;
        continue;
      }
      if (isBlankLine(line)) continue;
      dataLine(line);
    }
    if (section_ != Section::end) {
      Diagnostic d;
      d.file = source_.name();
      d.line = source_.lineNumber();
      d.message = "the file ends without ENDATA";
      throw ParseError(std::move(d));
    }
    model_.finishColumns();
    finishRows();
    finishColumnBounds();
    return std::move(model_);
  }

 private:
  static bool isBlankLine(std::string_view line) {
    for (char c : line) {
      if (!isBlank(c)) return false;
    }
    return true;
  }

  void note(std::string_view at, std::string message) {
    sink_.report(source_.diagnosticAt(Severity::note, at, std::move(message)));
  }

  // --- Section lines ---

  void header(std::string_view line) {
    std::array<std::string_view, detail::kMaxTokens> tokens;
    std::size_t count = detail::splitFreeTokens(line, tokens);
    const std::string_view word = tokens[0];
    if (equalsIgnoringCase(word, "NAME")) {
      expectOrder(word, Section::name);
      section_ = Section::name;
      return;
    }
    if (equalsIgnoringCase(word, "OBJSENSE") || equalsIgnoringCase(word, "OBJSENS")) {
      expectOrder(word, Section::objsense);
      section_ = Section::objsense;
      if (count >= 2) objectiveSense(tokens[1], count);
      return;
    }
    if (equalsIgnoringCase(word, "OBJNAME")) {
      expectOrder(word, Section::objname);
      section_ = Section::objname;
      if (count >= 2) objectiveName(tokens[1], count);
      return;
    }
    if (equalsIgnoringCase(word, "ROWS")) {
      expectOrder(word, Section::rows);
      section_ = Section::rows;
      return;
    }
    if (equalsIgnoringCase(word, "COLUMNS")) {
      requireRows(word);
      expectOrder(word, Section::columns);
      section_ = Section::columns;
      return;
    }
    if (equalsIgnoringCase(word, "RHS") || equalsIgnoringCase(word, "RANGES") ||
        equalsIgnoringCase(word, "BOUNDS")) {
      requireRows(word);
      const Section next = equalsIgnoringCase(word, "RHS")      ? Section::rhs
                           : equalsIgnoringCase(word, "RANGES") ? Section::ranges
                                                                : Section::bounds;
      if (section_ == next) source_.fail(word, quoted(word) + " section given twice");
      if (section_ == Section::columns) {
        closeMarkerBlock(word);
        model_.finishColumns();
      }
      columnsDone_ = true;
      if (seen_[static_cast<int>(next)]) {
        source_.fail(word, quoted(word) + " section given twice");
      }
      seen_[static_cast<int>(next)] = true;
      section_ = next;
      return;
    }
    if (equalsIgnoringCase(word, "ENDATA")) {
      if (section_ == Section::columns) closeMarkerBlock(word);
      if (!seen_[static_cast<int>(Section::rows)])
        source_.fail(word, "the ROWS section is missing");
      section_ = Section::end;
      return;
    }
    for (const UnsupportedSection& s : kUnsupported) {
      if (equalsIgnoringCase(word, s.word)) {
        source_.fail(
            word, std::string(s.what) + " (" + std::string(s.word) + " section) are not supported");
      }
    }
    (void)count;
    source_.fail(word,
                 "unknown section " + quoted(word) + " (a data line must begin with a blank)");
  }

  // Sections come in the order NAME, OBJSENSE/OBJNAME, ROWS, COLUMNS, then RHS, RANGES and
  // BOUNDS in any order; the header sections may not follow the rows.
  void expectOrder(std::string_view word, Section next) {
    const bool early = next == Section::name || next == Section::objsense ||
                       next == Section::objname || next == Section::rows;
    if (seen_[static_cast<int>(next)] && next != Section::objsense) {
      source_.fail(word, quoted(word) + " section given twice");
    }
    if (early && seen_[static_cast<int>(Section::rows)] && next != Section::rows &&
        next != Section::objsense) {
      source_.fail(word, quoted(word) + " must come before ROWS");
    }
    if (next == Section::columns && columnsDone_) {
      source_.fail(word, "COLUMNS must come before RHS, RANGES and BOUNDS");
    }
    seen_[static_cast<int>(next)] = true;
  }

  // An integer block still open when COLUMNS ends closes there.
  void closeMarkerBlock(std::string_view at) {
    if (!inMarker_) return;
    note(at, "the integer marker block begun at line " + std::to_string(markerLine_) +
                 " has no INTEND marker: it ends with the COLUMNS section");
    inMarker_ = false;
  }

  void requireRows(std::string_view word) {
    if (!seen_[static_cast<int>(Section::rows)]) {
      source_.fail(word, quoted(word) + " before the ROWS section");
    }
  }

  void objectiveSense(std::string_view word, std::size_t count) {
    if (count > 2) source_.fail(word, "extra field after the objective sense");
    if (equalsIgnoringCase(word, "MAX") || equalsIgnoringCase(word, "MAXIMIZE") ||
        equalsIgnoringCase(word, "MAXIMISE")) {
      model_.setSense(ObjectiveSense::maximize);
    } else if (equalsIgnoringCase(word, "MIN") || equalsIgnoringCase(word, "MINIMIZE") ||
               equalsIgnoringCase(word, "MINIMISE")) {
      model_.setSense(ObjectiveSense::minimize);
    } else {
      source_.fail(word, "expected MAX or MIN as the objective sense, not " + quoted(word));
    }
    senseGiven_ = true;
  }

  void objectiveName(std::string_view name, std::size_t count) {
    if (count > 2) source_.fail(name, "OBJNAME takes one name");
    objectiveRowWanted_ = std::string(name);
  }

  // --- Data lines ---

  void dataLine(std::string_view line) {
    std::array<std::string_view, detail::kMaxTokens> tokens;
    std::size_t count = detail::splitFreeTokens(line, tokens);
    if (count == 0) return;  // a '$' comment line
    switch (section_) {
      case Section::start:
        source_.fail(tokens[0], "a data line before the first section");
      case Section::name:
        source_.fail(tokens[0], "a data line in the NAME section");
      case Section::objsense:
        if (senseGiven_) source_.fail(tokens[0], "the objective sense is given already");
        if (count > 1) source_.fail(tokens[1], "extra field after the objective sense");
        objectiveSense(tokens[0], count);
        return;
      case Section::objname:
        if (!objectiveRowWanted_.empty()) source_.fail(tokens[0], "the objective is named already");
        objectiveName(tokens[0], count);
        return;
      case Section::rows:
      case Section::columns:
      case Section::rhs:
      case Section::ranges:
      case Section::bounds:
        record(line, tokens, count);
        return;
      case Section::end:
        return;
    }
  }

  // Reads the line as free MPS; when that fails, as fixed MPS (a name with blanks); when both
  // fail, reports the free reading's problem.
  void record(std::string_view line, std::array<std::string_view, detail::kMaxTokens>& tokens,
              std::size_t count) {
    MpsRecord fields{};
    Problem freeProblem;
    if (freeFields(tokens, count, fields, freeProblem)) {
      Problem p = interpret(fields, line);
      if (p.message.empty()) {
        apply(fields, line);
        return;
      }
      freeProblem = std::move(p);
    }
    MpsRecord fixed{};
    if (detail::splitFixedFields(line, fixed) && interpret(fixed, line).message.empty()) {
      apply(fixed, line);
      return;
    }
    source_.fail(freeProblem.at, freeProblem.message);
  }

  // Where the free tokens of a line go among the six fields of the section's record.
  bool freeFields(std::array<std::string_view, detail::kMaxTokens>& tokens, std::size_t count,
                  MpsRecord& f, Problem& problem) {
    auto fits = [&](std::size_t n) {
      switch (section_) {
        case Section::rows:
          return n == 2;
        case Section::columns:
          return n == 3 || n == 5;
        case Section::rhs:
        case Section::ranges:
          return n >= 2 && n <= 5;
        case Section::bounds:
          return n >= 2 && n <= 4;
        default:
          return false;
      }
    };
    if (count > detail::kMaxTokens) count = detail::kMaxTokens;
    if (!fits(count)) {
      // A trailing token that begins with '*' is a comment.
      for (std::size_t k = 1; k < count; ++k) {
        if (tokens[k].front() == '*' && fits(k)) {
          count = k;
          break;
        }
      }
    }
    if (!fits(count)) {
      problem.at = count > 0 ? tokens[count > 1 ? count - 1 : 0] : std::string_view();
      problem.message = count == 0 ? "empty record" : "wrong number of fields for this section";
      return false;
    }
    switch (section_) {
      case Section::rows:
        f[0] = tokens[0];
        f[1] = tokens[1];
        break;
      case Section::columns:
        f[1] = tokens[0];
        f[2] = tokens[1];
        if (count == 3 && isMarkerWord(tokens[1])) {
          f[4] = tokens[2];
          break;
        }
        f[3] = tokens[2];
        if (count == 5) {
          f[4] = tokens[3];
          f[5] = tokens[4];
        }
        break;
      case Section::rhs:
      case Section::ranges: {
        // An even count leaves out the vector's name.
        const std::size_t skip = count % 2 == 0 ? 1 : 0;
        for (std::size_t k = 0; k < count; ++k) f[1 + skip + k] = tokens[k];
        break;
      }
      case Section::bounds:
        f[0] = tokens[0];
        if (count == 4) {
          f[1] = tokens[1];
          f[2] = tokens[2];
          f[3] = tokens[3];
        } else if (count == 2) {
          f[2] = tokens[1];
        } else if (boundTakesValue(tokens[0]) || tokens[0].size() != 2) {
          f[2] = tokens[1];
          f[3] = tokens[2];
        } else {
          // FR/MI/PL/BV with three fields: the vector's name and the column, unless only the
          // first names a column.
          if (model_.findColumn(tokens[1]) && !model_.findColumn(tokens[2])) {
            f[2] = tokens[1];
            f[3] = tokens[2];
          } else {
            f[1] = tokens[1];
            f[2] = tokens[2];
          }
        }
        break;
      default:
        break;
    }
    return true;
  }

  static bool isMarkerWord(std::string_view text) {
    return text == "'MARKER'" || equalsIgnoringCase(text, "MARKER");
  }

  static bool boundTakesValue(std::string_view type) {
    return equalsIgnoringCase(type, "UP") || equalsIgnoringCase(type, "LO") ||
           equalsIgnoringCase(type, "FX") || equalsIgnoringCase(type, "LI") ||
           equalsIgnoringCase(type, "UI") || equalsIgnoringCase(type, "SC") ||
           equalsIgnoringCase(type, "SI");
  }

  // --- Checking a record (no change to the model) ---

  Problem interpret(const MpsRecord& f, std::string_view line) {
    (void)line;
    switch (section_) {
      case Section::rows:
        return checkRow(f);
      case Section::columns:
        return checkColumnEntry(f);
      case Section::rhs:
      case Section::ranges:
        return checkPairs(f, 2);
      case Section::bounds:
        return checkBound(f);
      default:
        return {};
    }
  }

  Problem checkRow(const MpsRecord& f) {
    const std::string_view type = f[0];
    if (f[1].empty()) return {type, "a row needs a name"};
    if (!(equalsIgnoringCase(type, "N") || equalsIgnoringCase(type, "E") ||
          equalsIgnoringCase(type, "L") || equalsIgnoringCase(type, "G"))) {
      return {type, "unknown row type " + quoted(type) + " (expected N, E, L or G)"};
    }
    if (!f[2].empty() || !f[3].empty() || !f[4].empty() || !f[5].empty()) {
      return {f[2].empty() ? f[3] : f[2], "extra field in a row definition"};
    }
    if (findRow(f[1])) return {f[1], "row " + quoted(f[1]) + " is defined twice"};
    return {};
  }

  Problem checkColumnEntry(const MpsRecord& f) {
    if (!f[0].empty()) return {f[0], "a column entry has no type field"};
    if (f[1].empty()) return {f[2], "a column entry needs the column's name"};
    if (isMarkerWord(f[2])) {
      const std::string_view kind = f[3].empty() ? f[4] : f[3];
      if (kind == "'INTORG'" || kind == "'INTEND'" || equalsIgnoringCase(kind, "INTORG") ||
          equalsIgnoringCase(kind, "INTEND")) {
        return {};
      }
      return {kind, "expected 'INTORG' or 'INTEND' after 'MARKER'"};
    }
    return checkEntries(f, false);
  }

  Problem checkPairs(const MpsRecord& f, int) {
    if (!f[0].empty()) return {f[0], "this section has no type field"};
    return checkEntries(f, true);
  }

  // The one or two (row, number) pairs in fields 2-3 and 4-5.
  Problem checkEntries(const MpsRecord& f, bool infinityAllowed) {
    for (int k : {2, 4}) {
      if (f[k].empty() && f[k + 1].empty() && k == 4) break;
      if (f[k].empty()) return {f[k + 1], "the entry needs a row name"};
      const std::optional<RowRef> row = findRow(f[k]);
      if (!row) return {f[k], "unknown row " + quoted(f[k])};
      resolvedRows_[k / 2 - 1] = *row;
      Problem p = checkNumber(f[k + 1], f[k], infinityAllowed, resolvedValues_[k / 2 - 1]);
      if (!p.message.empty()) return p;
    }
    return {};
  }

  Problem checkBound(const MpsRecord& f) {
    const std::string_view type = f[0];
    if (equalsIgnoringCase(type, "SC") || equalsIgnoringCase(type, "SI")) {
      return {type, "semi-continuous bounds (" + std::string(type) + ") are not supported"};
    }
    const bool valued = boundTakesValue(type);
    const bool plain = equalsIgnoringCase(type, "FR") || equalsIgnoringCase(type, "MI") ||
                       equalsIgnoringCase(type, "PL") || equalsIgnoringCase(type, "BV");
    if (!valued && !plain) {
      return {type, "unknown bound type " + quoted(type) +
                        " (expected UP, LO, FX, FR, MI, PL, BV, LI or UI)"};
    }
    if (f[2].empty()) return {type, "a bound needs a column name"};
    if (!model_.findColumn(f[2])) return {f[2], "unknown column " + quoted(f[2])};
    if (!f[4].empty() || !f[5].empty()) return {f[4].empty() ? f[5] : f[4], "extra field"};
    if (valued) return checkNumber(f[3], f[2], true, resolvedValues_[0]);
    if (!f[3].empty()) {
      Coefficient ignored;
      if (parseExactNumber(f[3], ignored) != NumberError::none) {
        bool positive = true;
        if (!isInfinityText(f[3], positive)) return {f[3], "not a number"};
      }
    }
    return {};
  }

  Problem checkNumber(std::string_view text, std::string_view before, bool infinityAllowed,
                      Coefficient& value) {
    if (text.empty()) return {before, "a number is missing after " + quoted(before)};
    const NumberError e = parseExactNumber(text, value);
    if (e == NumberError::none) return {};
    if (e == NumberError::infinity && infinityAllowed) {
      bool positive = true;
      isInfinityText(text, positive);
      value = positive ? Coefficient::infinity() : Coefficient::minusInfinity();
      return {};
    }
    return {text, describe(e)};
  }

  // --- Applying a checked record ---

  void apply(const MpsRecord& f, std::string_view line) {
    (void)line;
    switch (section_) {
      case Section::rows:
        addRow(f);
        break;
      case Section::columns:
        columnEntry(f);
        break;
      case Section::rhs:
        rhsEntry(f);
        break;
      case Section::ranges:
        rangeEntry(f);
        break;
      case Section::bounds:
        boundEntry(f);
        break;
      default:
        break;
    }
  }

  std::optional<RowRef> findRow(std::string_view name) const {
    if (objectiveFound_ && name == model_.objectiveName()) {
      return RowRef{RowKind::objective, 0};
    }
    if (const auto i = model_.findRow(name)) return RowRef{RowKind::constraint, *i};
    if (droppedObjectives_.count(std::string(name)) != 0) {
      return RowRef{RowKind::droppedObjective, 0};
    }
    return std::nullopt;
  }

  void addRow(const MpsRecord& f) {
    const char type = static_cast<char>(f[0][0] & ~0x20);
    const std::string_view name = f[1];
    if (type == 'N') {
      const bool wanted =
          objectiveRowWanted_.empty() ? !objectiveFound_ : name == objectiveRowWanted_;
      if (wanted) {
        model_.setObjectiveName(name);
        objectiveFound_ = true;
      } else {
        droppedObjectives_.emplace(name);
        note(f[1], objectiveFound_ || objectiveRowWanted_.empty()
                       ? "free row " + quoted(name) +
                             " is not the objective: it and its entries are dropped"
                       : "free row " + quoted(name) +
                             " is not the row OBJNAME names: it and "
                             "its entries are dropped");
      }
      return;
    }
    const Coefficient& zero = Coefficient();
    Coefficient lower = type == 'L' ? Coefficient::minusInfinity() : zero;
    Coefficient upper = type == 'G' ? Coefficient::infinity() : zero;
    const Model::Index i = model_.addRow(name, {}, std::move(lower), std::move(upper));
    model_.setRowLine(i, source_.lineNumber());
    rowTypes_.push_back(type);
  }

  // A right-hand side, range or bound value: magnitudes of 1e30 and beyond stand for infinity.
  Coefficient sideValue(Coefficient value, std::string_view text, std::string_view what) {
    if (detail::isLargeAsInfinity(value)) {
      const bool positive = approximate(value) > 0;
      note(text, std::string(what) + " " + std::string(text) +
                     " is 1e30 or more in magnitude and is read as " +
                     (positive ? "+infinity" : "-infinity"));
      return positive ? Coefficient::infinity() : Coefficient::minusInfinity();
    }
    return value;
  }

  void columnEntry(const MpsRecord& f) {
    if (isMarkerWord(f[2])) {
      const std::string_view kind = f[3].empty() ? f[4] : f[3];
      const bool begins = kind == "'INTORG'" || equalsIgnoringCase(kind, "INTORG");
      if (begins == inMarker_) {
        source_.fail(kind, begins ? "an INTORG marker inside an integer block (begun at line " +
                                        std::to_string(markerLine_) + ")"
                                  : "an INTEND marker without INTORG");
      }
      inMarker_ = begins;
      if (begins) {
        markerLine_ = source_.lineNumber();
        note(kind,
             "integer columns up to INTEND with no bound in BOUNDS get the bounds 0 and 1; a "
             "bound in BOUNDS leaves the other side at its usual default (0, +infinity)");
      }
      return;
    }
    const std::string_view name = f[1];
    if (!haveColumn_ || name != model_.columnName(column_)) {
      if (model_.findColumn(name)) {
        source_.fail(name, "the entries of column " + quoted(name) +
                               " must be contiguous (it appeared before)");
      }
      column_ = model_.addColumn(name);
      haveColumn_ = true;
      columnFlags_.push_back(inMarker_ ? kMarkerInteger : 0);
      if (inMarker_) model_.setInteger(column_, true);
    }
    for (int k : {2, 4}) {
      if (f[k].empty()) break;
      const RowRef row = resolvedRows_[k / 2 - 1];
      Coefficient value = std::move(resolvedValues_[k / 2 - 1]);
      switch (row.kind) {
        case RowKind::objective:
          if (objectiveSet_.size() <= column_) objectiveSet_.resize(column_ + 1, false);
          if (objectiveSet_[column_]) {
            source_.fail(f[k],
                         "column " + quoted(name) + " has a second entry in row " + quoted(f[k]));
          }
          objectiveSet_[column_] = true;
          model_.setObjective(column_, std::move(value));
          break;
        case RowKind::droppedObjective:
          break;
        case RowKind::constraint:
          if (lastColumnOfRow_.size() < model_.rowCount()) {
            lastColumnOfRow_.resize(model_.rowCount(), 0);
          }
          if (lastColumnOfRow_[row.index] == column_ + 1) {
            source_.fail(f[k],
                         "column " + quoted(name) + " has a second entry in row " + quoted(f[k]));
          }
          lastColumnOfRow_[row.index] = column_ + 1;
          if (!value.isZero()) model_.appendColumnEntry(row.index, column_, std::move(value));
          break;
      }
    }
  }

  // The first vector of a section is read; entries of another vector are left out with a note.
  bool firstVector(std::string_view name, std::string& first, bool& seen) {
    if (!seen) {
      first = std::string(name);
      seen = true;
      return true;
    }
    if (name == first) return true;
    note(name.empty() ? source_.currentLine() : name, "only the first vector (" + quoted(first) +
                                                          ") is read: this entry of " +
                                                          quoted(name) + " is left out");
    return false;
  }

  void rhsEntry(const MpsRecord& f) {
    if (!firstVector(f[1], rhsName_, rhsSeen_)) return;
    for (int k : {2, 4}) {
      if (f[k].empty()) break;
      const RowRef row = resolvedRows_[k / 2 - 1];
      Coefficient& parsed = resolvedValues_[k / 2 - 1];
      if (row.kind == RowKind::droppedObjective) {
        note(f[k], "the right-hand side of dropped free row " + quoted(f[k]) + " is left out");
        continue;
      }
      if (row.kind == RowKind::objective) {
        if (objectiveRhsSet_) source_.fail(f[k], "a second right-hand side for " + quoted(f[k]));
        objectiveRhsSet_ = true;
        Coefficient value = std::move(parsed);
        if (!value.isInline() && value.big().isInf) {
          source_.fail(f[k + 1], "an infinite objective constant");
        }
        value.negate();
        note(f[k + 1], "the right-hand side of objective row " + quoted(f[k]) +
                           " is read as the objective constant " + exactText(value) +
                           " (its negation)");
        model_.setObjectiveConstant(std::move(value));
        continue;
      }
      markOnce(rhsSet_, row.index, f[k], "right-hand side");
      Coefficient value = sideValue(std::move(parsed), f[k + 1], "right-hand side");
      switch (rowTypes_[row.index]) {
        case 'E':
          model_.setRowLower(row.index, value);
          model_.setRowUpper(row.index, std::move(value));
          break;
        case 'L':
          model_.setRowUpper(row.index, std::move(value));
          break;
        default:
          model_.setRowLower(row.index, std::move(value));
          break;
      }
    }
  }

  void markOnce(std::vector<bool>& set, Model::Index i, std::string_view at, const char* what) {
    if (set.size() <= i) set.resize(model_.rowCount(), false);
    if (set[i]) source_.fail(at, std::string("a second ") + what + " for row " + quoted(at));
    set[i] = true;
  }

  void rangeEntry(const MpsRecord& f) {
    if (!firstVector(f[1], rangeName_, rangeSeen_)) return;
    for (int k : {2, 4}) {
      if (f[k].empty()) break;
      const RowRef row = resolvedRows_[k / 2 - 1];
      if (row.kind != RowKind::constraint) {
        note(f[k], "a range on free row " + quoted(f[k]) + " has no meaning and is left out");
        continue;
      }
      markOnce(rangeSet_, row.index, f[k], "range");
      ranges_.emplace_back(row.index,
                           sideValue(std::move(resolvedValues_[k / 2 - 1]), f[k + 1], "range"));
    }
  }

  void boundEntry(const MpsRecord& f) {
    if (!firstVector(f[1], boundName_, boundSeen_)) return;
    const std::string_view type = f[0];
    const Model::Index j = *model_.findColumn(f[2]);
    const char a = static_cast<char>(type[0] & ~0x20);
    const char b = static_cast<char>(type[1] & ~0x20);
    unsigned char& flags = columnFlags_[j];
    auto setLower = [&](Coefficient v) {
      if (flags & kLowerNamed) {
        note(type, "the lower bound of " + quoted(f[2]) + " is given again: the later bound holds");
      }
      flags |= kLowerNamed;
      model_.setColumnLower(j, std::move(v));
    };
    auto setUpper = [&](Coefficient v) {
      if (flags & kUpperNamed) {
        note(type, "the upper bound of " + quoted(f[2]) + " is given again: the later bound holds");
      }
      flags |= kUpperNamed;
      model_.setColumnUpper(j, std::move(v));
    };
    // A negative upper bound on a column with no lower bound yet makes the lower -infinity.
    auto negativeUpper = [&](const Coefficient& v) {
      if ((flags & kLowerNamed) == 0 && approximate(v) < 0) {
        note(f[3], "negative upper bound on " + quoted(f[2]) +
                       " with no lower bound given: the lower bound becomes -infinity");
        model_.setColumnLower(j, Coefficient::minusInfinity());
      }
    };
    if (a == 'S') {
      source_.fail(type, "semi-continuous bounds (" + std::string(type) + ") are not supported");
    }
    if (a == 'U' && b == 'P') {
      Coefficient v = sideValue(std::move(resolvedValues_[0]), f[3], "upper bound");
      negativeUpper(v);
      setUpper(std::move(v));
    } else if (a == 'L' && b == 'O') {
      markerLowerOnly(j, f[2], type);
      setLower(sideValue(std::move(resolvedValues_[0]), f[3], "lower bound"));
    } else if (a == 'F' && b == 'X') {
      Coefficient v = sideValue(std::move(resolvedValues_[0]), f[3], "fixed value");
      setLower(v);
      setUpper(std::move(v));
    } else if (a == 'F' && b == 'R') {
      setLower(Coefficient::minusInfinity());
      setUpper(Coefficient::infinity());
    } else if (a == 'M' && b == 'I') {
      markerLowerOnly(j, f[2], type);
      setLower(Coefficient::minusInfinity());
    } else if (a == 'P' && b == 'L') {
      setUpper(Coefficient::infinity());
    } else if (a == 'B' && b == 'V') {
      model_.setInteger(j, true);
      setLower(Coefficient());
      setUpper(Coefficient(1));
    } else if (a == 'L' && b == 'I') {
      model_.setInteger(j, true);
      markerLowerOnly(j, f[2], type);
      setLower(sideValue(std::move(resolvedValues_[0]), f[3], "lower bound"));
    } else if (a == 'U' && b == 'I') {
      model_.setInteger(j, true);
      Coefficient v = sideValue(std::move(resolvedValues_[0]), f[3], "upper bound");
      negativeUpper(v);
      setUpper(std::move(v));
    }
  }

  // A lower bound alone on a marker integer column: its upper bound stays +infinity, not 1.
  void markerLowerOnly(Model::Index j, std::string_view name, std::string_view at) {
    const unsigned char flags = columnFlags_[j];
    if ((flags & kMarkerInteger) && (flags & (kLowerNamed | kUpperNamed)) == 0) {
      note(at, "marker integer column " + quoted(name) +
                   " has a bound in BOUNDS: its upper bound is +infinity unless BOUNDS gives one");
    }
  }

  // Rows with a range: the sign table of the format, from the right-hand side b and range R.
  void finishRows() {
    for (auto& [i, r] : ranges_) {
      const char type = rowTypes_[i];
      const Coefficient b = type == 'L' ? model_.rowUpper(i) : model_.rowLower(i);
      const Coefficient magnitude = approximate(r) < 0 ? negated(r) : r;
      const bool bInfinite = !b.isInline() && b.big().isInf;
      if (bInfinite) continue;
      if (type == 'G' || (type == 'E' && approximate(r) > 0)) {
        model_.setRowUpper(i, add(b, magnitude));
      } else if (type == 'L' || (type == 'E' && approximate(r) < 0)) {
        model_.setRowLower(i, subtract(b, magnitude));
      }
    }
  }

  static Coefficient negated(Coefficient c) {
    c.negate();
    return c;
  }

  // Marker integer columns that BOUNDS never names: 0 and 1.
  void finishColumnBounds() {
    for (Model::Index j = 0; j < columnFlags_.size(); ++j) {
      const unsigned char flags = columnFlags_[j];
      if ((flags & kMarkerInteger) && (flags & (kLowerNamed | kUpperNamed)) == 0) {
        model_.setColumnUpper(j, Coefficient(1));
      }
    }
  }

  LineSource& source_;
  DiagnosticSink& sink_;
  Model model_;
  Section section_ = Section::start;
  std::array<bool, 10> seen_{};
  bool columnsDone_ = false;
  bool senseGiven_ = false;
  std::string objectiveRowWanted_;
  bool objectiveFound_ = false;
  std::unordered_set<std::string> droppedObjectives_;
  std::vector<char> rowTypes_;

  bool haveColumn_ = false;
  Model::Index column_ = 0;
  std::vector<unsigned char> columnFlags_;
  std::vector<Model::Index> lastColumnOfRow_;  // column + 1 of a row's latest entry
  std::vector<bool> objectiveSet_;
  bool inMarker_ = false;
  long markerLine_ = 0;

  std::string rhsName_, rangeName_, boundName_;
  bool rhsSeen_ = false, rangeSeen_ = false, boundSeen_ = false;
  bool objectiveRhsSet_ = false;
  std::vector<bool> rhsSet_, rangeSet_;
  std::vector<std::pair<Model::Index, Coefficient>> ranges_;
  // What the last successful check found: the rows and values of a record's two entries.
  std::array<RowRef, 2> resolvedRows_{};
  std::array<Coefficient, 2> resolvedValues_;
};

}  // namespace

Model readMps(LineSource& source, DiagnosticSink& sink) {
  MpsReader reader(source, sink);
  return reader.read();
}

}  // namespace lpconv
