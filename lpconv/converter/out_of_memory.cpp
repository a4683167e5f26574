#include <lpconv/converter/out_of_memory.h>

#include <gmp.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include <lpconv/converter/messages.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

std::atomic<int> outputToEmpty{-1};
std::atomic_flag failing = ATOMIC_FLAG_INIT;

void* allocateOrFail(std::size_t bytes) {
  void* block = std::malloc(bytes);
  if (block == nullptr) failOutOfMemory();
  return block;
}

void* reallocateOrFail(void* block, std::size_t, std::size_t bytes) {
  void* moved = std::realloc(block, bytes);
  if (moved == nullptr) failOutOfMemory();
  return moved;
}

void release(void* block, std::size_t) { std::free(block); }

}  // namespace

void reportGmpOutOfMemory() { mp_set_memory_functions(allocateOrFail, reallocateOrFail, release); }

void setOutputToEmpty(int fd) { outputToEmpty.store(fd); }

void failOutOfMemory() {
  if (failing.test_and_set()) {
    // Another thread is reporting; the process ends with its report.
    for (;;) ::pause();
  }
  const int fd = outputToEmpty.load();
  // Nothing more can be done when truncating fails.
  if (fd >= 0 && ::ftruncate(fd, 0) != 0) {
  }
  reportFailure(messages::kOutOfMemory);
}

}  // namespace lpconv
