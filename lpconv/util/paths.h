#pragma once
// Path splitting and file queries. File queries fold an unopenable file into -1 or false;
// nothing here reports a failure.

#include <cstdint>
#include <string>

namespace lpconv {

// Returns a pointer into path just after its last "/", or path itself when it has none
// ("/usr/x/prog" -> "prog", "dir/" -> ""). The result lives as long as path does.
const char* baseName(const char* path);

// Returns path up to and including its last "/"; empty when it has none ("a/b/c.lp" -> "a/b/").
std::string dirName(const char* path);

// Modification time of the file in whole seconds, or -1 when it cannot be opened for reading.
std::int64_t fileModificationTime(const std::string& path);

// True when b's modification time is strictly earlier than a's. When b cannot be opened the
// answer is whether a can be.
bool isNewerThan(const std::string& a, const std::string& b);

// True when the file can be opened for reading.
bool fileExists(const std::string& path);

// The first occurrence of pattern in text, or null; strstr semantics (an empty pattern is found
// at the start).
const char* findSubstring(const char* text, const char* pattern);

}  // namespace lpconv
