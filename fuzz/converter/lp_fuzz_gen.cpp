// Writes one small random LP text to standard output, chosen by a seed:
//
//   lp_fuzz_gen <seed>
//
// The texts sit in and around the dialect lpconv reads. A seed picks one of four moods: tidy
// files that should convert; quirky files that lean on the odd corners of the dialect (sign runs,
// decimals that are read twice, labels, near-equal twins, carriage returns, section order);
// broken files, tidy but for one fault each (unbalanced rows, a missing section, indices 0 and
// n+1, a relation sign in the objective, a bound without a value, ...); and quirky files with a
// few random byte edits. The same seed always gives the same bytes. Files stay short: the slow
// oracle's regular expressions recurse once per character of the objective text.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed * 0x2545f4914f6cdd1dULL + 0x1234567ULL) {}
  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
  }
  int below(int bound) { return static_cast<int>(next() % static_cast<std::uint64_t>(bound)); }
  int between(int low, int high) { return low + below(high - low + 1); }
  // True with the given chance in percent.
  bool chance(int percent) { return below(100) < percent; }
  template <typename T>
  const T& pick(const std::vector<T>& items) {
    return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
  }

 private:
  std::uint64_t state_;
};

enum class Mood { kTidy, kQuirky, kBroken, kMutated };

enum class Fault {
  kEndWithoutSections,
  kUnbalanced,
  kBoundWithoutValue,
  kIndexZeroInRow,
  kIndexAboveN,
  kIndexZeroInObjective,
  kHugeIndex,
  kRelationInObjective,
  kLeadingRelation,
  kTwoRelations,
  kGarbageRow,
  kIndexlessGeneral,
  kNegativeBoundIndex,
  kNotANumber,
  kNoSubjectTo,
  kSpacedRelation,
  kCount
};

struct Term {
  long index;
  std::string coefficient;  // "" for an implicit one
  bool negative;
};

struct Generator {
  Random random;
  Mood mood;
  Fault fault = Fault::kCount;
  int n = 1;
  bool crlf = false;
  std::vector<std::string> lines;

  explicit Generator(std::uint64_t seed) : random(seed) {
    const int roll = random.below(100);
    mood = roll < 30   ? Mood::kTidy
           : roll < 60 ? Mood::kQuirky
           : roll < 85 ? Mood::kBroken
                       : Mood::kMutated;
    // Consecutive seeds walk through the faults, so any few hundred seeds meet each of them.
    if (mood == Mood::kBroken) fault = static_cast<Fault>(seed % static_cast<int>(Fault::kCount));
    n = random.between(1, 8);
    crlf = quirky() && random.chance(12);
  }

  // Broken files are tidy apart from their one fault, so that the fault is what they hit.
  bool quirky() const { return mood == Mood::kQuirky || mood == Mood::kMutated; }
  bool broken(Fault which) const { return mood == Mood::kBroken && fault == which; }

  long variable() {
    if (quirky() && random.chance(3)) return n + 1;  // named once: pass 1 counts it, so n grows
    return random.between(1, n);
  }

  std::string variableName(long index) {
    if (quirky()) {
      const int roll = random.below(100);
      if (roll < 4) return "X" + std::to_string(index);
      if (roll < 6) return "x0" + std::to_string(index);
      if (roll < 8) return "x " + std::to_string(index);  // not a variable to the first pass
      if (roll < 9) return "x+" + std::to_string(index);
    }
    return "x" + std::to_string(index);
  }

  std::string coefficientText() {
    static const std::vector<std::string> tidy = {"1", "2", "3", "4", "5", "7", "10", "12", "25"};
    static const std::vector<std::string> odd = {"0",
                                                 "2.5",
                                                 "0.1",
                                                 "0.5",
                                                 "1.25",
                                                 "1e3",
                                                 "2e-1",
                                                 "1E2",
                                                 "3.0",
                                                 "0.0",
                                                 "0.5000000001",
                                                 "0.500000001",
                                                 "0.50000001",
                                                 ".5",
                                                 "007",
                                                 "0x3",
                                                 "inf",
                                                 "1e999",
                                                 "1e-400",
                                                 "4294967297",
                                                 "0.3333333333",
                                                 "12.75",
                                                 "123456789012345678901234567890",
                                                 "0.000001",
                                                 "1e-320",
                                                 "1e308",
                                                 "\f3",
                                                 "2\v"};
    if (!quirky()) return random.chance(10) ? "" : random.pick(tidy);
    if (random.chance(15)) return "";
    return random.chance(60) ? random.pick(tidy) : random.pick(odd);
  }

