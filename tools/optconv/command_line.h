#pragma once
// optconv's command line: [--from F] [--to F] [--names FILE] INPUT OUTPUT, with the formats
// taken from the names where no option gives them.

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <lpconv/formats/formats.h>

namespace lpconv {

struct ConversionRequest {
  std::string input;
  std::string output;
  Format from = Format::lp;
  Format to = Format::opt;
  // The name map: read beside an .opt input, otherwise written beside an .opt output.
  std::optional<std::string> names;
};

enum class InfoRequest { help, version };

// What the arguments ask for, or the usage problem they have ("missing OUTPUT operand", ...).
struct UsageProblem {
  std::string text;
};
using CommandLine = std::variant<ConversionRequest, InfoRequest, UsageProblem>;

CommandLine parseCommandLine(const std::vector<std::string>& args);

}  // namespace lpconv
