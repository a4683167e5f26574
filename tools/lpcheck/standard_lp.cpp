#include "standard_lp.h"

#include <cctype>
#include <cstdint>
#include <unordered_set>

#include <lpconv/formats/exact_number.h>

namespace lpcheck {

namespace {

using lpconv::QQ;

enum class Kind : std::uint8_t { name, number, relation, sign, colon, other, end };

// Kept small: a large file has millions of them.
struct Token {
  const char* begin = nullptr;
  std::uint32_t length = 0;
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  Kind kind = Kind::end;
  bool firstOnLine = false;
  std::string_view text() const { return {begin, length}; }
  Place at() const { return {static_cast<long>(line), static_cast<long>(column)}; }
};

bool isNameChar(unsigned char c) {
  return std::isalnum(c) != 0 ||
         std::string_view("!\"#$%&()/,.;?@_`'{}|~").find(static_cast<char>(c)) !=
             std::string_view::npos;
}

// The tokens of the whole text; a "\" comment runs to the end of its line, a carriage return is
// a blank.
std::vector<Token> tokenize(std::string_view text) {
  std::vector<Token> tokens;
  tokens.reserve(text.size() / 4 + 1);
  long line = 1;
  std::size_t lineStart = 0;
  bool lineHasToken = false;
  std::size_t i = 0;
  const auto push = [&](Kind kind, std::size_t begin, std::size_t end) {
    tokens.push_back({text.data() + begin, static_cast<std::uint32_t>(end - begin),
                      static_cast<std::uint32_t>(line),
                      static_cast<std::uint32_t>(begin - lineStart + 1), kind, !lineHasToken});
    lineHasToken = true;
  };
  while (i < text.size()) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c == '\n') {
      ++line;
      lineStart = ++i;
      lineHasToken = false;
    } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
      ++i;
    } else if (c == '\\') {
      while (i < text.size() && text[i] != '\n') ++i;
    } else if (std::isdigit(c) != 0 ||
               (c == '.' && i + 1 < text.size() &&
                std::isdigit(static_cast<unsigned char>(text[i + 1])) != 0)) {
      std::size_t j = i;
      while (j < text.size() &&
             (std::isdigit(static_cast<unsigned char>(text[j])) != 0 || text[j] == '.'))
        ++j;
      if (j < text.size() && (text[j] == 'e' || text[j] == 'E')) {
        std::size_t k = j + 1;
        if (k < text.size() && (text[k] == '+' || text[k] == '-')) ++k;
        if (k < text.size() && std::isdigit(static_cast<unsigned char>(text[k])) != 0) {
          j = k;
          while (j < text.size() && std::isdigit(static_cast<unsigned char>(text[j])) != 0) ++j;
        }
      }
      push(Kind::number, i, j);
      i = j;
    } else if (c == '<' || c == '>' || c == '=') {
      std::size_t j = i + 1;
      if (j < text.size() && (text[j] == '=' || ((c == '=') && (text[j] == '<' || text[j] == '>'))))
        ++j;
      push(Kind::relation, i, j);
      i = j;
    } else if (c == '+' || c == '-') {
      push(Kind::sign, i, i + 1);
      ++i;
    } else if (c == ':') {
      push(Kind::colon, i, i + 1);
      ++i;
    } else if (isNameChar(c)) {
      std::size_t j = i;
      while (j < text.size() && isNameChar(static_cast<unsigned char>(text[j]))) ++j;
      push(Kind::name, i, j);
      i = j;
    } else {
      push(Kind::other, i, i + 1);
      ++i;
    }
  }
  tokens.push_back({text.data() + i, 0, static_cast<std::uint32_t>(line),
                    static_cast<std::uint32_t>(i - lineStart + 1), Kind::end, true});
  return tokens;
}

std::string lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

bool isInfinityWord(std::string_view text) {
  const std::string word = lower(text);
  return word == "inf" || word == "infinity";
}

class Parser {
 public:
  Parser(std::string_view text, const RowSink* sink) : tokens_(tokenize(text)), sink_(sink) {}

  StandardReading read() {
    try {
      readAll();
    } catch (const Stop&) {
    }
    return std::move(out_);
  }

 private:
  struct Stop {};

  const Token& peek(std::size_t ahead = 0) const {
    return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
  }
  const Token& take() {
    const Token& t = peek();
    if (next_ < tokens_.size() - 1) ++next_;
    return t;
  }
  [[noreturn]] void fail(const Place& at, std::string message) {
    out_.error = std::make_pair(at, std::move(message));
    throw Stop{};
  }

