// The text form of QQ: the writer, the string parser and the stream reader.

#include <lpconv/numbers/internal/mixed_text.h>
#include <lpconv/numbers/internal/wide_int.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

#include <cctype>
#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lpconv {

namespace {

// The largest exponent magnitude the exponent pass forms 10 to. A fractional exponent needs a
// power and a root of 10 whose orders are its numerator and denominator; both are kept below
// kMaxFractionTerm, far beyond what a decimal text writes and cheap to compute.
constexpr unsigned long kMaxExponent = 1000000;
constexpr unsigned long kMaxFractionTerm = 1000;

// Reads an integer field with GMP's base-0 rules; throws std::invalid_argument("mpz_set_str").
ZZ readInteger(std::string_view text) {
  char buffer[64];
  if (text.size() < sizeof buffer) {
    text.copy(buffer, text.size());
    buffer[text.size()] = '\0';
    return ZZ(static_cast<const char*>(buffer));
  }
  return ZZ(std::string(text));
}

void flipNegative(QQ& r, ZZ& field) {
  if (field.sign() < 0) {
    r.isPositive = !r.isPositive;
    abs(field);
  }
}

std::string_view skipSpace(std::string_view text) {
  std::size_t start = 0;
  while (start < text.size() && std::isspace(static_cast<unsigned char>(text[start]))) ++start;
  return text.substr(start);
}

std::size_t leadingZeros(std::string_view text) {
  const std::size_t firstNonZero = text.find_first_not_of('0');
  return firstNonZero == std::string_view::npos ? text.size() : firstNonZero;
}

// One "." / "," or ":" level of a text without exponent letters, waiting for the value of the
// text after its separator.
struct PendingLevel {
  bool mixed;
  bool positive;
  long zeros;
  ZZ ganze;
};

// No separator: an integer (kept as read, without normalisation) or "inf".
QQ parseWhole(std::string_view text, bool positive) {
  if (text.front() != 'i') {
    QQ r;
    r.ganze = readInteger(text);
    r.isPositive = positive || r.ganze.isZero();
    return r;
  }
  if (text.size() < 2 || text[1] != 'n') reportFailure(messages::kParseError2);
  if (text.size() < 3 || text[2] != 'f') reportFailure(messages::kParseError3);
  return QQ(positive);
}

QQ parseFraction(std::string_view text, std::size_t separator, bool positive) {
  QQ r;
  r.isPositive = positive;
  r.nenner = readInteger(text.substr(separator + 1));
  if (r.nenner.isZero()) reportFailure(messages::kDivisionByZero1);
  r.isInf = false;
  r.zaehler = readInteger(text.substr(0, separator));
  flipNegative(r, r.zaehler);
  flipNegative(r, r.nenner);
  normalize(r);
  return r;
}

// I "." F, I "," F: only the integer part of the value t of F (after its leading zeros) counts.
QQ finishDecimal(PendingLevel& level, QQ& t) {
  QQ r;
  r.isPositive = level.positive;
  r.ganze = std::move(level.ganze);
  ZZ digits = std::move(t.ganze);
  stripTrailingZeros(digits);
  const long places = level.zeros + digitCount(digits);
  r.zaehler = std::move(digits);
  mpz_ui_pow_ui(r.nenner.value, 10, static_cast<unsigned long>(places));
  r.isInf = false;
  normalize(r);
  return r;
}

// I ":" N "/" D, the writer's mixed form; t is the value of the text after ":".
QQ finishMixed(PendingLevel& level, QQ& t) {
  if (!t.isPositive) reportFailure(messages::kMalformedNumber1);
  if (!t.ganze.isZero()) reportFailure(messages::kMalformedNumber2);
  QQ r;
  r.isPositive = level.positive;
  r.ganze = std::move(level.ganze);
  r.zaehler = std::move(t.zaehler);
  r.nenner = std::move(t.nenner);
  r.isInf = false;
  normalize(r);
  return r;
}

// A text without exponent letters. The decimal and mixed forms parse the text after their
// separator by the same rules; those levels are collected first, left to right, and finished
// from the innermost outwards, so a failure is reported at the same level as by recursion.
QQ parseMantissa(std::string_view text) {
  std::vector<PendingLevel> levels;
  QQ t;
  for (;;) {
    text = skipSpace(text);
    if (detail::parsePlainInteger(text, t)) break;
    bool positive = true;
    if (!text.empty() && text.front() == '-') {
      positive = false;
      text.remove_prefix(1);
    } else if (!text.empty() && text.front() == '+') {
      text.remove_prefix(1);
    }
    if (text.empty()) reportFailure(messages::kParseError1);
    const std::size_t separator = text.find_first_of("/,.:");
    if (separator == std::string_view::npos) {
      t = parseWhole(text, positive);
      break;
    }
    if (text[separator] == '/') {
      t = parseFraction(text, separator, positive);
      break;
    }
    const bool mixed = text[separator] == ':';
    PendingLevel level{mixed, positive, 0, readInteger(text.substr(0, separator))};
    text.remove_prefix(separator + 1);
    if (mixed) {
      if (!text.empty() && text.front() == '0') reportFailure(messages::kMalformedNumber1);
    } else {
      const std::size_t zeros = leadingZeros(text);
      level.zeros = static_cast<long>(zeros);
      text.remove_prefix(zeros);
    }
    levels.push_back(std::move(level));
  }
  while (!levels.empty()) {
    PendingLevel& level = levels.back();
    t = level.mixed ? finishMixed(level, t) : finishDecimal(level, t);
    levels.pop_back();
  }
  return t;
}

// Whether 10^e can be formed: |e| <= kMaxExponent, and a fractional part whose power and root
// stay below kMaxFractionTerm. Looks at the fields as they are (a parsed integer may carry its
// sign in ganze). An infinite exponent needs no power of 10 ("1einf" is inf, "1e-inf" is 0).
bool exponentInRange(const QQ& e) {
  if (e.isInf) return true;
  if (mpz_cmpabs_ui(e.ganze.value, kMaxExponent) > 0) return false;
  if (e.zaehler.isZero()) return true;
  return mpz_cmpabs_ui(e.ganze.value, kMaxExponent) < 0 &&
         mpz_cmpabs_ui(e.zaehler.value, kMaxFractionTerm) <= 0 &&
         mpz_cmpabs_ui(e.nenner.value, kMaxFractionTerm) <= 0;
}

// M "e" E, where E may itself carry exponents: "1e2e3" is 1 · 10^(2 · 10^3). The mantissas are
// parsed left to right and the powers formed right to left, as the nesting reads.
QQ parseText(std::string_view text) {
  text = skipSpace(text);
  std::size_t letter = text.find_first_of("eE");
  if (letter == std::string_view::npos) return parseMantissa(text);
  struct Level {
    QQ mantissa;
    bool negativeExponent;
  };
  std::vector<Level> levels;
  levels.push_back({parseMantissa(text.substr(0, letter)), false});
  QQ exponent;
  for (;;) {
    std::string_view rest = text.substr(letter + 1);
    bool negative = false;
    if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) {
      negative = rest.front() == '-';
      rest.remove_prefix(1);
    }
    rest.remove_prefix(leadingZeros(rest));
    levels.back().negativeExponent = negative;
    if (rest.empty()) {
      exponent = QQ();
      break;
    }
    text = skipSpace(rest);
    letter = text.find_first_of("eE");
    if (letter == std::string_view::npos) {
      exponent = parseMantissa(text);
      break;
    }
    levels.push_back({parseMantissa(text.substr(0, letter)), false});
  }
  static const QQ kTen(10L);
  for (;;) {
    Level& level = levels.back();
    if (level.negativeExponent) exponent = -std::move(exponent);
    if (!exponentInRange(exponent)) reportFailure(messages::kExponentOutOfRange);
    QQ value = level.mantissa * power(kTen, exponent);
    levels.pop_back();
    if (levels.empty()) return value;
    exponent = std::move(value);
  }
}

}  // namespace

