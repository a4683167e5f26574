#include <lpconv/converter/line_matchers.h>

#include <algorithm>

#include <lpconv/converter/text_scan.h>

namespace lpconv {

namespace {

// Replaces, in place, every non-overlapping occurrence of a two-character pair by one character,
// left to right; the text only shrinks, so the write position never passes the read position.
void replacePairs(std::string& text, char first, char second, char replacement) {
  std::size_t out = 0;
  const std::size_t size = text.size();
  for (std::size_t i = 0; i < size; ++i) {
    if (text[i] == first && i + 1 < size && text[i + 1] == second) {
      text[out++] = replacement;
      ++i;
    } else {
      text[out++] = text[i];
    }
  }
  text.resize(out);
}

}  // namespace

bool containsIgnoringCase(std::string_view text, std::string_view word) {
  if (word.empty()) return true;
  if (text.size() < word.size()) return false;
  const char first = foldCase(word[0]);
  const std::size_t last = text.size() - word.size();
  for (std::size_t i = 0; i <= last; ++i) {
    if (foldCase(text[i]) != first) continue;
    std::size_t j = 1;
    while (j < word.size() && foldCase(text[i + j]) == foldCase(word[j])) ++j;
    if (j == word.size()) return true;
  }
  return false;
}

bool containsSubjectTo(std::string_view line) { return containsIgnoringCase(line, "subject to"); }

bool startsSection(std::string_view line) {
  // One pass for all words, skipping characters that start none of them. Every line of the file
  // goes through here in three of the four passes.
  static const auto kStarts = [] {
    std::array<bool, 256> table{};
    for (const SectionWord& section : kSectionWords) {
      const auto first = static_cast<unsigned char>(section.word[0]);
      table[first] = true;
      table[static_cast<unsigned char>(first - 'a' + 'A')] = true;
    }
    return table;
  }();
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (!kStarts[static_cast<unsigned char>(line[i])]) continue;
    const char c = foldCase(line[i]);
    for (const SectionWord& section : kSectionWords) {
      const std::string_view word = section.word;
      if (c != word[0] || line.size() - i < word.size()) continue;
      std::size_t k = 1;
      while (k < word.size() && foldCase(line[i + k]) == word[k]) ++k;
      if (k == word.size()) return true;
    }
  }
  return false;
}

std::optional<std::string_view> firstVariableDigits(std::string_view line) {
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    if (foldCase(line[i]) != 'x' || !isDigit(line[i + 1])) continue;
    std::size_t end = i + 1;
    while (end < line.size() && isDigit(line[end])) ++end;
    return line.substr(i + 1, end - i - 1);
  }
  return std::nullopt;
}

bool hasMinimiseHeader(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon < 3) return false;
  return containsIgnoringCase(text.substr(0, colon), "min");
}

bool removeObjectiveHeader(std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos || colon < 3) return false;
  const std::string_view head = std::string_view(text).substr(0, colon);
  const std::size_t min = head.find("Min");
  const std::size_t max = head.find("Max");
  const std::size_t start = std::min(min, max);
  if (start == std::string_view::npos) return false;
  text.erase(start, colon + 1 - start);
  return true;
}

std::string normaliseExpression(std::string_view text) {
  std::string compact;
  compact.reserve(text.size());
  bool signPairs = false;  // two signs in a row: only then can a replacement change anything
  for (const char c : text) {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
    if ((c == '+' || c == '-') && !compact.empty() &&
        (compact.back() == '+' || compact.back() == '-')) {
      signPairs = true;
    }
    compact.push_back(c);
  }
  if (!signPairs) return compact;
  replacePairs(compact, '+', '-', '-');
  replacePairs(compact, '-', '+', '-');
  replacePairs(compact, '-', '-', '+');
  replacePairs(compact, '+', '+', '+');
  return compact;
}

}  // namespace lpconv