  std::string sign(bool negative) {
    if (!quirky() || random.chance(60)) return negative ? " - " : " + ";
    static const std::vector<std::string> plus = {"+",    " +",    "+ ",   " ++ ",
                                                  " -- ", " - - ", "\t+\t"};
    static const std::vector<std::string> minus = {"-",     " -",    " +- ", " -+ ",
                                                   " + - ", " --- ", " - + "};
    return negative ? random.pick(minus) : random.pick(plus);
  }

  static bool named(const std::vector<Term>& list, long index) {
    for (const Term& term : list) {
      if (term.index == index) return true;
    }
    return false;
  }

  std::vector<Term> terms(int count) {
    std::vector<Term> result;
    for (int i = 0; i < count; ++i) {
      long index = variable();
      // Tidy rows name each variable once; quirky ones may repeat it (the last mention wins).
      for (int tries = 0; !quirky() && tries < 8 && named(result, index); ++tries)
        index = variable();
      if (!quirky() && named(result, index)) continue;
      result.push_back({index, coefficientText(), random.chance(35)});
    }
    return result;
  }

  std::string expression(const std::vector<Term>& list) {
    std::string text;
    bool first = true;
    for (const Term& term : list) {
      if (first) {
        if (term.negative)
          text += quirky() && random.chance(30) ? "-" : "- ";
        else if (quirky() && random.chance(15))
          text += "+ ";
      } else {
        text += sign(term.negative);
      }
      first = false;
      text += term.coefficient;
      if (!term.coefficient.empty() && (!quirky() || random.chance(80))) text += " ";
      text += variableName(term.index);
    }
    return text;
  }

  // A 320-digit integer: beyond the double range, so it reads as infinity, and with no letter in
  // it the scan never reads it a second time.
  static const std::string& overflowingInteger() {
    static const std::string text = "1" + std::string(319, '0');
    return text;
  }

  std::string constant() {
    if (quirky() && random.chance(3)) return (random.chance(50) ? "" : "- ") + overflowingInteger();
    static const std::vector<std::string> tidy = {"0", "1", "4", "10", "-3", "-12", "40", "100"};
    static const std::vector<std::string> odd = {"2.5",   "-0.5", "0.1",  "1e3", "+",
                                                 "-0",    "inf",  "- -4", "+-5", "---5",
                                                 "1e999", "7.0",  ".25"};
    return quirky() && random.chance(30) ? random.pick(odd) : random.pick(tidy);
  }

  std::string relation(const std::string& kind) {
    if (!quirky() || random.chance(85)) return " " + kind + " ";
    if (kind == "=") return random.chance(50) ? "=" : " =< ";
    return kind;
  }

  std::string label() {
    if (!quirky() || !random.chance(15)) return "";
    static const std::vector<std::string> labels = {
        "c1: ", "r_2: ", "box3: ", "R7:", "lim: ", "binding: "};
    return random.pick(labels);
  }

  // Left side, with a constant on it now and then.
  std::string leftSide(const std::vector<Term>& list) {
    std::string text = " " + label() + expression(list);
    if (quirky() && random.chance(15)) text += (random.chance(50) ? " + " : " - ") + constant();
    return text;
  }

  std::string rightSide() {
    std::string text = constant();
    if (quirky() && random.chance(10))
      text = "x" + std::to_string(random.between(1, n)) + " + " + text;
    return text;
  }

  // A "<=" twin of a ">=" row: the same terms, possibly reordered or nudged a little.
  std::vector<Term> twinOf(std::vector<Term> list) {
    if (quirky() && list.size() > 1 && random.chance(30)) std::swap(list[0], list[list.size() - 1]);
    if (quirky() && random.chance(25)) {
      static const std::vector<std::string> nudged = {"0.5000000001", "0.500000001", "0.50000001",
                                                      "0.5", "0.3333333334"};
      list[static_cast<std::size_t>(random.below(static_cast<int>(list.size())))].coefficient =
          random.pick(nudged);
    }
    if (quirky() && random.chance(10)) list.push_back({variable(), "1", false});
    return list;
  }

