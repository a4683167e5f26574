#include <lpconv/converter/line_matchers.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

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

constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
constexpr unsigned char kCaseBit = 0x20;

// The first position at or after `from` whose byte b has b | 0x20 equal to some c | 0x20 of
// `chars` (the text's size when there is none): every case-insensitive occurrence of those
// characters, and a few other bytes that the caller's full comparison rejects. Eight bytes are
// tested at a time; every line of the file passes through here in two passes.
template <std::size_t N>
std::size_t nextCandidate(std::string_view text, std::size_t from, const char (&chars)[N]) {
  const char* data = text.data();
  const std::size_t size = text.size();
  std::size_t i = from;
  for (; i + 8 <= size; i += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, data + i, 8);
    word |= kOnes * kCaseBit;
    std::uint64_t zeroBytes = 0;
    for (const char c : chars) {
      const std::uint64_t x = word ^ (kOnes * (static_cast<unsigned char>(c) | kCaseBit));
      zeroBytes |= (x - kOnes) & ~x;
    }
    if ((zeroBytes & kHighBits) != 0) break;
  }
  for (; i < size; ++i) {
    const unsigned char folded = static_cast<unsigned char>(data[i]) | kCaseBit;
    for (const char c : chars) {
      if (folded == (static_cast<unsigned char>(c) | kCaseBit)) return i;
    }
  }
  return size;
}

// Whether `word` (lower case) starts at position `at`, ignoring case.
bool wordAt(std::string_view text, std::size_t at, std::string_view word) {
  if (text.size() - at < word.size()) return false;
  for (std::size_t k = 0; k < word.size(); ++k) {
    if (foldCase(text[at + k]) != foldCase(word[k])) return false;
  }
  return true;
}

}  // namespace

bool containsIgnoringCase(std::string_view text, std::string_view word) {
  if (word.empty()) return true;
  const char first[] = {word[0]};
  for (std::size_t i = nextCandidate(text, 0, first); i < text.size();
       i = nextCandidate(text, i + 1, first)) {
    if (wordAt(text, i, word)) return true;
  }
  return false;
}

bool containsSubjectTo(std::string_view line) { return containsIgnoringCase(line, "subject to"); }

bool namesSection(std::string_view line) {
  static constexpr char kFirstLetters[] = {kSectionWords[0].word[0], kSectionWords[1].word[0],
                                           kSectionWords[2].word[0]};
  for (std::size_t i = nextCandidate(line, 0, kFirstLetters); i < line.size();
       i = nextCandidate(line, i + 1, kFirstLetters)) {
    for (const SectionWord& section : kSectionWords) {
      if (wordAt(line, i, section.word)) return true;
    }
  }
  return false;
}

Relation classifyRelation(std::string_view text, FirstTried first) {
  const bool less = text.find("<=") != std::string_view::npos;
  const bool greater = text.find(">=") != std::string_view::npos;
  if (first == FirstTried::kLessEqual ? less : greater) {
    return first == FirstTried::kLessEqual ? Relation::kLessEqual : Relation::kGreaterEqual;
  }
  if (first == FirstTried::kLessEqual ? greater : less) {
    return first == FirstTried::kLessEqual ? Relation::kGreaterEqual : Relation::kLessEqual;
  }
  return text.find('=') != std::string_view::npos ? Relation::kEquation : Relation::kNone;
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

std::optional<std::pair<std::size_t, std::size_t>> objectiveHeader(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon < 3) return std::nullopt;
  const std::string_view head = text.substr(0, colon);
  const std::size_t start = std::min(head.find("Min"), head.find("Max"));
  if (start == std::string_view::npos) return std::nullopt;
  return std::pair{start, colon + 1};
}

bool removeObjectiveHeader(std::string& text) {
  const auto header = objectiveHeader(text);
  if (!header) return false;
  text.erase(header->first, header->second - header->first);
  return true;
}

std::string normaliseExpression(std::string_view text) {
  std::string out;
  normaliseExpression(text, out);
  return out;
}

void normaliseExpression(std::string_view text, std::string& out) {
  normaliseExpression(text, std::string_view(), out);
}

void normaliseExpression(std::string_view before, std::string_view after, std::string& out) {
  // Without branches: blanks come every few characters, at no position a branch could foresee.
  out.resize(before.size() + after.size());
  char* const begin = out.data();
  char* end = begin;
  bool lastKeptIsSign = false;
  bool signPairs = false;  // two signs in a row: only then can a replacement change anything
  for (const std::string_view piece : {before, after}) {
    for (const char c : piece) {
      const bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\n';
      const bool sign = c == '+' || c == '-';
      signPairs |= sign & lastKeptIsSign;
      lastKeptIsSign = sign | (blank & lastKeptIsSign);
      *end = c;
      end += blank ? 0 : 1;
    }
  }
  out.resize(static_cast<std::size_t>(end - begin));
  if (!signPairs) return;
  replacePairs(out, '+', '-', '-');
  replacePairs(out, '-', '+', '-');
  replacePairs(out, '-', '-', '+');
  replacePairs(out, '+', '+', '+');
}

}  // namespace lpconv
