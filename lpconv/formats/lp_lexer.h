#pragma once
// The tokens of a CPLEX LP file, read line by line with a few tokens of lookahead. A token's text
// stays valid while its line is one of the last few lines that held tokens, so the reader can
// look past a line end without copying what it holds.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <lpconv/formats/diagnostics.h>
#include <lpconv/formats/line_source.h>

namespace lpconv::detail {

enum class LpTokenKind : std::uint8_t {
  end,           // the end of the input
  name,          // a name or a keyword
  number,        // digits, a decimal point, an exponent, "p/q" (checked when it is read)
  plus,          // +
  minus,         // -
  colon,         // :
  lessEqual,     // <=, =<, <
  greaterEqual,  // >=, =>, >
  equal,         // =, ==
  implies,       // -> (indicator constraints)
  bracket,       // [ or ] (quadratic terms)
  other,         // any other character
};

struct LpToken {
  LpTokenKind kind = LpTokenKind::end;
  std::string_view text;
  long line = 0;
  long column = 0;  // 1-based byte column
  bool firstOnLine = false;
  std::uint8_t slot = 0;  // the kept line the text lies in
};

inline bool isRelation(LpTokenKind kind) {
  return kind == LpTokenKind::lessEqual || kind == LpTokenKind::greaterEqual ||
         kind == LpTokenKind::equal;
}

class LpLexer {
 public:
  static constexpr std::size_t kLookahead = 3;

  explicit LpLexer(LineSource& source) : source_(source) {}

  // The token `ahead` places on (0: the next one), ahead < kLookahead.
  const LpToken& peek(std::size_t ahead = 0);
  LpToken take();

  // A message at the token's place (the file as a whole for the end of the input).
  Diagnostic diagnostic(Severity severity, const LpToken& at, std::string message) const;
  [[noreturn]] void fail(const LpToken& at, std::string message) const;
  const std::string& fileName() const { return source_.name(); }

 private:
  static constexpr std::size_t kKeptLines = 4;

  void scan(LpToken& out);
  bool loadLine();

  LineSource& source_;
  std::array<std::string, kKeptLines> lines_;
  std::array<long, kKeptLines> lineNumbers_{};
  std::size_t slot_ = kKeptLines - 1;
  bool haveLine_ = false;
  bool atEnd_ = false;
  bool tokenOnLine_ = false;
  std::size_t position_ = 0;

  std::array<LpToken, kLookahead> ahead_;
  std::size_t first_ = 0;  // ring of buffered tokens
  std::size_t count_ = 0;
};

}  // namespace lpconv::detail
