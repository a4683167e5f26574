#include <lpconv/converter/run.h>

#include <fcntl.h>
#include <unistd.h>

#include <iostream>
#include <string>

#include <lpconv/converter/inequality_pairing.h>
#include <lpconv/converter/input_lines.h>
#include <lpconv/converter/lp_reader.h>
#include <lpconv/converter/opt_writer.h>
#include <lpconv/converter/output_name.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/paths.h>
#include <lpconv/util/trace.h>

namespace lpconv {

namespace {

// A process started without any argument word (argc 0) still gets its usage text.
[[noreturn]] void printUsage(const char* argv0) {
  std::cout << "Usage: " << (argv0 == nullptr ? "" : baseName(argv0)) << " *.lp" << endLine();
  lastOutputTime = std::time(nullptr);
  terminateWithFailure();
}

void writeBanner() {
  std::cerr << "Note: This converter is not perfect, but it should" << std::endl;
  std::cerr << "work correctly, as long as ALL variables are named" << std::endl;
  std::cerr << "with a lower case 'x'." << std::endl;
  std::cerr << std::endl;
}

// One status line on standard output: the trace prefix, the label and the count.
void writeStatusLine(const char* label, long count) {
  std::cout << enterLevel(false) << " " << label << count << leaveLevel(false);
  lastOutputTime = std::time(nullptr);
}

}  // namespace

int runConverter(int argc, char** argv) {
  (void)QQ::infinity();  // the shared constants are ready before anything else
  if (argc != 2) printUsage(argc > 0 ? argv[0] : nullptr);
  const std::string inputName = argv[1];
  const std::string outputName = outputNameFor(inputName);
  if (outputName == inputName) printUsage(argv[0]);

  const int input = ::open(inputName.c_str(), O_RDONLY);
  if (input < 0) reportFailure("The input file [ " + inputName + " ] could not be opened!");
  const int output = ::open(outputName.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (output < 0) reportFailure("The output file [ " + outputName + " ] could not be opened!");

  writeBanner();

  InputLines lines(input);
  LpModel model;
  model.variables = discoverVariables(lines);
  lines.rewind();

  std::string sectionLine;
  model.counts = countRows(lines, inputName, sectionLine);
  writeStatusLine("InEquations: ", model.counts.lessEqual);
  writeStatusLine("Equations: ", model.counts.equations);
  writeStatusLine("Variables: ", model.variables);
  readSections(lines, sectionLine, model.variables, model.bounds);
  lines.rewind();

  readObjective(lines, model);
  lines.rewind();

  readConstraints(lines, model);
  ::close(input);

  const std::vector<InequalityRow> inequalities = pairInequalities(model);
  {
    OutputBuffer out(output);
    writeOptFile(out, model, inequalities);
  }
  ::close(output);
  return 0;
}

}  // namespace lpconv
