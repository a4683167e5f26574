#pragma once
// The file as a standard CPLEX LP reader reads it, kept close to its text: every term, row and
// bound with the line and column it was written at, so that a difference from the dialect's
// reading can be shown at its place. Sections: objective, constraints, Bounds, General, Binary,
// End; rows and bounds may span lines; "\" starts a comment.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <lpconv/numbers/coefficient.h>
#include <lpconv/numbers/qq.h>

namespace lpcheck {

struct Place {
  long line = 0;    // 1-based
  long column = 0;  // 1-based byte column
};

struct Term {
  std::string name;
  lpconv::Coefficient value;
  Place at;             // where the term starts (its sign or number, else its name)
  Place nameAt;         // where the variable's name starts
  std::string written;  // the coefficient as written, sign included ("" when implicit)
  bool first = false;   // the first term of its expression
};

struct Row {
  std::string label;  // "" when the row has none
  Place at;           // the row's first character (its label or first term)
  Place relationAt;
  long lastLine = 0;  // the line the row ends on
  std::vector<Term> terms;
  std::vector<std::pair<lpconv::Coefficient, Place>> leftConstants;
  char sense = '=';  // '<', '>' or '='
  lpconv::Coefficient rhs;
  Place rhsAt;
  std::string rhsWritten;
};

struct Objective {
  bool present = false;
  bool minimise = true;
  Place senseAt;
  std::string label;
  Place at;
  std::vector<Term> terms;
  std::vector<std::pair<lpconv::Coefficient, Place>> constants;
};

struct Bound {
  lpconv::QQ lower{0L};
  lpconv::QQ upper = lpconv::QQ::infinity();
  Place at;  // the last bound statement that named the variable; line 0 when none
  bool stated = false;
};

struct SectionMark {
  std::string word;  // "subject to", "bounds", "general", "binary", "end" (lower case)
  Place at;
};

struct StandardReading {
  Objective objective;
  std::vector<Row> rows;
  std::map<std::string, Bound> bounds;    // only variables named in a bound statement
  std::map<std::string, Place> integers;  // General and Binary, where named
  std::map<std::string, Place> binaries;
  std::map<std::string, Place> firstMention;  // every variable, where it is first named
  std::vector<SectionMark> sections;
  std::optional<std::pair<Place, std::string>> error;  // the first thing it could not read
};

// Called with each row as it is read, instead of keeping the rows; the row is valid only
// during the call.
using RowSink = std::function<void(const Row&)>;

// Reads the whole text; never throws on content: what it cannot read ends the reading with
// `error` set. With a sink, `rows` stays empty and each row goes to the sink.
StandardReading readStandardLp(std::string_view text, const RowSink& sink = RowSink());

}  // namespace lpcheck
