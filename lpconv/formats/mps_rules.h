#pragma once
// The MPS rules shared by the reader and the writer.

#include <lpconv/numbers/coefficient.h>

namespace lpconv::detail {

// Right-hand sides, ranges and bounds of magnitude 1e30 and beyond stand for infinity (a finite
// value that large cannot be written to MPS and read back as itself).
bool isLargeAsInfinity(const Coefficient& value);

}  // namespace lpconv::detail
