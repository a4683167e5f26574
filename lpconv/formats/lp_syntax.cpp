#include <lpconv/formats/lp_syntax.h>

namespace lpconv::detail {

namespace {

constexpr ObjectiveSense kMin = ObjectiveSense::minimize;
constexpr ObjectiveSense kMax = ObjectiveSense::maximize;

constexpr LpKeyword kKeywords[] = {
    {"minimize", "", false, LpSection::objective, kMin, nullptr},
    {"minimise", "", false, LpSection::objective, kMin, nullptr},
    {"minimum", "", false, LpSection::objective, kMin, nullptr},
    {"min", "", false, LpSection::objective, kMin, nullptr},
    {"maximize", "", false, LpSection::objective, kMax, nullptr},
    {"maximise", "", false, LpSection::objective, kMax, nullptr},
    {"maximum", "", false, LpSection::objective, kMax, nullptr},
    {"max", "", false, LpSection::objective, kMax, nullptr},
    {"subject", "to", true, LpSection::constraints, kMin, nullptr},
    {"such", "that", false, LpSection::constraints, kMin, nullptr},
    {"st", "", false, LpSection::constraints, kMin, nullptr},
    {"st.", "", false, LpSection::constraints, kMin, nullptr},
    {"s.t.", "", false, LpSection::constraints, kMin, nullptr},
    {"s.t", "", false, LpSection::constraints, kMin, nullptr},
    {"bounds", "", false, LpSection::bounds, kMin, nullptr},
    {"bound", "", false, LpSection::bounds, kMin, nullptr},
    {"general", "", false, LpSection::generals, kMin, nullptr},
    {"generals", "", false, LpSection::generals, kMin, nullptr},
    {"gen", "", false, LpSection::generals, kMin, nullptr},
    {"integer", "", false, LpSection::generals, kMin, nullptr},
    {"integers", "", false, LpSection::generals, kMin, nullptr},
    {"int", "", false, LpSection::generals, kMin, nullptr},
    {"binary", "", false, LpSection::binaries, kMin, nullptr},
    {"binaries", "", false, LpSection::binaries, kMin, nullptr},
    {"bin", "", false, LpSection::binaries, kMin, nullptr},
    {"semi", "", false, LpSection::unsupported, kMin, "semi-continuous sections are not supported"},
    {"semis", "", false, LpSection::unsupported, kMin,
     "semi-continuous sections are not supported"},
    {"sos", "", false, LpSection::unsupported, kMin, "SOS sections are not supported"},
    {"sos1", "", false, LpSection::unsupported, kMin, "SOS sections are not supported"},
    {"sos2", "", false, LpSection::unsupported, kMin, "SOS sections are not supported"},
    {"lazy", "constraints", false, LpSection::unsupported, kMin,
     "lazy constraints are not supported"},
    {"user", "cuts", false, LpSection::unsupported, kMin, "user cuts are not supported"},
    {"end", "", false, LpSection::end, kMin, nullptr},
};

constexpr std::string_view kOtherReserved[] = {
    "free", "inf", "infinity", "nan", "to", "that", "constraints", "cuts", "semi-continuous"};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool equalsLower(std::string_view text, std::string_view lowerWord) {
  if (text.size() != lowerWord.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (lower(text[i]) != lowerWord[i]) return false;
  }
  return true;
}

const LpKeyword* findLpKeyword(std::string_view word) {
  // Every keyword is short; a long word is a name without a look at the table.
  if (word.size() > 8) return nullptr;
  for (const LpKeyword& k : kKeywords) {
    if (equalsLower(word, k.word)) return &k;
  }
  return nullptr;
}

bool isReservedLpWord(std::string_view word) {
  if (findLpKeyword(word) != nullptr) return true;
  for (std::string_view w : kOtherReserved) {
    if (equalsLower(word, w)) return true;
  }
  return false;
}

bool isLpNameChar(unsigned char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  if (c >= 0x80) return true;  // names in an 8-bit or UTF-8 encoding
  switch (c) {
    case '!':
    case '"':
    case '#':
    case '$':
    case '%':
    case '&':
    case '(':
    case ')':
    case ',':
    case '.':
    case ';':
    case '?':
    case '@':
    case '_':
    case '\'':
    case '`':
    case '{':
    case '}':
    case '~':
    case '|':
    case '/':
      return true;
    default:
      return false;
  }
}

bool isLpNameStart(unsigned char c) {
  return isLpNameChar(c) && !(c >= '0' && c <= '9') && c != '.';
}

bool isInfinityWord(std::string_view word) {
  return equalsLower(word, "inf") || equalsLower(word, "infinity");
}

}  // namespace lpconv::detail
