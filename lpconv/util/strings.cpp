#include <lpconv/util/strings.h>

#include <cctype>

namespace lpconv {

std::string replaceAll(const std::string& text, const std::string& pattern,
                       const std::string& replacement) {
  std::string result = text;
  if (pattern.empty()) return result;
  std::string::size_type position = 0;
  while ((position = result.find(pattern, position)) != std::string::npos) {
    result.replace(position, pattern.size(), replacement);
    position += replacement.size();
  }
  return result;
}

std::string trimLeft(const std::string& text, const std::string& set) {
  const std::string::size_type first = text.find_first_not_of(set);
  if (first == std::string::npos) return std::string();
  if (first == 0) return text;
  return text.substr(first);
}

std::string trimRight(const std::string& text, const std::string& set) {
  const std::string::size_type last = text.find_last_not_of(set);
  if (last == std::string::npos) return std::string();
  return text.substr(0, last + 1);
}

std::string trim(const std::string& text, const std::string& set) {
  return trimRight(trimLeft(text, set), set);
}

bool endsWith(const std::string& text, const std::string& suffix) {
  if (suffix.size() > text.size()) return false;
  return text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

namespace {

// The byte goes in as a plain (signed) char value; the C functions are defined for EOF too,
// and glibc's tables answer for the negative range, so this is what the locale says.
template <typename Map>
std::string mapBytes(const std::string& text, Map map) {
  std::string result = text;
  for (char& c : result) c = static_cast<char>(map(static_cast<signed char>(c)));
  return result;
}

}  // namespace

std::string toLower(const std::string& text) {
  return mapBytes(text, [](int c) { return std::tolower(c); });
}

std::string toUpper(const std::string& text) {
  return mapBytes(text, [](int c) { return std::toupper(c); });
}

}  // namespace lpconv
