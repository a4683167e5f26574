#pragma once
// Compact day/hour/minute/second text of a duration.

#include <cstdint>
#include <string>

namespace lpconv {

// Formats a duration in seconds. Below one second the number is written as it is ("-5 sec(s)").
// Otherwise the largest non-zero unit leads unpadded, every following field has two digits, and
// the unit names follow: 45 -> "45 sec(s)", 125 -> "2:05 min(s):sec(s)",
// 90061 -> "1:01:01:01 day(s):hour(s):min(s):sec(s)".
std::string formatDuration(std::int64_t seconds);

}  // namespace lpconv
