#pragma once
// Regular-expression searches and replacement on the standard library's ECMAScript engine. The
// pattern is compiled anew at every call; these are the plain, slow reference forms. A pattern
// that does not compile throws std::regex_error.

#include <regex>
#include <string>

namespace lpconv {

// True when pattern matches somewhere in text; with caseSensitive false the pattern is compiled
// case-insensitive.
bool search(const std::string& text, const std::string& pattern, bool caseSensitive);

// True when pattern matches somewhere in text, always case-insensitive. match receives the first
// match and its groups; it refers into text, which must outlive it (hence no temporaries).
bool searchMatch(const std::string& text, const std::string& pattern, std::smatch& match);
bool searchMatch(std::string&& text, const std::string& pattern, std::smatch& match) = delete;

// Returns text with every match of pattern, left to right and without overlap, replaced by
// replacement (case-sensitive; "$&", "$1" and the other ECMAScript replacement forms apply).
std::string replacePattern(const std::string& text, const std::string& pattern,
                           const std::string& replacement);

}  // namespace lpconv
