#include <lpconv/formats/diagnostics.h>

#include <utility>

namespace lpconv {

const char* severityWord(Severity severity) {
  switch (severity) {
    case Severity::note:
      return "note";
    case Severity::warning:
      return "warning";
    case Severity::error:
      return "error";
  }
  return "error";
}

std::string headline(const Diagnostic& d) {
  std::string out = d.file;
  if (d.line > 0) {
    out += ':';
    out += std::to_string(d.line);
    if (d.column > 0) {
      out += ':';
      out += std::to_string(d.column);
    }
  }
  out += ": ";
  out += severityWord(d.severity);
  out += ": ";
  out += d.message;
  return out;
}

std::string format(const Diagnostic& d) {
  std::string out = headline(d);
  out += '\n';
  if (d.line > 0) {
    out += d.sourceLine;
    out += '\n';
    if (d.column > 0) {
      const auto before = static_cast<std::size_t>(d.column - 1);
      for (std::size_t i = 0; i < before; ++i) {
        out += i < d.sourceLine.size() && d.sourceLine[i] == '\t' ? '\t' : ' ';
      }
      out += "^\n";
    }
  }
  return out;
}

ParseError::ParseError(Diagnostic diagnostic)
    : std::runtime_error(headline(diagnostic)), diagnostic_(std::move(diagnostic)) {}

void StreamSink::report(const Diagnostic& d) {
  if (d.severity == Severity::warning) ++warnings_;
  if (d.severity == Severity::note) ++notes_;
  os_ << format(d);
}

}  // namespace lpconv
