#pragma once
// The one fatal-error path of the system, and the process-wide time stamp of diagnostic output.

#include <ctime>
#include <ostream>
#include <string>

#include <lpconv/util/exceptions.h>

namespace lpconv {

// Calendar time of the last diagnostic or status line; set at start-up and after every report.
// Nothing reads it: it is part of the diagnostics state all the same.
extern std::time_t lastOutputTime;

// Receives the message of a failure report instead of the default frame. It must not return
// normally: it may throw (see throwFailure) or end the process. One that returns anyway is
// followed by the default frame and exit status 1.
using FailureHandler = void (*)(const std::string& message);

// Installs a handler for every later failure report (nullptr restores the default) and returns
// the previous one. The converter never installs one; a program that uses the library may, to
// recover from a failure instead of ending.
FailureHandler setFailureHandler(FailureHandler handler);

// A handler that throws FailureException carrying the message. After it has unwound out of a
// library operation, every object involved is still valid and destructible; its value is
// unspecified.
[[noreturn]] void throwFailure(const std::string& message);

// Thrown by throwFailure; what() is the message of the failure report.
class FailureException : public GeneralException {
 public:
  explicit FailureException(const std::string& message);
  ~FailureException() override;
};

// Without a handler: writes "\n*** FAIL: " + message + "\n" to standard error (which flushes
// pending standard output first, since std::cerr is tied to std::cout) and ends the process with
// status 1. With one: hands it the message.
[[noreturn]] void reportFailure(const std::string& message);
// The same for a literal; without a handler a null pointer sets the bad bit of std::cerr, so the
// message and the final line feed are lost, as the stream rules say; a handler gets "" for it.
[[noreturn]] void reportFailure(const char* message);

// Writes message + "\n" to standard error and returns; no marker, no exit.
void reportMessage(const std::string& message);

// exit(1): static destructors run and the standard streams are flushed.
[[noreturn]] void terminateWithFailure();

// Puts the stream's widened newline and flushes it (twice, as the original frame does).
std::ostream& flushLine(std::ostream& os);

}  // namespace lpconv
