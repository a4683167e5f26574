#include <lpconv/programs/single_file_arguments.h>

#include <iostream>

namespace lpconv {

std::optional<int> settleSingleFileArguments(const std::vector<std::string>& args,
                                             std::string_view help, std::string_view version,
                                             int (*usageError)(const std::string& problem)) {
  for (const std::string& arg : args) {
    if (arg == "--help") {
      std::cout << help;
      return 0;
    }
    if (arg == "--version") {
      std::cout << version;
      return 0;
    }
  }
  if (args.empty()) return usageError("missing file operand");
  for (const std::string& arg : args) {
    if (arg.size() > 1 && arg[0] == '-') return usageError("unrecognized option '" + arg + "'");
  }
  if (args.size() > 1) return usageError("extra operand '" + args[1] + "'");
  return std::nullopt;
}

}  // namespace lpconv
