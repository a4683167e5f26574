#include "converter/run.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <string>

#include "converter/output_name.h"
#include "util/failure.h"
#include "util/trace.h"

namespace lpconv {

namespace {

const char* programName(const char* argv0) {
  if (argv0 == nullptr) return "";
  const char* slash = std::strrchr(argv0, '/');
  return slash == nullptr ? argv0 : slash + 1;
}

[[noreturn]] void printUsage(const char* argv0) {
  std::cout << "Usage: " << programName(argv0) << " *.lp" << endLine();
  lastOutputTime = std::time(nullptr);
  terminateWithFailure();
}

void writeBanner() {
  std::cerr << "Note: This converter is not perfect, but it should" << std::endl;
  std::cerr << "work correctly, as long as ALL variables are named" << std::endl;
  std::cerr << "with a lower case 'x'." << std::endl;
  std::cerr << std::endl;
}

}  // namespace

int runConverter(int argc, char** argv) {
  if (argc != 2) printUsage(argc > 0 ? argv[0] : nullptr);
  const std::string inputName = argv[1];
  const std::string outputName = outputNameFor(inputName);
  if (outputName == inputName) printUsage(argv[0]);

  const int input = ::open(inputName.c_str(), O_RDONLY);
  if (input < 0) reportFailure("The input file [ " + inputName + " ] could not be opened!");
  const int output = ::open(outputName.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (output < 0) reportFailure("The output file [ " + outputName + " ] could not be opened!");

  writeBanner();
  // The passes over the input are not built yet: the output file stays empty.
  ::close(output);
  ::close(input);
  return 0;
}

}  // namespace lpconv
