#pragma once
// The fields of one MPS data line, in either layout. Fixed MPS puts its six fields in set
// columns (2-3, 5-12, 15-22, 25-36, 40-47, 50-61), so a name may hold blanks; free MPS separates
// its fields by blanks. Each section reads a line in the free layout first and falls back to the
// fixed columns when that does not give a valid record (see the MPS reader).

#include <array>
#include <cstddef>
#include <string_view>

namespace lpconv::detail {

// Field k of the fixed layout: 0 code, 1 name, 2 name, 3 number, 4 name, 5 number.
using MpsRecord = std::array<std::string_view, 6>;

// The blank-separated tokens of a line, up to kMaxTokens; a token that starts with '$' ends the
// line (a comment). Returns the number of tokens, or kMaxTokens + 1 when there are more.
inline constexpr std::size_t kMaxTokens = 6;
std::size_t splitFreeTokens(std::string_view line,
                            std::array<std::string_view, kMaxTokens>& tokens);

// The fields of the fixed layout, each without its surrounding blanks (views into the line).
// False when the line cannot be a fixed line: a tab, a non-blank character in a column between
// fields or after column 61 (other than a '$' or '*' comment there).
bool splitFixedFields(std::string_view line, MpsRecord& fields);

}  // namespace lpconv::detail
