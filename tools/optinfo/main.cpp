// optinfo FILE: a short summary of an .opt file, read with the library's own reader, or of an LP
// or MPS file (plain or gzip-compressed), read into the exact model. Status 0 on success, 1 on a
// malformed or unreadable file (the failure report, or the message with its place, on standard
// error), 2 on a usage error.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include <lpconv/formats/formats.h>
#include <lpconv/optfile/opt_file.h>
#include <lpconv/programs/huge_page_heap.h>
#include <lpconv/programs/single_file_arguments.h>
#include <lpconv/util/failure.h>

#include "model_summary.h"
#include "summary.h"

namespace {

constexpr int kUsageStatus = 2;
constexpr char kUsage[] = "Usage: optinfo FILE\n";
constexpr char kTryHelp[] = "Try 'optinfo --help' for more information.\n";
constexpr char kHelp[] =
    "Prints a short summary of an .opt file written by lpconv: the objective sense, the\n"
    "numbers of variables, equations and inequalities, the non-zeros of each system, the kinds\n"
    "of variable bounds, the largest denominator and the longest number.\n"
    "An LP or MPS file (.lp, .mps) or any .gz file is read into the exact model; its\n"
    "summary also gives the magnitudes of each part, the largest numerator and how many\n"
    "values look like a rounded decimal of a simple fraction.\n"
    "\n"
    "  --help     print this help and exit\n"
    "  --version  print the version and exit\n"
    "\n"
    "Exit status: 0 on success, 1 for a malformed or unreadable file, 2 for a usage error.\n";
constexpr char kVersion[] = "optinfo (lpconv) " LPCONV_VERSION "\n";

int usageError(const std::string& problem) {
  std::cerr << "optinfo: " << problem << "\n" << kUsage << kTryHelp;
  return kUsageStatus;
}

// An LP or MPS file through the model; notes and warnings of the reader go to standard error.
int summariseModel(const std::string& path) {
  lpconv::StreamSink messages(std::cerr);
  try {
    const lpconv::Model model = lpconv::readModel(path, std::nullopt, messages);
    lpconv::ModelSummary(model).print(std::cout);
    return 0;
  } catch (const lpconv::ParseError& e) {
    std::cerr << lpconv::format(e.diagnostic());
  } catch (const std::exception& e) {
    std::cerr << "optinfo: error: " << e.what() << "\n";
  }
  return 1;
}

std::string cannotOpen(const std::string& path) {
  return "The file [ " + path + " ] could not be opened!";
}

}  // namespace

int main(int argc, char** argv) {
  lpconv::useHugePagesForHeap();
  const std::vector<std::string> args(argv + 1, argv + argc);
  const std::string help = std::string(kUsage) + kHelp;
  if (const auto status = lpconv::settleSingleFileArguments(args, help, kVersion, usageError)) {
    return *status;
  }

  const std::string& path = args[0];
  // .opt files are streamed as they always were; everything else, compressed .opt included, goes
  // through the model.
  const std::optional<lpconv::Format> format = lpconv::formatOfName(path);
  const bool compressed = path.size() > 3 && (path.ends_with(".gz") || path.ends_with(".GZ"));
  if (format && (*format != lpconv::Format::opt || compressed)) return summariseModel(path);
  std::vector<char> buffer(1 << 20);
  std::ifstream in;
  in.rdbuf()->pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
  in.open(path, std::ios::binary);
  std::error_code error;
  if (!in.is_open() || std::filesystem::is_directory(path, error)) {
    lpconv::reportFailure(cannotOpen(path));
  }
  try {
    lpconv::OptSummary summary;
    const lpconv::OptFile file = lpconv::readOptFile(in, &summary);
    summary.addFile(file);
    summary.print(std::cout);
  } catch (const std::exception& e) {
    // The number parser throws for integer text it cannot read (".5"); a report beats an abort.
    lpconv::reportFailure(e.what());
  }
  return 0;
}
