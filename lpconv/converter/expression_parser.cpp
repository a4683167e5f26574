#include <lpconv/converter/expression_parser.h>

#include <algorithm>

#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/number_reader.h>
#include <lpconv/converter/text_scan.h>

namespace lpconv {

namespace {

// The next position at or after `from` where a predicate holds. Scan positions only grow, so the
// last answer is reused while it is still ahead: the whole scan stays linear in the text length,
// even for texts made of thousands of signs or form feeds.
template <typename Predicate>
class NextPosition {
 public:
  NextPosition(const std::string& text, Predicate holds) : text_(text), holds_(holds) {}

  std::size_t from(std::size_t start) {
    if (!(valid_ && start >= searchedFrom_ && start <= found_)) {
      std::size_t p = start;
      while (p < text_.size() && !holds_(text_[p])) ++p;
      found_ = p;
      searchedFrom_ = start;
      valid_ = true;
    }
    return found_;  // text_.size() when there is none
  }

 private:
  const std::string& text_;
  Predicate holds_;
  bool valid_ = false;
  std::size_t searchedFrom_ = 0;
  std::size_t found_ = 0;
};

template <typename Predicate>
NextPosition(const std::string&, Predicate) -> NextPosition<Predicate>;

}  // namespace

void ExpressionScanner::scan(std::string_view text, long n, Expression& out) {
  Coefficient& constant = out.constant;
  SparseRow& row = out.row;
  constant = Coefficient();
  row.clear();
  normaliseExpression(text, normalised_);
  const std::string& s = normalised_;
  const std::size_t length = s.size();
  row.reserve(static_cast<std::size_t>(std::count(s.begin(), s.end(), 'x')));

  NextPosition nextSpaceEnd(s, [](char c) { return !isSpace(c); });
  NextPosition nextZero(s, [](char c) { return c == '0'; });
  NextPosition nextX(s, [](char c) { return c == 'x'; });

  // A zero read at `from` is an implicit coefficient unless a "0" comes before the next "x".
  const auto implicitValue = [&](Coefficient value, std::size_t from, bool negative) {
    if (!value.isZero()) return value;
    const std::size_t zero = nextZero.from(from);
    const std::size_t x = nextX.from(from);
    if (zero < length && zero < x) return Coefficient();
    return Coefficient(negative ? -1L : 1L);
  };
  // string-to-double skips leading white space itself; skipping it here through the cached
  // position keeps long runs of form feeds linear.
  const auto numberAt = [&](std::size_t from) {
    return readCoefficient(s.c_str() + nextSpaceEnd.from(from));
  };

  std::size_t pos = 0;
  while (pos < length && (s[pos] == '<' || s[pos] == '=' || s[pos] == '>')) ++pos;

  Coefficient current;
  bool pending = false;
  std::size_t restStart = length;
  while (pos < length) {
    const char c = s[pos];
    if (c == 'x') {
      const long index = readIndex(s.c_str() + nextSpaceEnd.from(pos + 1));
      checkIndex(index, n);
      // The value stays current for a variable that follows at once ("3x1x2"); otherwise the
      // next step replaces it, so it can move into the row.
      std::size_t next = pos + 1;
      while (next < length && isDigit(s[next])) ++next;
      if (next < length && s[next] == 'x') {
        row.assign(index, current);
      } else {
        row.assign(index, std::move(current));
      }
      pending = false;
    } else if (c == '<' || c == '=' || c == '>') {
      restStart = pos;
      break;
    } else if (c == '+' || c == '-') {
      if (pending) constant = add(constant, current);
      Coefficient value = numberAt(pos + 1);
      if (c == '-') value.negate();
      current = implicitValue(std::move(value), pos + 1, c == '-');
      pending = true;
    } else {
      current = implicitValue(numberAt(pos), pos, false);
      pending = true;
    }
    ++pos;
    while (pos < length && isDigit(s[pos])) ++pos;
  }
  if (pending) constant = add(constant, current);
  row.finish();

  std::size_t first = restStart;
  std::size_t last = length;
  const auto trimmed = [](char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
  };
  while (first < last && trimmed(s[first])) ++first;
  while (last > first && trimmed(s[last - 1])) --last;
  out.rest.assign(s, first, last - first);
}

Expression parseExpression(std::string_view text, long n) {
  Expression result;
  ExpressionScanner().scan(text, n, result);
  return result;
}

}  // namespace lpconv
