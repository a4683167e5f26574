#pragma once
// Dedicated matchers for the converter's fixed line patterns. Each gives the answer the general
// regular-expression search would give (ECMAScript grammar, ASCII case folding), in one linear
// pass and without recursion, so arbitrarily long lines are safe.

#include <optional>
#include <string>
#include <string_view>

namespace lpconv {

// Case-insensitive search for a fixed word ("Subject To", "Bound", "free", "<=" ...).
bool containsIgnoringCase(std::string_view text, std::string_view word);

// "Subject To", case-insensitive, anywhere in the line.
bool containsSubjectTo(std::string_view line);

// "Bound|Gen|Bin", case-insensitive, anywhere in the line: the end of the constraint block and of
// every section.
bool startsSection(std::string_view line);

// The digits of the first match of "x([0-9]+)" (either case of x), or nothing.
std::optional<std::string_view> firstVariableDigits(std::string_view line);

// Whether "min(.|\r|\n)*:" matches case-insensitively: a "min" with a ":" somewhere after it.
bool hasMinimiseHeader(std::string_view text);

// Removes the case-sensitive match of "(Min|Max)(.|\r|\n)*:": from the first "Min" or "Max" that
// has a ":" after it through the last ":". Returns false (and leaves text alone) when none matches.
bool removeObjectiveHeader(std::string& text);

// The expression normalisation, each step replacing every match left to right without overlap:
// blanks, tabs, CRs and LFs removed; then "+-" -> "-", "-+" -> "-", "--" -> "+", "++" -> "+".
std::string normaliseExpression(std::string_view text);

}  // namespace lpconv