  // The section a line-first token opens ("" for none); `words` is how many tokens it takes.
  std::string keywordAt(std::size_t index, std::size_t& words) const {
    const Token& t = tokens_[index];
    words = 1;
    if (t.kind != Kind::name || !t.firstOnLine) return "";
    const Token& after = tokens_[std::min(index + 1, tokens_.size() - 1)];
    if (after.kind == Kind::colon) return "";
    const std::string word = lower(t.text());
    if (word == "maximize" || word == "maximise" || word == "maximum" || word == "max")
      return "max";
    if (word == "minimize" || word == "minimise" || word == "minimum" || word == "min")
      return "min";
    if ((word == "subject" && after.kind == Kind::name && lower(after.text()) == "to") ||
        (word == "such" && after.kind == Kind::name && lower(after.text()) == "that")) {
      if (after.line == t.line) {
        words = 2;
        return "subject to";
      }
    }
    if (word == "st" || word == "s.t." || word == "st.") return "subject to";
    if (word == "bounds" || word == "bound") return "bounds";
    if (word == "general" || word == "generals" || word == "gen" || word == "integer" ||
        word == "integers")
      return "general";
    if (word == "binary" || word == "binaries" || word == "bin") return "binary";
    if (word == "end") return "end";
    if (word == "semi-continuous" || word == "semis" || word == "semi" || word == "sos")
      return "unsupported";
    return "";
  }
  bool atKeyword() const {
    std::size_t words = 0;
    return peek().kind == Kind::end || !keywordAt(next_, words).empty();
  }

  void readAll() {
    while (peek().kind != Kind::end) {
      std::size_t words = 0;
      const std::string word = keywordAt(next_, words);
      if (word.empty()) fail(peek().at(), "expected a section keyword");
      const Place at = peek().at();
      next_ += words;
      out_.sections.push_back({word == "min" || word == "max" ? "objective" : word, at});
      if (word == "min" || word == "max") {
        readObjective(word == "min", at);
      } else if (word == "subject to") {
        while (!atKeyword()) {
          readRow(row_);
          if (sink_ != nullptr && *sink_) {
            (*sink_)(row_);
          } else {
            out_.rows.push_back(row_);
          }
        }
      } else if (word == "bounds") {
        while (!atKeyword()) readBound();
      } else if (word == "general" || word == "binary") {
        while (!atKeyword()) {
          const Token& t = take();
          if (t.kind != Kind::name) fail(t.at(), "expected a variable name");
          mention(t);
          out_.integers.emplace(std::string(t.text()), t.at());
          if (word == "binary") out_.binaries.emplace(std::string(t.text()), t.at());
        }
      } else if (word == "end") {
        return;
      } else {
        fail(at, "this section is not supported");
      }
    }
  }

  void mention(const Token& t) {
    const std::string_view name = t.text();
    // x1, x2, ... are most names: a flag per index finds them again without hashing.
    if (name.size() >= 2 && name.size() <= 8 && name[0] == 'x' && name[1] != '0') {
      std::size_t index = 0;
      bool digits = true;
      for (std::size_t i = 1; i < name.size() && digits; ++i) {
        digits = name[i] >= '0' && name[i] <= '9';
        index = index * 10 + static_cast<std::size_t>(name[i] - '0');
      }
      if (digits && index < (std::size_t{1} << 24)) {
        if (index >= seenIndex_.size())
          seenIndex_.resize(std::max(index + 1, 2 * seenIndex_.size()));
        if (seenIndex_[index]) return;
        seenIndex_[index] = true;
        out_.firstMention.emplace(std::string(name), t.at());
        return;
      }
    }
    if (mentioned_.insert(name).second) out_.firstMention.emplace(std::string(name), t.at());
  }

  // [sign] number, read exactly.
  lpconv::Coefficient number(const Token& t, bool negative) {
    lpconv::Coefficient value;
    if (lpconv::parseExactNumber(t.text(), value) != lpconv::NumberError::none) {
      fail(t.at(), "malformed number");
    }
    if (negative) value.negate();
    return value;
  }

  // Terms of one expression up to a relation sign or a keyword; constants go to `constants`.
  void readExpression(std::vector<Term>& terms,
                      std::vector<std::pair<lpconv::Coefficient, Place>>& constants,
                      bool stopAtKeyword) {
    bool firstTerm = true;
    while (true) {
      if (peek().kind == Kind::relation || peek().kind == Kind::end) return;
      if (stopAtKeyword && atKeyword()) return;
      Place start = peek().at();
      bool negative = false;
      bool signed_ = false;
      std::string written;
      while (peek().kind == Kind::sign) {
        signed_ = true;
        if (take().text() == "-") negative = !negative;
      }
      if (signed_) written = negative ? "-" : "+";
      std::optional<lpconv::Coefficient> value;
      if (peek().kind == Kind::number) {
        const Token& t = take();
        written += std::string(t.text());
        value = number(t, negative);
      }
      if (peek().kind == Kind::name && !(stopAtKeyword && atKeyword()) &&
          !isInfinityWord(peek().text())) {
        const Token& name = take();
        mention(name);
        Term term;
        term.name = std::string(name.text());
        term.value = value ? *value : lpconv::Coefficient(negative ? -1L : 1L);
        term.at = signed_ || value ? start : name.at();
        term.nameAt = name.at();
        term.written = value ? written : "";
        term.first = firstTerm;
        terms.push_back(std::move(term));
      } else if (value) {
        constants.emplace_back(*value, start);
      } else if (peek().text() == "[") {
        fail(peek().at(), "quadratic terms are not supported");
      } else {
        fail(peek().at(), "expected a term");
      }
      firstTerm = false;
    }
  }

