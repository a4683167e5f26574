#include <lpconv/util/durations.h>

#include <sstream>

namespace lpconv {

std::string formatDuration(std::int64_t seconds) {
  std::ostringstream out;
  if (seconds < 1) {
    out << seconds << " sec(s)";
    return out.str();
  }
  const std::int64_t days = seconds / 86400;
  const std::int64_t rest = seconds - days * 86400;
  const std::int64_t hours = rest / 3600;
  const std::int64_t rest2 = rest - hours * 3600;
  const std::int64_t minutes = rest2 / 60;
  const std::int64_t secs = rest2 % 60;

  // Padding is decided on the remainders: each field after the leading one has two digits.
  if (days != 0) {
    out << days << ":";
    if (rest < 36000) out << "0";
  }
  if (days != 0 || hours != 0) {
    out << hours << ":";
    if (rest2 < 600) out << "0";
  }
  if (days == 0 && hours == 0 && minutes == 0) {
    out << secs << " sec(s)";
    return out.str();
  }
  out << minutes << ":";
  if (secs <= 9) out << "0";
  out << secs;
  if (days != 0) {
    out << " day(s):hour(s):min(s):sec(s)";
  } else if (hours != 0) {
    out << " hour(s):min(s):sec(s)";
  } else {
    out << " min(s):sec(s)";
  }
  return out.str();
}

}  // namespace lpconv