  void objective() {
    if (quirky() && random.chance(10)) lines.push_back("\\ Problem: generated");
    const int style = random.below(quirky() ? 10 : 4);
    std::vector<Term> list = terms(random.between(1, n + 1));
    if (!quirky()) {
      // The first mention of xN in a line is what makes N the variable count.
      for (Term& term : list) {
        if (term.index == n) term.index = list.front().index;
      }
      list.front().index = n;
    }
    if (broken(Fault::kIndexZeroInObjective)) list.push_back({0, "2", false});
    std::string body = expression(list);
    if (quirky() && random.chance(15)) body += " + " + constant();
    if (broken(Fault::kRelationInObjective)) body += " <= 4";
    switch (style) {
      case 0:
      case 1:
        lines.push_back("Maximize");
        lines.push_back(" obj: " + body);
        break;
      case 2:
        lines.push_back("Minimize");
        lines.push_back(" obj: " + body);
        break;
      case 3:
        lines.push_back("Maximize");
        lines.push_back(" obj: " + body.substr(0, body.size() / 2));
        lines.push_back("   " + body.substr(body.size() / 2));
        break;
      case 4:
        lines.push_back("min: " + body);
        break;
      case 5:
        lines.push_back("MAXIMIZE");  // the header removal is case-sensitive: no objective
        lines.push_back(" obj: " + body);
        break;
      case 6:
        lines.push_back("Maximize");
        lines.push_back(" " + body);  // no colon: no objective
        break;
      case 7:
        lines.push_back("Maximize");
        lines.push_back(" obj: " + body);
        lines.push_back("\\ min: a comment that turns the sense");
        break;
      case 8:
        break;  // no objective at all
      default:
        lines.push_back("Minimize");
        lines.push_back("");
        lines.push_back(" cost: " + body);
        break;
    }
  }

  void subjectTo() {
    if (broken(Fault::kNoSubjectTo)) return;
    if (!quirky() || random.chance(80)) {
      lines.push_back("Subject To");
      return;
    }
    static const std::vector<std::string> forms = {"subject to", "SUBJECT TO", " Subject To ",
                                                   "Subject  To", "st"};
    lines.push_back(random.pick(forms));
  }

  void rows() {
    const int pairs = random.between(0, quirky() ? 4 : 3);
    const int equations = random.between(0, 2);
    std::vector<std::string> rowLines;
    std::vector<std::string> twins;
    for (int i = 0; i < pairs; ++i) {
      const std::vector<Term> list = terms(random.between(1, n < 4 ? n : 4));
      const std::string low = rightSide();
      rowLines.push_back(leftSide(list) + relation(">=") + low);
      twins.push_back(leftSide(twinOf(list)) + relation("<=") + rightSide());
    }
    for (int i = 0; i < equations; ++i) {
      rowLines.push_back(leftSide(terms(random.between(1, 3))) + relation("=") + rightSide());
    }
    // Twins go anywhere: at the end, shuffled in, or right after their partner.
    for (const std::string& twin : twins) {
      const std::size_t at =
          static_cast<std::size_t>(random.below(static_cast<int>(rowLines.size()) + 1));
      rowLines.insert(rowLines.begin() + static_cast<long>(at), twin);
    }
    if (quirky() && random.chance(20) && !rowLines.empty()) {
      rowLines.insert(rowLines.begin() + random.below(static_cast<int>(rowLines.size())), "");
    }
    if (broken(Fault::kUnbalanced)) {
      rowLines.push_back(" " + expression(terms(2)) + (random.chance(50) ? " <= 3" : " >= -3"));
    }
    if (broken(Fault::kIndexZeroInRow)) rowLines.push_back(" 3 x0 + 2 x1 = 5");
    if (broken(Fault::kIndexAboveN)) {
      rowLines.push_back(" 2 x1 + 3 x" + std::to_string(n + 1 + random.between(0, 3)) + " = 1");
    }
    if (broken(Fault::kHugeIndex)) rowLines.push_back(" 2 x4294967297 + x1 = 1");
    if (broken(Fault::kLeadingRelation)) {
      rowLines.push_back(" <= 3 x1");
      rowLines.push_back(" 2 x1 >= 1");
    }
    if (broken(Fault::kTwoRelations)) {
      rowLines.push_back(" x1 <= 3 >= 2");
      rowLines.push_back(" 2 x2 >= 1");
    }
    if (broken(Fault::kGarbageRow)) {
      rowLines.insert(rowLines.begin() + random.below(static_cast<int>(rowLines.size()) + 1),
                      random.chance(50) ? " 3 x1 + 2 x2" : " x1 < 4");
    }
    if (broken(Fault::kNotANumber)) rowLines.push_back(" nan x1 + 2 x2 = 1");
    if (broken(Fault::kSpacedRelation)) rowLines.push_back(" 2 x1 < = 5");
    for (const std::string& line : rowLines) lines.push_back(line);
  }

  std::string boundValue() {
    static const std::vector<std::string> values = {"0", "1", "4", "10", "40", "-5", "2.5", "0.1"};
    static const std::vector<std::string> odd = {"inf", "-inf", "1e999", "1e30",
                                                 "+7",  "- 3",  "1/2"};
    return quirky() && random.chance(25) ? random.pick(odd) : random.pick(values);
  }

