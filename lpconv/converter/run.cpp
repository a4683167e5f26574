#include <lpconv/converter/run.h>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <new>

#include <future>
#include <iostream>
#include <string>

#include <lpconv/converter/inequality_pairing.h>
#include <lpconv/converter/input_text.h>
#include <lpconv/converter/lp_reader.h>
#include <lpconv/converter/messages.h>
#include <lpconv/converter/opt_writer.h>
#include <lpconv/converter/out_of_memory.h>
#include <lpconv/converter/output_name.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/paths.h>
#include <lpconv/util/trace.h>

namespace lpconv {

namespace {

// From this many "<=" rows on, the pairing runs in a thread of its own.
constexpr std::size_t kPairAside = 1000;

// A process started without any argument word (argc 0) still gets its usage text.
[[noreturn]] void printUsage(const char* argv0) {
  std::cout << messages::kUsagePrefix << (argv0 == nullptr ? "" : baseName(argv0))
            << messages::kUsageSuffix << endLine();
  lastOutputTime = std::time(nullptr);
  terminateWithFailure();
}

// One status line on standard output: the trace prefix, the label and the count.
void writeStatusLine(const char* label, long count) {
  std::cout << enterLevel(false) << " " << label << count << leaveLevel(false);
  lastOutputTime = std::time(nullptr);
}

// Writes the whole file and closes it. A failed write or close leaves an empty file and reports
// "The output file [ name ] could not be written!".
void writeOutput(int output, const std::string& outputName, const LpModel& model) {
  // The pairing cannot fail, so it may run beside the writing of everything before its rows.
  // Small systems, and any system when no thread can be had, pair where they are written.
  const bool large = model.constraints.lessEqual.size() >= kPairAside;
  std::future<std::vector<InequalityRow>> paired =
      std::async(large ? std::launch::async | std::launch::deferred : std::launch::deferred,
                 [&model] { return pairInequalities(model.constraints); });
  bool written = false;
  {
    OutputBuffer out(output);
    writeOptFile(out, model, [&paired] { return paired.get(); });
    out.flush();
    written = !out.failed();
  }
  setOutputToEmpty(-1);
  if (!written) {
    // The file is left empty even when truncating fails: nothing more can be done about it.
    if (::ftruncate(output, 0) != 0) {
    }
    ::close(output);
    reportFailure(messages::outputNotWritten(outputName));
  }
  if (::close(output) != 0) {
    if (::truncate(outputName.c_str(), 0) != 0) {
    }
    reportFailure(messages::outputNotWritten(outputName));
  }
}

int convert(int argc, char** argv) {
  (void)QQ::infinity();  // the shared constants are ready before anything else
  if (argc != 2) printUsage(argc > 0 ? argv[0] : nullptr);
  const std::string inputName = argv[1];
  const std::string outputName = outputNameFor(inputName);
  if (outputName == inputName) printUsage(argv[0]);

  const int input = ::open(inputName.c_str(), O_RDONLY);
  if (input < 0) reportFailure(messages::inputNotOpened(inputName));
  const int output = ::open(outputName.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (output < 0) reportFailure(messages::outputNotOpened(outputName));
  setOutputToEmpty(output);

  std::cerr << messages::kBanner << std::flush;

  LpModel model;
  {
    const InputText text(input);
    model.variables = discoverVariables(text.firstPass());
    const ConstraintBlock block = countRows(text.laterPass(), inputName);
    model.counts = block.counts;
    writeStatusLine(messages::kInEquationsLabel, model.counts.lessEqual);
    writeStatusLine(messages::kEquationsLabel, model.counts.equations);
    writeStatusLine(messages::kVariablesLabel, model.variables);
    model.bounds = readSections(text.laterPass(), block, model.variables);
    // The later passes read the text the counting read: where it found the "Subject To" line and
    // the rows still hold.
    model.objective = readObjective(text.laterPass(), block, model.variables);
    model.constraints = readConstraints(block, model.variables);
  }
  ::close(input);

  writeOutput(output, outputName, model);
  return 0;
}

}  // namespace

int runConverter(int argc, char** argv) {
  // A file-size limit makes a write fail, which the writing reports, instead of ending the
  // process half-way through the file.
  std::signal(SIGXFSZ, SIG_IGN);
  reportGmpOutOfMemory();
  try {
    return convert(argc, argv);
  } catch (const std::bad_alloc&) {
    failOutOfMemory();
  }
}

}  // namespace lpconv