  void readObjective(bool minimise, const Place& at) {
    Objective& objective = out_.objective;
    objective.present = true;
    objective.minimise = minimise;
    objective.senseAt = at;
    if (peek().kind == Kind::name && peek(1).kind == Kind::colon) {
      objective.label = std::string(peek().text());
      objective.at = peek().at();
      next_ += 2;
    } else {
      objective.at = peek().at();
    }
    readExpression(objective.terms, objective.constants, true);
    if (peek().kind == Kind::relation) fail(peek().at(), "a relation sign in the objective");
  }

  char senseOf(std::string_view relation) const {
    if (relation.find('<') != std::string_view::npos) return '<';
    if (relation.find('>') != std::string_view::npos) return '>';
    return '=';
  }

  // [sign] number or [sign] inf.
  lpconv::Coefficient value(Place& at, std::string* written) {
    at = peek().at();
    bool negative = false;
    std::string text;
    while (peek().kind == Kind::sign) {
      if (take().text() == "-") negative = !negative;
    }
    if (negative) text = "-";
    const Token& t = take();
    if (t.kind == Kind::name && isInfinityWord(t.text())) {
      if (written) *written = text + std::string(t.text());
      return negative ? lpconv::Coefficient::minusInfinity() : lpconv::Coefficient::infinity();
    }
    if (t.kind != Kind::number) fail(t.at(), "expected a number");
    if (written) *written = text + std::string(t.text());
    return number(t, negative);
  }

  // Into `row`, whose storage is reused.
  void readRow(Row& row) {
    row.label.clear();
    row.terms.clear();
    row.leftConstants.clear();
    row.rhsWritten.clear();
    row.at = peek().at();
    if (peek().kind == Kind::name && peek(1).kind == Kind::colon) {
      row.label = std::string(peek().text());
      next_ += 2;
    }
    readExpression(row.terms, row.leftConstants, true);
    if (peek().kind != Kind::relation) fail(peek().at(), "expected a relation sign");
    row.relationAt = peek().at();
    row.sense = senseOf(take().text());
    row.rhs = value(row.rhsAt, &row.rhsWritten);
    if (peek().kind == Kind::name && !peek().firstOnLine) {
      fail(peek().at(), "a variable on the right-hand side");
    }
    row.lastLine = tokens_[next_ - 1].line;
  }

  void setBound(const Token& name, bool lower, const lpconv::Coefficient& c, const Place& at) {
    const QQ v = c.toQQ();
    Bound& bound = out_.bounds[std::string(name.text())];
    if (lower) {
      bound.lower = v;
    } else {
      bound.upper = v;
    }
    bound.at = at;
    bound.stated = true;
  }

  void readBound() {
    const Place at = peek().at();
    if (peek().kind == Kind::name && !isInfinityWord(peek().text())) {
      const Token& name = take();
      mention(name);
      if (peek().kind == Kind::name && lower(peek().text()) == "free") {
        take();
        setBound(name, true, lpconv::Coefficient::minusInfinity(), at);
        setBound(name, false, lpconv::Coefficient::infinity(), at);
        return;
      }
      if (peek().kind != Kind::relation) fail(peek().at(), "expected a relation sign or \"free\"");
      const char sense = senseOf(take().text());
      Place valueAt;
      const lpconv::Coefficient v = value(valueAt, nullptr);
      if (sense != '>') setBound(name, false, v, at);
      if (sense != '<') setBound(name, true, v, at);
      return;
    }
    Place valueAt;
    const lpconv::Coefficient first = value(valueAt, nullptr);
    if (peek().kind != Kind::relation) fail(peek().at(), "expected a relation sign");
    const char sense = senseOf(take().text());
    const Token& name = take();
    if (name.kind != Kind::name) fail(name.at(), "expected a variable name");
    mention(name);
    if (sense != '>') setBound(name, true, first, at);
    if (sense != '<') setBound(name, false, first, at);
    if (peek().kind == Kind::relation && !peek().firstOnLine) {
      const char second = senseOf(take().text());
      const lpconv::Coefficient v = value(valueAt, nullptr);
      if (second != '>') setBound(name, false, v, at);
      if (second != '<') setBound(name, true, v, at);
    }
  }

  std::vector<Token> tokens_;
  std::unordered_set<std::string_view> mentioned_;  // views into the text
  std::vector<bool> seenIndex_;
  const RowSink* sink_;
  Row row_;
  std::size_t next_ = 0;
  StandardReading out_;
};

}  // namespace

StandardReading readStandardLp(std::string_view text, const RowSink& sink) {
  // A byte-order mark is no part of the text; its column offset is lost, not its lines.
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  return Parser(text, &sink).read();
}

}  // namespace lpcheck
