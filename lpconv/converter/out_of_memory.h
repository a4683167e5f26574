#pragma once
// Running out of memory ends a conversion as every other failure does: the output file is left
// empty and "Out of memory" is reported (status 1), instead of an abort.

namespace lpconv {

// From now on GMP's allocations that cannot be had end in failOutOfMemory() (GMP itself would
// abort). Memory the standard library cannot get still throws std::bad_alloc, which the run
// catches and hands to failOutOfMemory().
void reportGmpOutOfMemory();

// The output file to empty when memory runs out; -1 for none (before it is created, after it is
// closed).
void setOutputToEmpty(int fd);

// Empties the output file and reports "Out of memory". Safe to call from any thread: the first
// caller reports, any other waits for the process to end.
[[noreturn]] void failOutOfMemory();

}  // namespace lpconv