// The parser reads up to the first NUL, as it would from a C string.
QQ::QQ(const std::string& text) : QQ(parseText(std::string_view(text.c_str()))) {}

QQ::QQ(const char* text) : QQ(parseText(std::string_view(text))) {}

namespace {

struct FieldSink {
  static bool isZero(const ZZ& z) { return z.isZero(); }
  static bool isOne(const ZZ& z) { return detail::isOne(z.value); }
};

struct TextSink : FieldSink {
  std::string& out;
  explicit TextSink(std::string& out) : out(out) {}
  void mark(char c) { out.push_back(c); }
  void part(const ZZ& z) { appendText(out, z); }
};

struct LengthSink : FieldSink {
  long length = 0;
  void mark(char) { ++length; }
  void part(const ZZ& z) { length += digitCount(z) + (z.sign() < 0 ? 1 : 0); }
};

}  // namespace

void appendText(std::string& out, const QQ& x) {
  if (x.isInf) {
    out.append(x.isPositive ? "inf" : "-inf");
    return;
  }
  TextSink sink(out);
  detail::layOutMixed(sink, !x.isPositive, x.ganze, x.zaehler, x.nenner);
}

long textLength(const QQ& x) {
  if (x.isInf) return x.isPositive ? 3 : 4;
  LengthSink sink;
  detail::layOutMixed(sink, !x.isPositive, x.ganze, x.zaehler, x.nenner);
  return sink.length;
}

std::string toString(const QQ& x) {
  std::string text;
  appendText(text, x);
  return text;
}

std::ostream& operator<<(std::ostream& os, const QQ& x) {
  const std::string text = toString(x);
  return os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::istream& operator>>(std::istream& is, QQ& x) {
  // Reads through the stream buffer but keeps the state bits of the character-wise reading:
  // a look at the end of the input sets eofbit, and every look after that (the stream no
  // longer good) sets failbit.
  std::streambuf* buffer = is.rdbuf();
  const auto peek = [&is, buffer]() -> int {
    if (!is.good()) {
      is.setstate(std::ios_base::failbit);
      return std::char_traits<char>::eof();
    }
    const int c = buffer->sgetc();
    if (c == std::char_traits<char>::eof()) is.setstate(std::ios_base::eofbit);
    return c;
  };
  if (buffer == nullptr) {
    skipDelimitersAndComments(is, " \t\r\n");
    x = parseText("");
    return is;
  }
  int c = peek();
  while (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
    buffer->sbumpc();
    c = peek();
  }
  if (c == '/') {
    skipDelimitersAndComments(is, " \t\r\n");
    c = peek();
  }
  std::string token;
  for (; c >= '+' && c <= ':'; c = peek()) {
    token.push_back(static_cast<char>(c));
    buffer->sbumpc();
  }
  // The character-wise reading looks once more here; at the end of the input that sets failbit.
  if (peek() == 'i') {
    // An "i" or "in" that is not completed is consumed all the same.
    buffer->sbumpc();
    if (peek() == 'n') {
      buffer->sbumpc();
      if (peek() == 'f') {
        token.append("inf");
        buffer->sbumpc();
      }
    }
  }
  x = parseText(token);
  return is;
}

bool detail::parsePlainInteger(std::string_view text, QQ& r) {
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty() || text.size() > 18 || (text.front() == '0' && text.size() > 1)) return false;
  std::uint64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
  }
  setSmallInteger(r, value, negative);
  return true;
}

}  // namespace lpconv
