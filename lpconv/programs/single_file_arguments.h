#pragma once
// The command line of a program that takes one FILE besides --help and --version.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lpconv {

// Prints `help` or `version` to standard output when either option is anywhere among the
// arguments, and returns 0. Otherwise returns usageError's status for a missing file, an
// unknown option or a second operand, and nothing when `args` holds exactly one file.
std::optional<int> settleSingleFileArguments(const std::vector<std::string>& args,
                                             std::string_view help, std::string_view version,
                                             int (*usageError)(const std::string& problem));

}  // namespace lpconv
