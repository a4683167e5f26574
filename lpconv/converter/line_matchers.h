#pragma once
// Dedicated matchers for the converter's fixed line patterns. Each gives the answer the general
// regular-expression search would give (ECMAScript grammar, ASCII case folding), in one linear
// pass and without recursion, so arbitrarily long lines are safe.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lpconv {

enum class Section { kBound, kGeneral, kBinary };

struct SectionWord {
  Section section;
  std::string_view word;  // lower case; matched case-insensitively anywhere in a line
};

// The section words in the order the sections are read. A line naming any of them ends the
// constraint block and every section; the sections are entered in this order, each at most once.
inline constexpr std::array<SectionWord, 3> kSectionWords = {{
    {Section::kBound, "bound"},
    {Section::kGeneral, "gen"},
    {Section::kBinary, "bin"},
}};

// Case-insensitive search for a fixed word ("Subject To", "Bound", "free", "<=" ...).
bool containsIgnoringCase(std::string_view text, std::string_view word);

// "Subject To", case-insensitive, anywhere in the line.
bool containsSubjectTo(std::string_view line);

// Any word of kSectionWords ("Bound|Gen|Bin"), case-insensitive, anywhere in the line (not only
// at its start: "binding:" names one). Such a line ends the constraint block and every section.
bool namesSection(std::string_view line);

enum class Relation { kLessEqual, kGreaterEqual, kEquation, kNone };

// Which of "<=" and ">=" a classification tries first. Counting the rows of the constraint block
// tries "<=" first; filing a parsed row by the rest after its left side tries ">=" first. The
// difference is the converter's behaviour and is kept: a line such as "x1 <= 3 >= 2" is counted
// as a "<=" row and filed as a ">=" row, so its group is filled beyond its count and the filing
// fails with the index error.
enum class FirstTried { kLessEqual, kGreaterEqual };

// The relation of a text: "<=" or ">=" (in the order given), else "=" anywhere, else none.
Relation classifyRelation(std::string_view text, FirstTried first);

// The digits of the first match of "x([0-9]+)" (either case of x), or nothing.
std::optional<std::string_view> firstVariableDigits(std::string_view line);

// Whether "min(.|\r|\n)*:" matches case-insensitively: a "min" with a ":" somewhere after it.
bool hasMinimiseHeader(std::string_view text);

// Where the case-sensitive match of "(Min|Max)(.|\r|\n)*:" lies: from the first "Min" or "Max"
// that has a ":" after it through the last ":" (begin, end); nothing when none matches.
std::optional<std::pair<std::size_t, std::size_t>> objectiveHeader(std::string_view text);
// Removes that match. Returns false (and leaves text alone) when none matches.
bool removeObjectiveHeader(std::string& text);

// The expression normalisation, each step replacing every match left to right without overlap:
// blanks, tabs, CRs and LFs removed; then "+-" -> "-", "-+" -> "-", "--" -> "+", "++" -> "+".
std::string normaliseExpression(std::string_view text);
// The same into `out`, whose storage is reused; `text` must not point into `out`.
void normaliseExpression(std::string_view text, std::string& out);
// The normalisation of the two texts joined, without joining them first.
void normaliseExpression(std::string_view before, std::string_view after, std::string& out);

}  // namespace lpconv
