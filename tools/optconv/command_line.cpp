#include "command_line.h"

#include <string_view>

namespace lpconv {

namespace {

bool endsWithGz(std::string_view name) {
  if (name.size() < 3) return false;
  const std::string_view tail = name.substr(name.size() - 3);
  return tail == ".gz" || tail == ".GZ" || tail == ".Gz" || tail == ".gZ";
}

// The format an option names, or the one of the file name; a problem when neither tells.
std::variant<Format, UsageProblem> formatFor(const std::optional<std::string>& option,
                                             const std::string& path, const char* optionName,
                                             const char* role) {
  if (option) {
    if (const auto format = formatOfWord(*option)) return *format;
    return UsageProblem{"invalid argument '" + *option + "' for '" + optionName +
                        "' (expected lp, mps or opt)"};
  }
  if (path == "-") {
    return UsageProblem{std::string("the format of standard ") + role + " needs '" + optionName +
                        "'"};
  }
  if (const auto format = formatOfName(path)) return *format;
  return UsageProblem{"cannot tell the format of '" + path +
                      "' (expected .lp, .mps or .opt); use '" + optionName + "'"};
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& args) {
  for (const std::string& arg : args) {
    if (arg == "--") break;
    if (arg == "--help") return InfoRequest::help;
    if (arg == "--version") return InfoRequest::version;
  }
  std::optional<std::string> from, to, names;
  std::vector<std::string> operands;
  bool optionsEnded = false;
  for (std::size_t k = 0; k < args.size(); ++k) {
    const std::string& arg = args[k];
    if (optionsEnded || arg == "-" || arg.empty() || arg[0] != '-') {
      operands.push_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
      continue;
    }
    std::optional<std::string>* target = nullptr;
    std::string name = arg;
    std::optional<std::string> value;
    if (const auto equals = arg.find('='); equals != std::string::npos) {
      name = arg.substr(0, equals);
      value = arg.substr(equals + 1);
    }
    if (name == "--from") target = &from;
    if (name == "--to") target = &to;
    if (name == "--names") target = &names;
    if (target == nullptr) return UsageProblem{"unrecognized option '" + arg + "'"};
    if (!value) {
      if (k + 1 == args.size()) return UsageProblem{"option '" + name + "' requires an argument"};
      value = args[++k];
    }
    *target = *value;
  }
  if (operands.empty()) return UsageProblem{"missing INPUT and OUTPUT operands"};
  if (operands.size() == 1)
    return UsageProblem{"missing OUTPUT operand after '" + operands[0] + "'"};
  if (operands.size() > 2) return UsageProblem{"extra operand '" + operands[2] + "'"};

  ConversionRequest request;
  request.input = operands[0];
  request.output = operands[1];
  request.names = names;
  const auto fromFormat = formatFor(from, request.input, "--from", "input");
  if (const auto* problem = std::get_if<UsageProblem>(&fromFormat)) return *problem;
  const auto toFormat = formatFor(to, request.output, "--to", "output");
  if (const auto* problem = std::get_if<UsageProblem>(&toFormat)) return *problem;
  request.from = std::get<Format>(fromFormat);
  request.to = std::get<Format>(toFormat);
  if (request.output != "-" && endsWithGz(request.output)) {
    return UsageProblem{"compressed output is not supported: '" + request.output + "'"};
  }
  if (names && request.from != Format::opt && request.to != Format::opt) {
    return UsageProblem{"'--names' needs an .opt input or output"};
  }
  const bool writesNames = names && request.from != Format::opt;
  if (writesNames && *names == "-") {
    return UsageProblem{"the name map cannot go to standard output"};
  }
  if (writesNames && *names == request.output) {
    return UsageProblem{"the name map and the output are the same file"};
  }
  return request;
}

}  // namespace lpconv
