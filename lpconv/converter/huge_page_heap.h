#pragma once
// The converter's heap in 2 MiB pages. On the virtual machines it runs on, the first touch of a
// 4 KiB page costs about 12 microseconds, more than the parsing done on it: a large conversion
// would spend a third of its time in page faults.

namespace lpconv {

// Reserves a large stretch of heap at once and asks the kernel to back it with huge pages
// (transparent huge pages in madvise mode). Memory is still touched, and counted, only as it is
// used. Does nothing where the C library's allocator is not the one in use (as under
// AddressSanitizer) or the kernel declines; every result stays the same either way.
void useHugePagesForHeap();

}  // namespace lpconv
