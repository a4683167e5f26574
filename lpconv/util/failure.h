#pragma once
// The one fatal-error path of the system, and the process-wide time stamp of diagnostic output.

#include <ctime>
#include <ostream>
#include <string>

namespace lpconv {

// Calendar time of the last diagnostic or status line; set at start-up and after every report.
// Nothing reads it: it is part of the diagnostics state all the same.
extern std::time_t lastOutputTime;

// Writes "\n*** FAIL: " + message + "\n" to standard error (which flushes pending standard
// output first, since std::cerr is tied to std::cout) and ends the process with status 1.
[[noreturn]] void reportFailure(const std::string& message);
// The same for a literal; a null pointer sets the bad bit of std::cerr, so the message and the
// final line feed are lost, as the stream rules say.
[[noreturn]] void reportFailure(const char* message);

// Writes message + "\n" to standard error and returns; no marker, no exit.
void reportMessage(const std::string& message);

// exit(1): static destructors run and the standard streams are flushed.
[[noreturn]] void terminateWithFailure();

// Puts the stream's widened newline and flushes it (twice, as the original frame does).
std::ostream& flushLine(std::ostream& os);

}  // namespace lpconv
