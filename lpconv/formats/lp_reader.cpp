#include <lpconv/formats/formats.h>

#include <string>
#include <vector>

#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/lp_lexer.h>
#include <lpconv/formats/lp_syntax.h>

namespace lpconv {

namespace {

using detail::LpKeyword;
using detail::LpLexer;
using detail::LpSection;
using detail::LpToken;
using detail::LpTokenKind;

enum class Relation { lessEqual, greaterEqual, equal };

Relation relationOf(LpTokenKind kind) {
  if (kind == LpTokenKind::lessEqual) return Relation::lessEqual;
  if (kind == LpTokenKind::greaterEqual) return Relation::greaterEqual;
  return Relation::equal;
}

Relation mirrored(Relation r) {
  if (r == Relation::lessEqual) return Relation::greaterEqual;
  if (r == Relation::greaterEqual) return Relation::lessEqual;
  return r;
}

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }

// Values of this magnitude and beyond stand for infinity in bounds and row sides.
const QQ& infinityThreshold() {
  static const QQ threshold(ZZ("1000000000000000000000000000000"));
  return threshold;
}

bool beyondThreshold(const Coefficient& c) {
  if (c.isInline() || c.big().isInf) return false;  // inline values stay below 2^62
  const QQ& q = c.big();
  return q.isPositive ? !(q < infinityThreshold()) : !(-q < infinityThreshold());
}

// What the bounds section has said about a column so far.
enum BoundFlags : std::uint8_t { kLowerStated = 1, kUpperStated = 2 };

class LpReader {
 public:
  LpReader(LineSource& source, DiagnosticSink& sink) : lex_(source), sink_(sink) {}
  Model read();

 private:
  // A keyword starts a section at the start of a line; where a statement has just ended (not in
  // the name lists of the integer sections) it may also stand in the middle of one.
  bool atSectionStart(const LpToken& t, bool midLine, const LpKeyword** keyword,
                      std::size_t* words);
  bool atStatementEnd(bool midLine = false);
  bool midLineAllowed() const {
    return section_ != LpSection::generals && section_ != LpSection::binaries;
  }
  bool namesSection();
  bool atLabel() {
    return lex_.peek().kind == LpTokenKind::name && lex_.peek(1).kind == LpTokenKind::colon;
  }

  void readObjectivePart();
  void readRow();
  void readBound();
  void readIntegerName(bool binary);

  // Reads terms until a relation, a label, a section keyword or the end; `lineBound` also stops
  // at a new line. Terms go to terms_ (negated when `negate`), constants into `constant`.
  // Returns whether any term or constant was read.
  bool readExpression(Coefficient& constant, bool lineBound);
  Coefficient readNumber(const LpToken& t);
  // A side of a row or a bound: signs, then a number or an infinity word.
  Coefficient readValue(const char* what, bool bound);
  Coefficient sideValue(Coefficient side, const LpToken& at);
  Model::Index columnOf(const LpToken& t);

  void setLower(Model::Index j, Coefficient value, const LpToken& at);
  void setUpper(Model::Index j, Coefficient value, const LpToken& at);
  void applyBound(Model::Index j, Relation r, Coefficient value, const LpToken& at);
  void note(const LpToken& at, std::string message) {
    sink_.report(lex_.diagnostic(Severity::note, at, std::move(message)));
  }
  std::uint8_t& flags(Model::Index j) {
    if (boundFlags_.size() <= j) boundFlags_.resize(j + 1, 0);
    return boundFlags_[j];
  }

