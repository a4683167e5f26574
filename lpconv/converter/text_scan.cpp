#include <lpconv/converter/text_scan.h>

#include <climits>

#include <lpconv/converter/messages.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {
// Any number of this many decimal digits fits in a long.
constexpr int kSafeDigits = 18;
}  // namespace

long readIndex(const char* text) {
  // The usual index: digits at once, too few to overflow.
  long fast = 0;
  int digits = 0;
  for (; digits < kSafeDigits && isDigit(text[digits]); ++digits) {
    fast = fast * 10 + (text[digits] - '0');
  }
  if (digits > 0 && !isDigit(text[digits])) return fast;

  const char* p = text;
  while (isSpace(*p)) ++p;
  bool negative = false;
  if (*p == '+' || *p == '-') {
    negative = *p == '-';
    ++p;
  }
  // Accumulate as a negative number so that LONG_MIN is reachable, as strtol does.
  long value = 0;
  bool overflow = false;
  for (; isDigit(*p); ++p) {
    const int digit = *p - '0';
    if (value < (LONG_MIN + digit) / 10) {
      overflow = true;
    } else {
      value = value * 10 - digit;
    }
  }
  if (overflow) return negative ? LONG_MIN : LONG_MAX;
  if (negative) return value;
  return value == LONG_MIN ? LONG_MAX : -value;
}

void checkIndex(long index, long n) {
  if (index < 1 || index > n) reportFailure(messages::kArrayIndexOutOfRange);
}

bool leadsToDigit(std::string_view text, std::size_t from) {
  for (std::size_t i = from; i < text.size(); ++i) {
    const char c = text[i];
    if (c == ' ' || c == '+' || c == '-') continue;
    return isDigit(c);
  }
  reportFailure(messages::kDigitScanFailed);
}

}  // namespace lpconv
