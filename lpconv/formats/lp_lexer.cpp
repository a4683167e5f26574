#include <lpconv/formats/lp_lexer.h>

#include <lpconv/formats/lp_syntax.h>

namespace lpconv::detail {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// The length of the number at the start of `s`: digits [. digits] [(e|E) [sign] digits] [/ digits].
// The exponent counts only when a digit follows it, so "2e" is the number 2 and the name e.
std::size_t numberLength(std::string_view s) {
  std::size_t i = 0;
  while (i < s.size() && isDigit(s[i])) ++i;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && isDigit(s[i])) ++i;
  }
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    std::size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    if (j < s.size() && isDigit(s[j])) {
      while (j < s.size() && isDigit(s[j])) ++j;
      i = j;
    }
  }
  if (i < s.size() && s[i] == '/' && i + 1 < s.size() && isDigit(s[i + 1])) {
    i += 2;
    while (i < s.size() && isDigit(s[i])) ++i;
  }
  // "0x1F": the whole hexadecimal text, so that the reader can name it.
  if (i == 1 && s[0] == '0' && s.size() > 2 && (s[1] == 'x' || s[1] == 'X') && isHexDigit(s[2])) {
    i = 2;
    while (i < s.size() && (isHexDigit(s[i]) || s[i] == '.' || s[i] == 'p' || s[i] == 'P')) ++i;
  }
  return i;
}

}  // namespace

bool LpLexer::loadLine() {
  std::string_view line;
  while (source_.next(line)) {
    std::size_t i = 0;
    while (i < line.size() && isBlank(line[i])) ++i;
    if (i == line.size() || line[i] == '\\') continue;  // nothing but blanks or a comment
    slot_ = (slot_ + 1) % kKeptLines;
    lines_[slot_].assign(line.data(), line.size());
    lineNumbers_[slot_] = source_.lineNumber();
    position_ = i;
    tokenOnLine_ = false;
    return true;
  }
  return false;
}

void LpLexer::scan(LpToken& out) {
  for (;;) {
    if (!haveLine_) {
      if (atEnd_ || !loadLine()) {
        atEnd_ = true;
        out = LpToken{};
        out.line = 0;
        return;
      }
      haveLine_ = true;
    }
    const std::string& line = lines_[slot_];
    while (position_ < line.size() && isBlank(line[position_])) ++position_;
    if (position_ == line.size() || line[position_] == '\\') {
      haveLine_ = false;
      continue;
    }
    const std::size_t start = position_;
    const std::string_view rest(line.data() + start, line.size() - start);
    const auto c = static_cast<unsigned char>(rest[0]);
    const char next = rest.size() > 1 ? rest[1] : '\0';
    std::size_t length = 1;
    LpTokenKind kind = LpTokenKind::other;
    if (isLpNameStart(c)) {
      kind = LpTokenKind::name;
      while (length < rest.size() && isLpNameChar(static_cast<unsigned char>(rest[length]))) {
        ++length;
      }
    } else if (isDigit(static_cast<char>(c)) || c == '.') {
      kind = LpTokenKind::number;
      length = numberLength(rest);
      if (length == 0) length = 1;  // a lone point: not a number, said by the reader
    } else {
      switch (c) {
        case '+':
          kind = LpTokenKind::plus;
          break;
        case '-':
          if (next == '>') {
            kind = LpTokenKind::implies;
            length = 2;
          } else {
            kind = LpTokenKind::minus;
          }
          break;
        case ':':
          kind = LpTokenKind::colon;
          break;
        case '<':
          if (next == '=') length = 2;
          kind = LpTokenKind::lessEqual;
          break;
        case '>':
          if (next == '=') length = 2;
          kind = LpTokenKind::greaterEqual;
          break;
        case '=':
          kind = LpTokenKind::equal;
          if (next == '<') {
            kind = LpTokenKind::lessEqual;
            length = 2;
          } else if (next == '>') {
            kind = LpTokenKind::greaterEqual;
            length = 2;
          } else if (next == '=') {
            length = 2;
          }
          break;
        case '[':
        case ']':
          kind = LpTokenKind::bracket;
          break;
        default:
          break;
      }
    }
    position_ = start + length;
    out.kind = kind;
    out.text = std::string_view(line.data() + start, length);
    out.line = lineNumbers_[slot_];
    out.column = static_cast<long>(start) + 1;
    out.firstOnLine = !tokenOnLine_;
    out.slot = static_cast<std::uint8_t>(slot_);
    tokenOnLine_ = true;
    return;
  }
}

const LpToken& LpLexer::peek(std::size_t ahead) {
  while (count_ <= ahead) {
    scan(ahead_[(first_ + count_) % kLookahead]);
    ++count_;
  }
  return ahead_[(first_ + ahead) % kLookahead];
}

LpToken LpLexer::take() {
  peek(0);
  LpToken t = ahead_[first_];
  first_ = (first_ + 1) % kLookahead;
  --count_;
  return t;
}

Diagnostic LpLexer::diagnostic(Severity severity, const LpToken& at, std::string message) const {
  Diagnostic d;
  d.severity = severity;
  d.file = source_.name();
  d.message = std::move(message);
  if (at.line > 0) {
    d.line = at.line;
    d.column = at.column;
    if (lineNumbers_[at.slot] == at.line) d.sourceLine = lines_[at.slot];
  }
  return d;
}

void LpLexer::fail(const LpToken& at, std::string message) const {
  throw ParseError(diagnostic(Severity::error, at, std::move(message)));
}

}  // namespace lpconv::detail
