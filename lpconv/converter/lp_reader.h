#pragma once
// The four passes over an LP file. Each pass reads the text from its start and returns what it
// found; failures are reported where they are found, so the passes' order is the order of the
// run's messages.

#include <string_view>

#include <lpconv/converter/lp_model.h>

namespace lpconv {

// Pass 1: n = the largest index of the first "x<digits>" (either case) of every line, each index
// truncated to 32 bits.
long discoverVariables(std::string_view text);

// What the counting of pass 2 leaves for the later passes, which read the same text.
struct ConstraintBlock {
  RowCounts counts;
  std::size_t subjectTo = 0;         // where the "Subject To" line starts; the text's size if none
  std::string_view rows;             // the lines after it, up to the line that ended the block
  std::string_view sectionLine;      // the line that ended the block; empty at the end of the text
  std::size_t afterSectionLine = 0;  // where the lines after it start
};

// Pass 2, first half: skips to the "Subject To" line and counts the rows up to the first section
// line. Reports "The file [ <argument> ] is incomplete!" for a non-empty line without a relation
// sign and "The amount of <= and >= equations differ!" when the balance rule is broken.
ConstraintBlock countRows(std::string_view text, const std::string& argument);

// Pass 2, second half: the sections of kSectionWords, tried in order, each only when the line
// that ended the previous stage names it. Reports the index failure for an index outside 1..n
// and "scan for digit failed!" from the bound lines.
VariableBounds readSections(std::string_view text, const ConstraintBlock& block, long n);

// Pass 3: the objective, from the lines before the block's "Subject To" line of `text` (the text
// the counting read). Reports "Objective function error: relation sign found!" when a relation
// sign follows the expression.
Objective readObjective(std::string_view text, const ConstraintBlock& block, long n);

// Pass 4: every non-empty line of the constraint block, filed into its group. Reports
// "relation error: no sign found!", the index failure, and the index failure for a group filled
// beyond its count.
Constraints readConstraints(const ConstraintBlock& block, long n);

}  // namespace lpconv
