#include <lpconv/converter/expression_parser.h>

#include <algorithm>
#include <cstdint>
#include <utility>

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
  scanJoined(text, std::string_view(), n, out);
}

void ExpressionScanner::scanJoined(std::string_view before, std::string_view after, long n,
                                   Expression& out) {
  Coefficient& constant = out.constant;
  SparseRow& row = out.row;
  constant = Coefficient();
  row.clear();
  normaliseExpression(before, after, normalised_);
  const std::string& s = normalised_;
  const std::size_t length = s.size();
  const auto mentions = static_cast<std::size_t>(std::count(s.begin(), s.end(), 'x'));
  // A row of many mentions over few variables (a long objective naming each variable many
  // times) keeps one entry per index, found through a table of n positions; otherwise every
  // mention is an entry until the row is finished, and a row that outgrows its bound is
  // finished early so that its storage follows the distinct indices, not the mentions.
  const bool tabled = mentions >= kLongRow && static_cast<std::size_t>(n) <= length / 8;
  if (tabled && position_.size() < static_cast<std::size_t>(n) + 1) {
    position_.assign(static_cast<std::size_t>(n) + 1, 0);
  }
  std::size_t compactAt = 4 * kLongRow;
  row.reserve(std::min(mentions, compactAt));
  const auto assign = [&](long index, auto&& value) {
    if (tabled) {
      std::uint32_t& position = position_[static_cast<std::size_t>(index)];
      if (position != 0) {
        row.reassign(position - 1, std::forward<decltype(value)>(value));
        return;
      }
      position = static_cast<std::uint32_t>(row.size() + 1);
    } else if (row.size() >= compactAt) {
      row.finish();
      compactAt = std::max(compactAt, 2 * row.size());
    }
    row.assign(index, std::forward<decltype(value)>(value));
  };

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
        assign(index, current);
      } else {
        assign(index, std::move(current));
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
  if (tabled) {
    for (const RowEntry& entry : row.entries())
      position_[static_cast<std::size_t>(entry.index)] = 0;
  }

  std::size_t first = restStart;
  std::size_t last = length;
  const auto trimmed = [](char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
  };
  while (first < last && trimmed(s[first])) ++first;
  while (last > first && trimmed(s[last - 1])) --last;
  out.rest.assign(s, first, last - first);
  if (length >= kLongText) {
    // The text of a long expression is not kept for the next, short one; its memory goes back
    // before the row is sorted.
    normalised_ = std::string();
  }
  row.finish();
}

Expression parseExpression(std::string_view text, long n) {
  Expression result;
  ExpressionScanner().scan(text, n, result);
  return result;
}

}  // namespace lpconv
