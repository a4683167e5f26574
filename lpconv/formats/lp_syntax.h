#pragma once
// The words and characters of the CPLEX LP format, shared by its reader and its writer: the
// section keywords in one table, the characters a name may hold, the infinity words.

#include <optional>
#include <string_view>

#include <lpconv/model/model.h>

namespace lpconv::detail {

enum class LpSection {
  none,
  objective,
  constraints,
  bounds,
  generals,
  binaries,
  end,
  unsupported,
};

struct LpKeyword {
  std::string_view word;    // lower case
  std::string_view second;  // a second word that must follow on the line ("subject to"), or ""
  bool secondOptional;      // "subject" alone starts the constraints too
  LpSection section;
  ObjectiveSense sense;     // for the objective keywords
  const char* unsupported;  // the message for a section the model cannot hold
};

// The keyword `word` starts (compared without regard to case), if any.
const LpKeyword* findLpKeyword(std::string_view word);

// Whether `word` is, in any case, a word the reader treats specially somewhere: a section
// keyword or its second word, "free", "inf", "infinity", "nan". The writer renames such names.
bool isReservedLpWord(std::string_view word);

bool isLpNameStart(unsigned char c);
bool isLpNameChar(unsigned char c);

// "inf" or "infinity" in any case.
bool isInfinityWord(std::string_view word);
bool equalsLower(std::string_view text, std::string_view lowerWord);

}  // namespace lpconv::detail
