#include "patterns.h"

namespace lpconv {

bool search(const std::string& text, const std::string& pattern, bool caseSensitive) {
  const auto flags =
      caseSensitive ? std::regex::ECMAScript : std::regex::ECMAScript | std::regex::icase;
  return std::regex_search(text, std::regex(pattern, flags));
}

bool searchMatch(const std::string& text, const std::string& pattern, std::smatch& match) {
  return std::regex_search(text, match,
                           std::regex(pattern, std::regex::ECMAScript | std::regex::icase));
}

std::string replacePattern(const std::string& text, const std::string& pattern,
                           const std::string& replacement) {
  return std::regex_replace(text, std::regex(pattern, std::regex::ECMAScript), replacement);
}

}  // namespace lpconv
