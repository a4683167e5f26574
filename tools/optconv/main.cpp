// optconv [--from lp|mps|opt] [--to lp|mps|opt] [--names FILE] INPUT OUTPUT: a linear program
// from one format into another through the exact sparse model. Status 0 on success, 1 for an
// unreadable or malformed input or an unwritable output (no output is left behind), 2 for a
// usage error.

#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include <lpconv/formats/formats.h>

#include "atomic_output.h"
#include "command_line.h"

namespace {

using lpconv::Diagnostic;
using lpconv::Format;

constexpr int kFailureStatus = 1;
constexpr int kUsageStatus = 2;
constexpr char kUsage[] =
    "Usage: optconv [--from lp|mps|opt] [--to lp|mps|opt] [--names FILE] INPUT OUTPUT\n";
constexpr char kTryHelp[] = "Try 'optconv --help' for more information.\n";
constexpr char kHelp[] =
    "Converts a linear program between CPLEX LP, MPS (fixed or free) and the exact .opt file.\n"
    "Values stay exact: 0.1 is read as 1/10, and LP and MPS values are written as the shortest\n"
    "exact decimal, or p/q where there is none. The formats come from the names (.lp, .mps,\n"
    ".opt; an input may end in .gz); '-' is standard input or output.\n"
    "\n"
    "  --from FORMAT  read INPUT as lp, mps or opt, whatever its name\n"
    "  --to FORMAT    write OUTPUT as lp, mps or opt, whatever its name\n"
    "  --names FILE   the name map of the .opt file: read beside an .opt input, written\n"
    "                 beside an .opt output\n"
    "  --help         print this help and exit\n"
    "  --version      print the version and exit\n"
    "\n"
    "Messages read FILE:LINE:COLUMN: error|warning|note: text, then the line and a caret.\n"
    "Exit status: 0 on success, 1 for an unreadable or malformed input or an unwritable\n"
    "output (no output file is left behind), 2 for a usage error.\n";
constexpr char kVersion[] = "optconv (lpconv) " LPCONV_VERSION "\n";

// Gives the writers' messages, which know no file, the input's name.
class InputNamedSink : public lpconv::DiagnosticSink {
 public:
  InputNamedSink(lpconv::DiagnosticSink& next, std::string name)
      : next_(next), name_(std::move(name)) {}
  void report(const Diagnostic& d) override {
    if (!d.file.empty()) return next_.report(d);
    Diagnostic named = d;
    named.file = name_;
    next_.report(named);
  }

 private:
  lpconv::DiagnosticSink& next_;
  std::string name_;
};

void write(const lpconv::Model& model, Format format, std::ostream& os,
           lpconv::DiagnosticSink& sink) {
  switch (format) {
    case Format::lp:
      lpconv::writeLp(model, os);
      return;
    case Format::mps:
      lpconv::writeMps(model, os);
      return;
    case Format::opt:
      lpconv::writeOpt(model, os, sink);
      return;
  }
}

int convert(const lpconv::ConversionRequest& request) {
  lpconv::StreamSink messages(std::cerr);
  try {
    const bool readsNames = request.names && request.from == Format::opt;
    const lpconv::Model model = lpconv::readModel(request.input, request.from, messages,
                                                  readsNames ? &*request.names : nullptr);
    InputNamedSink sink(messages, request.input == "-" ? "<stdin>" : request.input);
    lpconv::AtomicOutput output(request.output);
    write(model, request.to, output.stream(), sink);
    output.finish();
    std::optional<lpconv::AtomicOutput> nameMap;
    if (request.names && !readsNames) {
      nameMap.emplace(*request.names);
      lpconv::writeNameMap(model, nameMap->stream());
      nameMap->finish();
      nameMap->commit();
    }
    output.commit();
    return 0;
  } catch (const lpconv::ParseError& e) {
    std::cerr << lpconv::format(e.diagnostic());
  } catch (const std::exception& e) {
    std::cerr << "optconv: error: " << e.what() << "\n";
  }
  return kFailureStatus;
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  const lpconv::CommandLine command =
      lpconv::parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (const auto* info = std::get_if<lpconv::InfoRequest>(&command)) {
    std::cout << (*info == lpconv::InfoRequest::help ? std::string(kUsage) + kHelp : kVersion);
    return 0;
  }
  if (const auto* problem = std::get_if<lpconv::UsageProblem>(&command)) {
    std::cerr << "optconv: " << problem->text << "\n" << kUsage << kTryHelp;
    return kUsageStatus;
  }
  return convert(std::get<lpconv::ConversionRequest>(command));
}
