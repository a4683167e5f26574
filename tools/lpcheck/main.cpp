// lpcheck FILE: where lpconv would read an LP file otherwise than the file states. Status 0
// when lpconv's output means the model the file states, 1 when it does not or when lpconv would
// fail, 2 for a usage error or an unreadable file.

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/converter/input_text.h>
#include <lpconv/formats/diagnostics.h>
#include <lpconv/programs/huge_page_heap.h>
#include <lpconv/programs/single_file_arguments.h>

#include "check.h"

namespace {

constexpr int kUsageStatus = 2;
constexpr char kUsage[] = "Usage: lpcheck FILE\n";
constexpr char kTryHelp[] = "Try 'lpcheck --help' for more information.\n";
constexpr char kHelp[] =
    "Reads FILE the way lpconv reads it and the way a standard CPLEX LP reader reads it\n"
    "(variables x1..xn as columns 1..n), and reports each place where the two differ, or where\n"
    "lpconv would fail, as FILE:LINE:COLUMN: warning: ... with the line and a caret, naming the\n"
    "dialect rule and what to write instead. A last line sums up.\n"
    "\n"
    "  --help     print this help and exit\n"
    "  --version  print the version and exit\n"
    "\n"
    "Exit status: 0 when lpconv's output means the model the file states, 1 when it does not or\n"
    "when lpconv would fail, 2 for a usage error or an unreadable file.\n";
constexpr char kVersion[] = "lpcheck (lpconv) " LPCONV_VERSION "\n";

int usageError(const std::string& problem) {
  std::cerr << "lpcheck: " << problem << "\n" << kUsage << kTryHelp;
  return kUsageStatus;
}

}  // namespace

int main(int argc, char** argv) {
  lpconv::useHugePagesForHeap();  // as lpconv does: a large file's rows fault in fewer pages
  const std::vector<std::string> args(argv + 1, argv + argc);
  const std::string help = std::string(kUsage) + kHelp;
  if (const auto status = lpconv::settleSingleFileArguments(args, help, kVersion, usageError)) {
    return *status;
  }

  const std::string& path = args[0];
  std::error_code error;
  const int fd = ::open(path.c_str(), O_RDONLY);
  if (fd < 0 || std::filesystem::is_directory(path, error)) {
    if (fd >= 0) ::close(fd);
    std::cerr << "lpcheck: " << path << ": cannot be read\n";
    return kUsageStatus;
  }
  // lpconv's own view of the file: mapped when it can be, read otherwise.
  const lpconv::InputText input(fd);
  const std::string_view text = input.firstPass();

  const lpcheck::CheckResult result = lpcheck::checkFile(text, path);
  std::ostringstream out;
  for (const lpconv::Diagnostic& d : result.messages) out << lpconv::format(d);
  out << result.summary(path) << "\n";
  std::cout << out.str();
  ::close(fd);
  return result.exitStatus();
}
