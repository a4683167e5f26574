#pragma once
// Seeding of the standard library's pseudo-random generator.

#include <cstdint>

namespace lpconv {

// Calls srand(seed) and returns seed when seed is not 0. For 0 the seed comes from the kernel:
// 4 bytes from "/dev/random" opened non-blocking (so a short read never waits), else 4 bytes
// from "/dev/urandom"; if both reads fail the seed is 0. Returns the value given to srand.
std::uint32_t seedRandom(std::uint32_t seed);

}  // namespace lpconv
