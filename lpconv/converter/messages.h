#pragma once
// The converter's fixed texts, byte for byte as they are written. The index failure is the
// containers' own ("Array: index out of range", lpconv/containers/messages.h).

#include <string>

#include <lpconv/containers/messages.h>

namespace lpconv::messages {

inline constexpr char kBanner[] =
    "Note: This converter is not perfect, but it should\n"
    "work correctly, as long as ALL variables are named\n"
    "with a lower case 'x'.\n"
    "\n";
inline constexpr char kUsagePrefix[] = "Usage: ";
inline constexpr char kUsageSuffix[] = " *.lp";

inline constexpr char kInEquationsLabel[] = "InEquations: ";
inline constexpr char kEquationsLabel[] = "Equations: ";
inline constexpr char kVariablesLabel[] = "Variables: ";

inline constexpr char kUnbalanced[] = "The amount of <= and >= equations differ!";
inline constexpr char kDigitScanFailed[] = "scan for digit failed!";
inline constexpr char kObjectiveRelationSign[] = "Objective function error: relation sign found!";
inline constexpr char kNoRelationSign[] = "relation error: no sign found!";
inline constexpr char kOutOfMemory[] = "Out of memory";

inline std::string inputNotOpened(const std::string& name) {
  return "The input file [ " + name + " ] could not be opened!";
}
inline std::string outputNotOpened(const std::string& name) {
  return "The output file [ " + name + " ] could not be opened!";
}
inline std::string outputNotWritten(const std::string& name) {
  return "The output file [ " + name + " ] could not be written!";
}
inline std::string fileIncomplete(const std::string& argument) {
  return "The file [ " + argument + " ] is incomplete!";
}

}  // namespace lpconv::messages
