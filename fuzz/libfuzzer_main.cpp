// The libFuzzer entry of one target; LPCONV_FUZZ_ENTRY names its entry function.
#include "entries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return lpconv::fuzz::LPCONV_FUZZ_ENTRY(data, size);
}
