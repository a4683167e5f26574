#include <lpconv/util/random_seed.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace lpconv {

std::uint32_t seedRandom(std::uint32_t seed) {
  if (seed != 0) {
    std::srand(seed);
    return seed;
  }
  std::uint32_t value = 0;
  // Neither open is checked: a failed one gives -1, on which read fails and close is harmless.
  int fd = ::open("/dev/random", O_RDONLY | O_NONBLOCK);
  if (::read(fd, &value, sizeof value) == static_cast<ssize_t>(sizeof value)) {
    ::close(fd);
  } else {
    ::close(fd);
    fd = ::open("/dev/urandom", O_RDONLY | O_NONBLOCK);
    // A short read here leaves the buffer as it was; there is no further fallback.
    const ssize_t ignored = ::read(fd, &value, sizeof value);
    static_cast<void>(ignored);
    ::close(fd);
  }
  std::srand(value);
  return value;
}

}  // namespace lpconv
