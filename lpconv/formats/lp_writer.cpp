#include <lpconv/formats/formats.h>

#include <ostream>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/lp_syntax.h>

namespace lpconv {

namespace {

// Lines are broken before they grow past this many bytes (other readers stop at 255 or 560).
constexpr std::size_t kLineTarget = 100;
constexpr std::size_t kMaxNameLength = 255;

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }
bool isNegative(const Coefficient& c) {
  return c.isInline() ? c.numerator() < 0 : !c.big().isPositive && !c.big().isZero();
}
bool isOne(const Coefficient& c) {
  return c.isInline() && c.numerator() == 1 && c.denominator() == 1;
}

// Row and objective names are always followed by a colon, so keywords are safe there; a column
// name may start a line (in the integer section) where a keyword would be read as one.
bool isSafeName(std::string_view name, bool keywordsAllowed) {
  if (name.empty() || name.size() > kMaxNameLength) return false;
  if (!detail::isLpNameStart(static_cast<unsigned char>(name[0]))) return false;
  for (char c : name) {
    if (!detail::isLpNameChar(static_cast<unsigned char>(c))) return false;
  }
  return keywordsAllowed || !detail::isReservedLpWord(name);
}

// The names as the file writes them: a name the format cannot carry (empty, too long, a
// character outside the name characters, a leading digit or point, a keyword) becomes a safe
// one: every other character replaced by '_', '_' in front where it would not start a name, and
// '#' with a number where that name is taken.
class NameWriter {
 public:
  explicit NameWriter(bool keywordsAllowed) : keywordsAllowed_(keywordsAllowed) {}
  template <typename Exists>
  std::string_view operator()(std::string_view name, Exists exists) {
    if (isSafeName(name, keywordsAllowed_)) return name;
    std::string safe = "_";
    for (char c : name.substr(0, kMaxNameLength - 16)) {
      safe += detail::isLpNameChar(static_cast<unsigned char>(c)) ? c : '_';
    }
    if (safe.size() > 1 && detail::isLpNameStart(static_cast<unsigned char>(safe[1])) &&
        (keywordsAllowed_ || !detail::isReservedLpWord(std::string_view(safe).substr(1)))) {
      safe.erase(0, 1);
    }
    std::string candidate = safe;
    for (int k = 1; exists(candidate) || used_.count(candidate) != 0; ++k) {
      candidate = safe + "#" + std::to_string(k);
    }
    return *used_.insert(std::move(candidate)).first;
  }

 private:
  bool keywordsAllowed_;
  std::unordered_set<std::string> used_;
};

class LpWriter {
 public:
  LpWriter(const Model& model, std::ostream& os) : model_(model), os_(os) {}
  void write();

 private:
  void writeObjective();
  void writeRows();
  void writeBounds();
  void writeGenerals();

  void piece(std::string_view text);
  // " + 3 x", " - x", or without the plus sign as the first term.
  void term(const Coefficient& value, Model::Index column, bool first, bool signAtLineEnd);
  void value(const Coefficient& v);
  void flush();
  bool columnsAppearInOrder() const;

