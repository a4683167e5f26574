#pragma once
// The programs' heap in 2 MiB pages. On the virtual machines they run on, the first touch of a
// 4 KiB page costs about 12 microseconds, more than the parsing done on it: a large conversion
// would spend a third of its time in page faults.
//
// This is a policy of a whole process, so programs opt into it (lpconv, optinfo, the
// benchmarks); the libraries allocate plainly. With the C library's allocator it has the effect
// of starting the program with
//   GLIBC_TUNABLES=glibc.malloc.hugetlb=1:glibc.malloc.arena_max=1:glibc.malloc.mmap_threshold=33554432
// (every growth of the heap and every block mapped on its own asked to use huge pages), without
// depending on the environment a program is started in.

namespace lpconv {

// Reserves a large stretch of heap at once and asks the kernel to back it with huge pages
// (transparent huge pages in madvise mode); growth of the heap beyond that reserve, and blocks
// large enough to be mapped on their own, are advised the same way as they appear. Memory is
// still touched, and counted, only as it is used. Does nothing where the C library's allocator
// is not the one in use (as under AddressSanitizer) or the kernel declines; every result stays
// the same either way. Call it first thing in main, once.
void useHugePagesForHeap();

}  // namespace lpconv
