#pragma once
// The nested trace prefix: status lines laid out as a tree of arrows and bars. The functions
// return the pieces of text; the caller inserts them into the stream of its choice.

#include <string>

namespace lpconv {

// Deepest nesting the trace allows; entering level kMaxTraceDepth is fatal.
inline constexpr long kMaxTraceDepth = 128;

// Opens a line one level deeper and returns its prefix: "|", then "    |" per current level,
// then "->" unless noArrow. Starts with "\n" when the current level still has an open line.
// Entering the 128th level reports "Maximum thread depth reached".
std::string enterLevel(bool noArrow);

// Marks the current level's line as ended and returns "\n".
std::string endLine();

// Closes the current level: "\n" when its line is still open, else "". With quiet, returns ""
// whenever endLine was called at this level since it was entered. At depth 0 the depth stays 0.
std::string leaveLevel(bool quiet);

// Returns to depth 0 with every flag cleared; returns "\n".
std::string resetLevels();

// The current nesting depth (0 at start).
long traceDepth();

}  // namespace lpconv