  void boundLine() {
    const std::string x = "x" + std::to_string(random.between(1, n));
    switch (random.below(quirky() ? 12 : 4)) {
      case 0:
        lines.push_back(" 0 <= " + x + " <= " + boundValue());
        break;
      case 1:
        lines.push_back(" " + x + " <= " + boundValue());
        break;
      case 2:
        lines.push_back(" " + boundValue() + " <= " + x);
        break;
      case 3:
        lines.push_back(" " + boundValue() + " <= " + x + " <= " + boundValue());
        break;
      case 4:
        lines.push_back(" -inf <= " + x + " <= inf");
        break;
      case 5:
        lines.push_back(" " + x + " free");
        break;
      case 6:
        lines.push_back(" " + x + " >= 2");  // ends the Bound section
        break;
      case 7:
        lines.push_back("");
        break;
      case 8:
        lines.push_back("\t5 <= " + x);
        break;
      case 9:
        lines.push_back(" 1e999 <= " + x + " <= 5");
        break;
      case 10:
        lines.push_back(" x0 <= 3");
        break;
      default:
        lines.push_back(" " + x + " = 3");
        break;
    }
  }

  void boundSection() {
    lines.push_back(quirky() && random.chance(30) ? "BOUNDS" : "Bounds");
    const int count = random.between(0, 4);
    for (int i = 0; i < count; ++i) boundLine();
    if (broken(Fault::kBoundWithoutValue)) lines.push_back(" x1 <=");
    if (broken(Fault::kNegativeBoundIndex)) lines.push_back(" x-1 <= 5");
  }

  void integerSection(const std::string& header) {
    lines.push_back(header);
    const int count = random.between(0, 2);
    for (int i = 0; i < count; ++i) {
      std::string line;
      const int names = random.between(1, 3);
      for (int k = 0; k < names; ++k) line += " " + variableName(random.between(1, n));
      lines.push_back(line);
    }
    if (broken(Fault::kIndexlessGeneral)) lines.push_back(" x");
  }

  void sections() {
    if (broken(Fault::kEndWithoutSections)) {
      lines.push_back("End");
      return;
    }
    const bool wantBounds = !quirky() || random.chance(75) || broken(Fault::kBoundWithoutValue) ||
                            broken(Fault::kNegativeBoundIndex);
    const bool wantGeneral = random.chance(35) || broken(Fault::kIndexlessGeneral);
    const bool wantBinary = random.chance(30);
    if (quirky() && random.chance(15)) {
      // Out of the fixed order: these sections are not read.
      if (wantBinary) integerSection("Binary");
      if (wantGeneral) integerSection("General");
      if (wantBounds) boundSection();
    } else {
      if (wantBounds) boundSection();
      if (quirky() && random.chance(10)) boundSection();
      if (wantGeneral) integerSection(random.chance(50) ? "General" : "Generals");
      if (wantBinary) integerSection(random.chance(50) ? "Binary" : "Binaries");
    }
    const bool anySection = wantBounds || wantGeneral || wantBinary;
    if (anySection ? random.chance(80) : (quirky() && random.chance(30))) lines.push_back("End");
  }

  std::string text() {
    objective();
    subjectTo();
    rows();
    sections();
    std::string result;
    const std::string end = crlf ? "\r\n" : "\n";
    for (std::size_t i = 0; i < lines.size(); ++i) {
      result += lines[i];
      if (i + 1 < lines.size() || !quirky() || random.chance(85)) result += end;
    }
    if (mood == Mood::kMutated) mutate(result);
    return result;
  }

  // Whether an x is followed by four digits or more: such an index would size the dense
  // oracle's matrices by itself.
  static bool hasLongIndex(const std::string& text) {
    int digits = 0;
    bool afterX = false;
    for (const char c : text) {
      if (afterX && c >= '0' && c <= '9') {
        if (++digits >= 4) return true;
      } else {
        afterX = c == 'x' || c == 'X';
        digits = 0;
      }
    }
    return false;
  }

  // A few byte edits with characters that matter to the reader; an edit that makes a long index
  // is taken back.
  void mutate(std::string& text) {
    static const std::string alphabet = " \t\r\n\f+-.,:eE0123456789xX<=>iInNfF";
    const int edits = random.between(1, 4);
    for (int i = 0; i < edits && !text.empty(); ++i) {
      const std::string before = text;
      const auto at = static_cast<std::size_t>(random.below(static_cast<int>(text.size())));
      const char c =
          alphabet[static_cast<std::size_t>(random.below(static_cast<int>(alphabet.size())))];
      switch (random.below(3)) {
        case 0:
          text.insert(at, 1, c);
          break;
        case 1:
          text.erase(at, 1);
          break;
        default:
          text[at] = c;
          break;
      }
      if (hasLongIndex(text)) text = before;
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: lp_fuzz_gen <seed>\n");
    return 2;
  }
  Generator generator(std::strtoull(argv[1], nullptr, 10));
  const std::string text = generator.text();
  std::fwrite(text.data(), 1, text.size(), stdout);
  return 0;
}
