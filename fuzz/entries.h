#pragma once
// One entry function per fuzz target: reads the input as its target reader does, treats a
// reported failure (FailureException through throwFailure), the integer text throw
// std::invalid_argument("mpz_set_str") and ReadException as normal outcomes, and checks that
// whatever a successful read writes reads back to the same text. A violated property aborts.
// The libFuzzer targets and the regression replay call the same functions.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lpconv::fuzz {

using Entry = int (*)(const std::uint8_t* data, std::size_t size);

struct Target {
  std::string_view name;
  Entry entry;
};

int qqText(const std::uint8_t* data, std::size_t size);
int qqStream(const std::uint8_t* data, std::size_t size);
int zzText(const std::uint8_t* data, std::size_t size);
int vectorQQ(const std::uint8_t* data, std::size_t size);
int vectorLong(const std::uint8_t* data, std::size_t size);
int matrixQQ(const std::uint8_t* data, std::size_t size);
// The first byte chooses the delimiters and whether comments are skipped; the rest is the text.
int serializableArrayLong(const std::uint8_t* data, std::size_t size);
int serializableArrayQQ(const std::uint8_t* data, std::size_t size);
// A whole .opt file through readOptFile; an odd first byte passes the matrix rows to an observer
// (which then also sees them) instead of keeping them.
int optFile(const std::uint8_t* data, std::size_t size);
// An MPS file; what reads must write and read back to the same model (fuzz/mps_entry.cpp).
int mpsReader(const std::uint8_t* data, std::size_t size);
// The CPLEX LP reader, and the writer's text read back (lp_reader_entry.cpp).
int lpReader(const std::uint8_t* data, std::size_t size);

// Every target, by the name of its folder under fuzz/.
inline constexpr Target kTargets[] = {
    {"qq_text", qqText},
    {"qq_stream", qqStream},
    {"zz_text", zzText},
    {"vector_qq", vectorQQ},
    {"vector_long", vectorLong},
    {"matrix_qq", matrixQQ},
    {"serializable_array_long", serializableArrayLong},
    {"serializable_array_qq", serializableArrayQQ},
    {"opt_file", optFile},
    {"mps_reader", mpsReader},
    {"lp_reader", lpReader},
};

}  // namespace lpconv::fuzz
