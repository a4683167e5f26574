// Free MPS with exact values: one entry a line, so that even long p/q values keep lines short;
// names that free MPS cannot carry are replaced by generated ones.
#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/formats.h>
#include <lpconv/formats/mps_names.h>

#include <ostream>
#include <string>

namespace lpconv {

namespace {

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }
bool isNegative(const Coefficient& c) { return approximate(c) < 0; }

class MpsWriter {
 public:
  MpsWriter(const Model& model, std::ostream& os) : model_(model), os_(os), names_(model) {}

  void write() {
    os_ << "NAME\n";
    if (model_.sense() == ObjectiveSense::maximize) os_ << "OBJSENSE\n    MAX\n";
    writeRows();
    writeColumns();
    writeRhs();
    writeRanges();
    writeBounds();
    os_ << "ENDATA\n";
  }

 private:
  void line(std::string_view a, std::string_view b, std::string_view c) {
    text_.clear();
    text_ += "    ";
    text_ += a;
    text_ += ' ';
    text_ += b;
    text_ += ' ';
    text_ += c;
    text_ += '\n';
    os_ << text_;
  }

  void value(std::string_view a, std::string_view b, const Coefficient& v) {
    number_.clear();
    appendExactText(number_, v);
    line(a, b, number_);
  }

  void writeRows() {
    os_ << "ROWS\n";
    os_ << " N  " << names_.objective() << '\n';
    for (Model::Index i = 0; i < model_.rowCount(); ++i) {
      os_ << ' ' << rowType(i) << "  " << names_.row(i) << '\n';
    }
  }

  // E for equal sides, G for a finite lower side (with a range when the upper is finite too),
  // L for an upper side alone, N for a row with no finite side.
  char rowType(Model::Index i) const {
    const Coefficient& lower = model_.rowLower(i);
    const Coefficient& upper = model_.rowUpper(i);
    if (identical(lower, upper)) return 'E';
    if (!isInfinite(lower)) return 'G';
    if (!isInfinite(upper)) return 'L';
    return 'N';
  }

  void writeColumns() {
    // The matrix by column: the rows' entries transposed through a count per column.
    const Model::Index n = model_.columnCount();
    std::vector<std::size_t> start(static_cast<std::size_t>(n) + 1, 0);
    for (Model::Index i = 0; i < model_.rowCount(); ++i) {
      const RowView r = model_.row(i);
      for (std::size_t k = 0; k < r.size(); ++k) ++start[r.column(k) + 1];
    }
    for (Model::Index j = 0; j < n; ++j) start[j + 1] += start[j];
    struct Entry {
      Model::Index row;
      std::uint32_t position;  // in the row
    };
    std::vector<Entry> byColumn(model_.nonzeroCount());
    {
      std::vector<std::size_t> next(start.begin(), start.end() - 1);
      for (Model::Index i = 0; i < model_.rowCount(); ++i) {
        const RowView r = model_.row(i);
        for (std::size_t k = 0; k < r.size(); ++k) {
          byColumn[next[r.column(k)]++] = {i, static_cast<std::uint32_t>(k)};
        }
      }
    }
    os_ << "COLUMNS\n";
    bool inMarker = false;
    int markers = 0;
    for (Model::Index j = 0; j < n; ++j) {
      if (model_.isInteger(j) != inMarker) {
        inMarker = !inMarker;
        os_ << "    MARKER" << markers++ << " 'MARKER' "
            << (inMarker ? "'INTORG'\n" : "'INTEND'\n");
      }
      const std::string_view column = names_.column(j);
      bool any = false;
      if (!model_.objective(j).isZero()) {
        value(column, names_.objective(), model_.objective(j));
        any = true;
      }
      for (std::size_t k = start[j]; k < start[j + 1]; ++k) {
        const Entry e = byColumn[k];
        value(column, names_.row(e.row), model_.row(e.row).value(e.position));
        any = true;
      }
      // A column with no entry still needs a line to exist.
      if (!any) line(column, names_.objective(), "0");
    }
    if (inMarker) os_ << "    MARKER" << markers << " 'MARKER' 'INTEND'\n";
  }

  void writeRhs() {
    os_ << "RHS\n";
    if (!model_.objectiveConstant().isZero()) {
      // The objective row's right-hand side is the negated constant.
      Coefficient c = model_.objectiveConstant();
      c.negate();
      value("RHS", names_.objective(), c);
    }
    for (Model::Index i = 0; i < model_.rowCount(); ++i) {
      const char type = rowType(i);
      if (type == 'N') continue;
      const Coefficient& side = type == 'L' ? model_.rowUpper(i) : model_.rowLower(i);
      if (!side.isZero()) value("RHS", names_.row(i), side);
    }
  }

  void writeRanges() {
    bool header = false;
    for (Model::Index i = 0; i < model_.rowCount(); ++i) {
      if (rowType(i) != 'G' || isInfinite(model_.rowUpper(i))) continue;
      if (!header) os_ << "RANGES\n";
      header = true;
      value("RNG", names_.row(i), subtract(model_.rowUpper(i), model_.rowLower(i)));
    }
  }

  void bound(std::string_view type, Model::Index j) {
    os_ << ' ' << type << " BND " << names_.column(j) << '\n';
  }
  void bound(std::string_view type, Model::Index j, const Coefficient& v) {
    number_.clear();
    appendExactText(number_, v);
    os_ << ' ' << type << " BND " << names_.column(j) << ' ' << number_ << '\n';
  }

  // Integer columns always state both bounds (a marker column without any would read as 0..1);
  // a lower bound of 0 is stated before a negative upper one, which would otherwise free it.
  void writeBounds() {
    bool header = false;
    for (Model::Index j = 0; j < model_.columnCount(); ++j) {
      const Coefficient& lower = model_.columnLower(j);
      const Coefficient& upper = model_.columnUpper(j);
      const bool integer = model_.isInteger(j);
      const bool lowerDefault = lower.isZero() && !isNegative(upper) && !integer;
      const bool upperDefault = isInfinite(upper) && !isNegative(upper) && !integer;
      if (lowerDefault && upperDefault) continue;
      if (!header) os_ << "BOUNDS\n";
      header = true;
      if (identical(lower, upper) && !isInfinite(lower)) {
        bound("FX", j, lower);
        continue;
      }
      if (isInfinite(lower) && isNegative(lower) && isInfinite(upper) && !isNegative(upper)) {
        bound("FR", j);
        continue;
      }
      if (!lowerDefault) {
        if (isInfinite(lower) && isNegative(lower)) {
          bound("MI", j);
        } else {
          bound("LO", j, lower);
        }
      }
      if (!upperDefault) {
        if (isInfinite(upper) && !isNegative(upper)) {
          bound("PL", j);
        } else {
          bound("UP", j, upper);
        }
      }
    }
  }

  const Model& model_;
  std::ostream& os_;
  detail::MpsNames names_;
  std::string text_;
  std::string number_;
};

}  // namespace

void writeMps(const Model& model, std::ostream& os) {
  MpsWriter writer(model, os);
  writer.write();
}

}  // namespace lpconv
