#pragma once
// 10^0 .. 10^18, every power of ten a signed 64-bit integer holds, for the decimal fast paths.

#include <array>
#include <cstdint>

namespace lpconv::detail {

inline constexpr std::array<std::int64_t, 19> kPowersOfTen = [] {
  std::array<std::int64_t, 19> powers{};
  std::int64_t p = 1;
  for (auto& power : powers) {
    power = p;
    if (p <= INT64_MAX / 10) p *= 10;
  }
  return powers;
}();

}  // namespace lpconv::detail