  const Model& model_;
  std::ostream& os_;
  std::string line_;
  std::string text_;
  NameWriter rowNames_{true};
  std::vector<std::string> columnNames_;
};

void LpWriter::flush() {
  if (line_.empty()) return;
  line_ += '\n';
  os_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
  line_.clear();
}

void LpWriter::piece(std::string_view text) {
  if (line_.size() + text.size() > kLineTarget && line_.size() > 1) flush();
  if (line_.empty() || (line_.back() != ' ' && text.front() != ' ')) line_ += ' ';
  line_ += text;
}

void LpWriter::value(const Coefficient& v) {
  text_.clear();
  appendExactText(text_, v);
}

void LpWriter::term(const Coefficient& v, Model::Index column, bool first, bool signAtLineEnd) {
  const bool negative = isNegative(v);
  std::string unit;
  if (!first || negative) unit += negative ? "- " : "+ ";
  Coefficient magnitude = v;
  if (negative) magnitude.negate();
  if (!isOne(magnitude)) {
    value(magnitude);
    unit += text_;
    unit += ' ';
  }
  if (signAtLineEnd && !unit.empty() && (unit[0] == '+' || unit[0] == '-') &&
      line_.size() + unit.size() + columnNames_[column].size() > kLineTarget) {
    // Ranged rows break after the sign: the reader continues such a row only over a dangling
    // operator.
    line_ += ' ';
    line_ += unit[0];
    flush();
    unit.erase(0, 2);
  }
  unit += columnNames_[column];
  piece(unit);
}

// Whether the reader, numbering columns by first appearance, gets them back in the model's
// order from the objective, rows, bounds and integer sections as written.
bool LpWriter::columnsAppearInOrder() const {
  const Model::Index n = model_.columnCount();
  std::vector<bool> seen(n, false);
  Model::Index next = 0;
  auto visit = [&](Model::Index j) {
    if (seen[j]) return true;
    seen[j] = true;
    return j == next++;
  };
  for (Model::Index j = 0; j < n; ++j) {
    if (!model_.objective(j).isZero() && !visit(j)) return false;
  }
  for (Model::Index i = 0; i < model_.rowCount(); ++i) {
    const RowView row = model_.row(i);
    for (std::size_t k = 0; k < row.size(); ++k) {
      if (!visit(row.column(k))) return false;
    }
  }
  // The Bounds section names the columns with other than the default bounds, the Generals
  // section the integer ones; a column named nowhere would not come back at all.
  for (Model::Index j = 0; j < n; ++j) {
    const bool defaultBounds = model_.columnLower(j).isZero() && isInfinite(model_.columnUpper(j));
    if (!defaultBounds && !visit(j)) return false;
  }
  for (Model::Index j = 0; j < n; ++j) {
    if (model_.isInteger(j) && !visit(j)) return false;
  }
  for (Model::Index j = 0; j < n; ++j) {
    if (!seen[j]) return false;
  }
  return true;
}

void LpWriter::writeObjective() {
  os_ << (model_.sense() == ObjectiveSense::maximize ? "Maximize\n" : "Minimize\n");
  NameWriter objectiveName(true);
  if (!model_.objectiveName().empty()) {
    piece(std::string(
              objectiveName(model_.objectiveName(), [](const std::string&) { return false; })) +
          ":");
  }
  const bool everyColumn = !columnsAppearInOrder();
  bool first = true;
  for (Model::Index j = 0; j < model_.columnCount(); ++j) {
    const Coefficient& c = model_.objective(j);
    if (c.isZero() && !everyColumn) continue;
    if (c.isZero()) {
      piece(first ? "0 " + columnNames_[j] : "+ 0 " + columnNames_[j]);
    } else {
      term(c, j, first, false);
    }
    first = false;
  }
  const Coefficient& constant = model_.objectiveConstant();
  if (!constant.isZero()) {
    Coefficient magnitude = constant;
    const bool negative = isNegative(constant);
    if (negative) magnitude.negate();
    value(magnitude);
    piece((negative ? "- " : "+ ") + text_);
  }
  flush();
}

void LpWriter::writeRows() {
  os_ << "Subject To\n";
  for (Model::Index i = 0; i < model_.rowCount(); ++i) {
    const std::string_view name = rowNames_(
        model_.rowName(i), [&](const std::string& s) { return model_.findRow(s).has_value(); });
    const Coefficient& lower = model_.rowLower(i);
    const Coefficient& upper = model_.rowUpper(i);
    const RowView row = model_.row(i);
    const bool ranged = !isInfinite(lower) && !isInfinite(upper) && !identical(lower, upper);
    line_ = " ";
    line_ += name;
    line_ += ':';
    if (ranged) {
      value(lower);
      piece(" " + text_ + " <=");
      if (row.empty()) {
        if (model_.columnCount() == 0) {
          throw std::invalid_argument(
              "an LP file cannot hold a ranged row in a model without columns");
        }
        piece(" 0 " + columnNames_[0]);
      }
      for (std::size_t k = 0; k < row.size(); ++k) term(row.value(k), row.column(k), k == 0, true);
      value(upper);
      piece(" <= " + text_);
    } else {
      for (std::size_t k = 0; k < row.size(); ++k) term(row.value(k), row.column(k), k == 0, false);
      if (isInfinite(lower) && isInfinite(upper)) {
        piece(" >= -inf");
      } else if (isInfinite(upper)) {
        value(lower);
        piece(" >= " + text_);
      } else {
        value(upper);
        piece((isInfinite(lower) ? " <= " : " = ") + text_);
      }
    }
    flush();
  }
}

void LpWriter::writeBounds() {
  bool header = false;
  for (Model::Index j = 0; j < model_.columnCount(); ++j) {
    const Coefficient& lower = model_.columnLower(j);
    const Coefficient& upper = model_.columnUpper(j);
    const bool defaultLower = lower.isZero();
    const bool noUpper = isInfinite(upper);
    if (defaultLower && noUpper) continue;
    if (!header) {
      os_ << "Bounds\n";
      header = true;
    }
    const std::string& name = columnNames_[j];
    std::string text = " ";
    if (!isInfinite(lower) && identical(lower, upper)) {
      value(lower);
      text += name + " = " + text_;
    } else if (isInfinite(lower) && noUpper) {
      text += name + " free";
    } else if (noUpper) {
      value(lower);
      text += name + " >= " + text_;
    } else if (defaultLower && !isNegative(upper)) {
      value(upper);
      text += name + " <= " + text_;
    } else {
      value(lower);
      text += text_ + " <= " + name + " <= ";
      value(upper);
      text += text_;
    }
    text += '\n';
    os_ << text;
  }
}

void LpWriter::writeGenerals() {
  bool header = false;
  for (Model::Index j = 0; j < model_.columnCount(); ++j) {
    if (!model_.isInteger(j)) continue;
    if (!header) {
      os_ << "Generals\n";
      header = true;
    }
    piece(columnNames_[j]);
  }
  flush();
}

void LpWriter::write() {
  NameWriter names(false);
  columnNames_.reserve(model_.columnCount());
  for (Model::Index j = 0; j < model_.columnCount(); ++j) {
    columnNames_.emplace_back(names(model_.columnName(j), [&](const std::string& s) {
      return model_.findColumn(s).has_value();
    }));
  }
  writeObjective();
  writeRows();
  writeBounds();
  writeGenerals();
  os_ << "End\n";
}

}  // namespace

void writeLp(const Model& model, std::ostream& os) {
  LpWriter writer(model, os);
  writer.write();
}

}  // namespace lpconv
