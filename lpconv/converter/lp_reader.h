#pragma once
// The four passes over the LP file. Each pass reads from the first line; the caller rewinds
// between them. Failures are reported where they are found, in pass order.

#include <string>

#include <lpconv/converter/input_lines.h>
#include <lpconv/converter/lp_model.h>

namespace lpconv {

// Pass 1: n = the largest index of the first "x<digits>" (either case) of every line, each index
// truncated to 32 bits.
long discoverVariables(InputLines& lines);

// Pass 2, first half: skips to the "Subject To" line and counts the rows up to the first section
// line (returned in `sectionLine`, empty at end of input). Reports
// "The file [ <argument> ] is incomplete!" for a non-empty line without a relation sign and
// "The amount of <= and >= equations differ!" when the balance rule is broken.
RowCounts countRows(InputLines& lines, const std::string& argument, std::string& sectionLine);

// Pass 2, second half: the Bound, General and Binary sections, tried in that order, each only
// when the line that ended the previous stage names it.
void readSections(InputLines& lines, std::string sectionLine, long n, VariableBounds& bounds);

// Pass 3: the objective, from the lines before the first "Subject To" line.
void readObjective(InputLines& lines, LpModel& model);

// Pass 4: every non-empty line of the constraint block, filed into its group.
void readConstraints(InputLines& lines, LpModel& model);

// Whether the text from `from` leads to a decimal digit, skipping blanks, "+" and "-".
// Reports "scan for digit failed!" when the text ends first.
bool leadsToDigit(const std::string& text, std::size_t from);

}  // namespace lpconv