  LpLexer lex_;
  DiagnosticSink& sink_;
  Model model_;
  LpSection section_ = LpSection::none;
  bool anySection_ = false;
  bool objectiveSeen_ = false;
  bool objectiveLabelAllowed_ = false;
  std::vector<ModelEntry> terms_;
  std::vector<ModelEntry> objectiveTerms_;
  Coefficient objectiveConstant_;
  std::string rowName_;
  std::vector<std::uint8_t> boundFlags_;
  std::vector<bool> generatedRowName_;
  struct PendingNote {
    Model::Index column;
    Diagnostic diagnostic;
  };
  std::vector<PendingNote> negativeUpper_;
};

// A keyword counts at the start of a line, unless a colon or a relation follows it (then it is
// the name of a row or of a bounded column).
bool LpReader::atSectionStart(const LpToken& t, bool midLine, const LpKeyword** keyword,
                              std::size_t* words) {
  if ((!t.firstOnLine && !midLine) || t.kind != LpTokenKind::name) return false;
  const LpKeyword* k = detail::findLpKeyword(t.text);
  if (k == nullptr) return false;
  std::size_t n = 1;
  if (!k->second.empty()) {
    const LpToken& second = lex_.peek(1);
    const bool follows = !second.firstOnLine && second.kind == LpTokenKind::name &&
                         detail::equalsLower(second.text, k->second);
    if (follows) {
      n = 2;
    } else if (!k->secondOptional) {
      return false;
    }
  }
  const LpToken& after = lex_.peek(n);
  if (!after.firstOnLine && (after.kind == LpTokenKind::colon || detail::isRelation(after.kind))) {
    return false;
  }
  *keyword = k;
  *words = n;
  return true;
}

bool LpReader::atStatementEnd(bool midLine) {
  const LpToken& t = lex_.peek();
  if (t.kind == LpTokenKind::end) return true;
  const LpKeyword* k = nullptr;
  std::size_t words = 0;
  return atSectionStart(t, midLine && midLineAllowed(), &k, &words);
}

bool LpReader::namesSection() {
  const LpKeyword* k = nullptr;
  std::size_t words = 0;
  if (!atSectionStart(lex_.peek(), midLineAllowed(), &k, &words)) return false;
  const LpToken keyword = lex_.take();
  if (words == 2) lex_.take();
  if (k->section == LpSection::unsupported) lex_.fail(keyword, k->unsupported);
  if (k->section == LpSection::objective) {
    if (objectiveSeen_)
      lex_.fail(keyword, "a second objective: multiple objectives are not supported");
    const LpToken& next = lex_.peek();
    if (!next.firstOnLine && next.kind == LpTokenKind::name &&
        detail::equalsLower(next.text, "multi")) {
      lex_.fail(next, "multiple objectives are not supported");
    }
    objectiveSeen_ = true;
    objectiveLabelAllowed_ = true;
    model_.setSense(k->sense);
  }
  section_ = k->section;
  anySection_ = true;
  return true;
}

Model LpReader::read() {
  for (;;) {
    const LpToken& t = lex_.peek();
    if (t.kind == LpTokenKind::end) break;
    if (namesSection()) {
      if (section_ == LpSection::end) {
        const LpToken& after = lex_.peek();
        if (after.kind != LpTokenKind::end) {
          sink_.report(lex_.diagnostic(Severity::warning, after, "text after End is ignored"));
        }
        break;
      }
      continue;
    }
    switch (section_) {
      case LpSection::none:
        lex_.fail(t, "expected a section keyword such as 'Minimize' or 'Maximize' before this");
      case LpSection::objective:
        readObjectivePart();
        break;
      case LpSection::constraints:
        readRow();
        break;
      case LpSection::bounds:
        readBound();
        break;
      case LpSection::generals:
        readIntegerName(false);
        break;
      case LpSection::binaries:
        readIntegerName(true);
        break;
      case LpSection::end:
      case LpSection::unsupported:
        break;
    }
  }
  if (!anySection_) {
    Diagnostic d;
    d.file = lex_.fileName();
    d.message = "no LP sections found (expected 'Minimize' or 'Maximize')";
    throw ParseError(std::move(d));
  }
  for (ModelEntry& e : objectiveTerms_) {
    model_.setObjective(e.index, add(model_.objective(e.index), e.value));
  }
  model_.setObjectiveConstant(std::move(objectiveConstant_));
  for (const PendingNote& p : negativeUpper_) {
    if ((flags(p.column) & kLowerStated) == 0) sink_.report(p.diagnostic);
  }
  return std::move(model_);
}

Coefficient LpReader::readNumber(const LpToken& t) {
  Coefficient value;
  const NumberError error = parseExactNumber(t.text, value);
  if (error != NumberError::none) lex_.fail(t, describe(error));
  return value;
}

Model::Index LpReader::columnOf(const LpToken& t) { return model_.findOrAddColumn(t.text); }

bool LpReader::readExpression(Coefficient& constant, bool lineBound) {
  bool first = true;
  for (;;) {
    if (atStatementEnd(!first)) break;
    const LpToken& t = lex_.peek();
    if (detail::isRelation(t.kind) || atLabel()) break;
    if (lineBound && t.firstOnLine && !first) break;
    bool negative = false;
    bool signed_ = false;
    while (lex_.peek().kind == LpTokenKind::plus || lex_.peek().kind == LpTokenKind::minus) {
      const LpToken sign = lex_.take();
      negative ^= sign.kind == LpTokenKind::minus;
      signed_ = true;
      if (atStatementEnd()) lex_.fail(sign, "a term is missing after this sign");
    }
    const LpToken& term = lex_.peek();
    if (!first && !signed_) lex_.fail(term, "expected '+' or '-' before this term");
    if (term.kind == LpTokenKind::number) {
      const LpToken numberToken = lex_.take();
      Coefficient value = readNumber(numberToken);
      if (negative) value.negate();
      const LpToken& next = lex_.peek();
      if (next.kind == LpTokenKind::name && !atLabel() && !atStatementEnd()) {
        if (detail::isInfinityWord(next.text) || detail::equalsLower(next.text, "nan")) {
          lex_.fail(next, "expected a column name after the coefficient");
        }
        terms_.push_back({columnOf(lex_.take()), std::move(value)});
      } else {
        constant = add(constant, value);
      }
    } else if (term.kind == LpTokenKind::name) {
      if (detail::isInfinityWord(term.text)) {
        lex_.fail(term, "an infinite value is allowed only as a bound or a side of a row");
      }
      if (detail::equalsLower(term.text, "nan")) {
        const LpToken& next = lex_.peek(1);
        if (!next.firstOnLine && next.kind == LpTokenKind::name) {
          lex_.fail(term, describe(NumberError::notANumber));
        }
      }
      const LpToken nameToken = lex_.take();
      terms_.push_back({columnOf(nameToken), Coefficient(negative ? -1L : 1L)});
    } else if (term.kind == LpTokenKind::bracket) {
      lex_.fail(term, "quadratic terms are not supported");
    } else if (term.kind == LpTokenKind::implies) {
      lex_.fail(term, "indicator constraints are not supported");
    } else if (term.kind == LpTokenKind::end) {
      lex_.fail(term, "the file ends inside an expression");
    } else {
      lex_.fail(term, "expected a term (a number or a column name)");
    }
    first = false;
  }
  return !first;
}

void LpReader::readObjectivePart() {
  if (objectiveLabelAllowed_ && atLabel()) {
    model_.setObjectiveName(lex_.take().text);
    lex_.take();
  }
  objectiveLabelAllowed_ = false;
  terms_.clear();
  const bool any = readExpression(objectiveConstant_, false);
  for (ModelEntry& e : terms_) objectiveTerms_.push_back(std::move(e));
  terms_.clear();
  if (atStatementEnd(any)) return;
  const LpToken& t = lex_.peek();
  if (atLabel()) lex_.fail(t, "a row label in the objective ('Subject To' missing?)");
  if (detail::isRelation(t.kind))
    lex_.fail(t, "a relation in the objective ('Subject To' missing?)");
  lex_.fail(t, "unexpected text in the objective");
}

Coefficient LpReader::readValue(const char* what, bool bound) {
  bool negative = false;
  while (lex_.peek().kind == LpTokenKind::plus || lex_.peek().kind == LpTokenKind::minus) {
    negative ^= lex_.take().kind == LpTokenKind::minus;
  }
  const LpToken& t = lex_.peek();
  if (t.kind == LpTokenKind::name && detail::isInfinityWord(t.text) && !atStatementEnd()) {
    lex_.take();
    return negative ? Coefficient::minusInfinity() : Coefficient::infinity();
  }
  if (t.kind != LpTokenKind::number || atStatementEnd())
    lex_.fail(t, std::string("expected ") + what);
  const LpToken numberToken = lex_.take();
  Coefficient value = readNumber(numberToken);
  if (negative) value.negate();
  if (beyondThreshold(value)) {
    note(numberToken, std::string("a value of magnitude 1e30 or more in a ") +
                          (bound ? "bound" : "row side") + " is read as infinity");
    return value.big().isPositive ? Coefficient::infinity() : Coefficient::minusInfinity();
  }
  return value;
}

// A side that constants moved across make 1e30 or more in magnitude follows the same rule as a
// side written so: it is read as infinity, so that the row reads the same once written back.
Coefficient LpReader::sideValue(Coefficient side, const LpToken& at) {
  if (isInfinite(side) || !beyondThreshold(side)) return side;
  note(at, "a row side of magnitude 1e30 or more is read as infinity");
  return side.big().isPositive ? Coefficient::infinity() : Coefficient::minusInfinity();
}

void LpReader::readRow() {
  const LpToken start = lex_.peek();
  bool named = false;
  if (atLabel()) {
    rowName_.assign(lex_.take().text);
    lex_.take();
    named = true;
    if (const auto i = model_.findRow(rowName_)) {
      lex_.fail(start, "row '" + rowName_ + "' is named twice (" +
                           (generatedRowName_[*i] ? "the name of the unnamed row at line "
                                                  : "first at line ") +
                           std::to_string(model_.rowLine(*i)) + ")");
    }
  }
  terms_.clear();
  Coefficient leftConstant;
  bool leftInfinite = false;
  // "-inf <= expression <= upper": an infinity word may open a ranged row.
  {
    const LpTokenKind opening = lex_.peek().kind;
    const std::size_t k = opening == LpTokenKind::plus || opening == LpTokenKind::minus ? 1 : 0;
    const LpToken& w = lex_.peek(k);
    if (w.kind == LpTokenKind::name && detail::isInfinityWord(w.text) &&
        detail::isRelation(lex_.peek(k + 1).kind)) {
      leftConstant = readValue("a value", false);
      leftInfinite = true;
    }
  }
  const bool leftAny = leftInfinite || readExpression(leftConstant, false);
  const bool leftVariables = !terms_.empty();
  const LpToken& relationToken = lex_.peek();
  if (!detail::isRelation(relationToken.kind)) {
    if (relationToken.kind == LpTokenKind::end) {
      lex_.fail(start, "the file ends inside this row: a relation (<=, >= or =) is missing");
    }
    lex_.fail(relationToken, "expected a relation (<=, >= or =)");
  }
  const Relation first = relationOf(lex_.take().kind);
  Coefficient lower = Coefficient::minusInfinity();
  Coefficient upper = Coefficient::infinity();
  const LpToken sideToken = lex_.peek();
  if (leftVariables || !leftAny) {
    Coefficient side = readValue("a number on the right side", false);
    if (detail::isRelation(lex_.peek().kind)) {
      lex_.fail(lex_.peek(),
                "a second relation: a ranged row is written 'lower <= expression <= upper'");
    }
    if (isInfinite(side) &&
        (first == Relation::equal || (first == Relation::lessEqual) != side.big().isPositive)) {
      lex_.fail(sideToken, "this infinite side leaves the row no value to take");
    }
    side = sideValue(subtract(side, leftConstant), sideToken);
    if (first != Relation::lessEqual) lower = side;
    if (first != Relation::greaterEqual) upper = std::move(side);
  } else {
    // A constant first: "lower <= expression", "upper >= expression", or a ranged row.
    Coefficient rightConstant;
    readExpression(rightConstant, true);
    if (terms_.empty()) lex_.fail(sideToken, "expected a column after the relation");
    const Relation r = mirrored(first);
    Coefficient side = sideValue(subtract(leftConstant, rightConstant), start);
    if (isInfinite(side) &&
        (r == Relation::equal || (r == Relation::lessEqual) != side.big().isPositive)) {
      lex_.fail(start, "this infinite side leaves the row no value to take");
    }
    if (r != Relation::lessEqual) lower = side;
    if (r != Relation::greaterEqual) upper = side;
    if (detail::isRelation(lex_.peek().kind)) {
      const LpToken secondToken = lex_.take();
      const Relation second = relationOf(secondToken.kind);
      if (first == Relation::equal || second != first) {
        lex_.fail(secondToken, "a ranged row needs two '<=' or two '>=' relations");
      }
      const LpToken valueToken = lex_.peek();
      Coefficient other = sideValue(
          subtract(readValue("a number after the relation", false), rightConstant), valueToken);
      if (isInfinite(other) && (first == Relation::lessEqual) != other.big().isPositive) {
        lex_.fail(valueToken, "this infinite side leaves the row no value to take");
      }
      if (first == Relation::lessEqual) {
        upper = std::move(other);
      } else {
        lower = std::move(other);
      }
    }
  }
  std::string generated;
  if (!named) {
    generated = "c" + std::to_string(model_.rowCount() + 1);
    for (int k = 2; model_.findRow(generated); ++k) {
      generated = "c" + std::to_string(model_.rowCount() + 1) + "#" + std::to_string(k);
    }
  }
  const Model::Index i =
      model_.addRow(named ? std::string_view(rowName_) : std::string_view(generated), terms_,
                    std::move(lower), std::move(upper));
  model_.setRowLine(i, start.line);
  generatedRowName_.push_back(!named);
}

void LpReader::setLower(Model::Index j, Coefficient value, const LpToken& at) {
  if (isInfinite(value) && value.big().isPositive) lex_.fail(at, "a lower bound cannot be +inf");
  if ((flags(j) & kLowerStated) != 0) {
    note(at, "the lower bound of '" + std::string(model_.columnName(j)) +
                 "' is stated again: the last one holds");
  }
  flags(j) |= kLowerStated;
  model_.setColumnLower(j, std::move(value));
}

void LpReader::setUpper(Model::Index j, Coefficient value, const LpToken& at) {
  if (isInfinite(value) && !value.big().isPositive) lex_.fail(at, "an upper bound cannot be -inf");
  if ((flags(j) & kUpperStated) != 0) {
    note(at, "the upper bound of '" + std::string(model_.columnName(j)) +
                 "' is stated again: the last one holds");
  }
  flags(j) |= kUpperStated;
  if ((flags(j) & kLowerStated) == 0 && !isInfinite(value) &&
      (value.isInline() ? value.numerator() < 0 : !value.big().isPositive)) {
    negativeUpper_.push_back(
        {j, lex_.diagnostic(Severity::note, at,
                            "the upper bound of '" + std::string(model_.columnName(j)) +
                                "' is negative and no lower bound is stated: the lower bound "
                                "stays 0, so the column has no feasible value")});
  }
  model_.setColumnUpper(j, std::move(value));
}

void LpReader::applyBound(Model::Index j, Relation r, Coefficient value, const LpToken& at) {
  if (r == Relation::equal) {
    if (isInfinite(value)) lex_.fail(at, "a column cannot be fixed at an infinite value");
    setLower(j, value, at);
    setUpper(j, std::move(value), at);
  } else if (r == Relation::greaterEqual) {
    setLower(j, std::move(value), at);
  } else {
    setUpper(j, std::move(value), at);
  }
}

void LpReader::readBound() {
  const LpToken start = lex_.peek();
  const bool valueFirst = start.kind == LpTokenKind::number || start.kind == LpTokenKind::plus ||
                          start.kind == LpTokenKind::minus ||
                          (start.kind == LpTokenKind::name && detail::isInfinityWord(start.text) &&
                           detail::isRelation(lex_.peek(1).kind));
  if (valueFirst) {
    Coefficient first = readValue("a bound", true);
    const LpToken firstRelation = lex_.peek();
    if (!detail::isRelation(firstRelation.kind)) lex_.fail(firstRelation, "expected a relation");
    lex_.take();
    const LpToken name = lex_.peek();
    if (name.kind != LpTokenKind::name || atStatementEnd()) {
      lex_.fail(name, "expected a column name");
    }
    const Model::Index j = columnOf(lex_.take());
    const Relation r1 = relationOf(firstRelation.kind);
    applyBound(j, mirrored(r1), std::move(first), start);
    if (detail::isRelation(lex_.peek().kind)) {
      const LpToken secondRelation = lex_.take();
      const Relation r2 = relationOf(secondRelation.kind);
      if (r1 == Relation::equal || r2 != r1) {
        lex_.fail(secondRelation, "a double bound needs two '<=' or two '>=' relations");
      }
      const LpToken valueToken = lex_.peek();
      applyBound(j, r2, readValue("a bound", true), valueToken);
    }
    return;
  }
  if (start.kind != LpTokenKind::name) lex_.fail(start, "expected a bound");
  const Model::Index j = columnOf(lex_.take());
  const LpToken& next = lex_.peek();
  if (next.kind == LpTokenKind::name && detail::equalsLower(next.text, "free") &&
      !atStatementEnd()) {
    const LpToken freeToken = lex_.take();
    setLower(j, Coefficient::minusInfinity(), freeToken);
    setUpper(j, Coefficient::infinity(), freeToken);
    return;
  }
  if (!detail::isRelation(next.kind))
    lex_.fail(next, "expected a relation or 'free' after the column");
  const Relation r = relationOf(lex_.take().kind);
  const LpToken valueToken = lex_.peek();
  applyBound(j, r, readValue("a bound", true), valueToken);
  if (detail::isRelation(lex_.peek().kind)) {
    lex_.fail(lex_.peek(), "a second relation: a double bound is written 'lower <= x <= upper'");
  }
}

void LpReader::readIntegerName(bool binary) {
  const LpToken t = lex_.peek();
  if (t.kind != LpTokenKind::name) lex_.fail(t, "expected a column name");
  const Model::Index j = columnOf(lex_.take());
  model_.setInteger(j, true);
  if (!binary) return;
  const std::uint8_t stated = flags(j);
  const bool lowerStated = (stated & kLowerStated) != 0;
  const bool upperStated = (stated & kUpperStated) != 0;
  if ((lowerStated && !model_.columnLower(j).isZero()) ||
      (upperStated && !identical(model_.columnUpper(j), Coefficient(1L)))) {
    note(t, "'" + std::string(model_.columnName(j)) +
                "' is binary but has a bound stated before: the stated bound holds");
  }
  if (!lowerStated) model_.setColumnLower(j, Coefficient());
  if (!upperStated) model_.setColumnUpper(j, Coefficient(1L));
}

}  // namespace

Model readLp(LineSource& source, DiagnosticSink& sink) {
  LpReader reader(source, sink);
  return reader.read();
}

}  // namespace lpconv
