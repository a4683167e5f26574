#pragma once
// The comparison at the heart of lpcheck: the file as lpconv reads it against the file as a
// standard CPLEX LP reader reads it (x1..xn as columns 1..n), each difference and each reason
// lpconv would fail reported at its line and column, with the dialect rule and what to write.

#include <string>
#include <string_view>
#include <vector>

#include <lpconv/formats/diagnostics.h>

namespace lpcheck {

struct CheckResult {
  std::vector<lpconv::Diagnostic> messages;  // in line and column order
  long warnings = 0;
  bool lpconvFails = false;
  std::string failure;  // lpconv's message when it fails
  // The last line: what the messages add up to.
  std::string summary(const std::string& file) const;
  // 0 when lpconv's output means the model the file states, 1 otherwise.
  int exitStatus() const { return warnings > 0 || lpconvFails ? 1 : 0; }
};

CheckResult checkFile(std::string_view text, const std::string& file);

}  // namespace lpcheck
