#pragma once
// Byte-string operations: replacing, trimming, suffix test and case mapping. None modifies its
// argument; each returns a new string. No encoding awareness.

#include <string>

namespace lpconv {

// Returns text with every occurrence of pattern replaced by replacement, left to right. The
// search resumes after the inserted replacement, so inserted text is never rescanned:
// replaceAll("aaa", "a", "aa") is "aaaaaa". An empty pattern matches nowhere: text is returned
// unchanged (searching for it would find it again after every insertion and never end).
std::string replaceAll(const std::string& text, const std::string& pattern,
                       const std::string& replacement);

// Returns text without its leading characters that belong to set (empty when all do).
std::string trimLeft(const std::string& text, const std::string& set);

// Returns text without its trailing characters that belong to set (empty when all do).
std::string trimRight(const std::string& text, const std::string& set);

// trimRight of trimLeft, both with set.
std::string trim(const std::string& text, const std::string& set);

// True when text ends with suffix; an empty suffix ends every text.
bool endsWith(const std::string& text, const std::string& suffix);

// Every byte passed through tolower / toupper as a signed character value (bytes of 128 and
// above arrive negative), so the current C locale decides what changes.
std::string toLower(const std::string& text);
std::string toUpper(const std::string& text);

}  // namespace lpconv
