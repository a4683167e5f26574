#include <lpconv/formats/mps_fields.h>

namespace lpconv::detail {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || c == '\v'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// The 0-based first column and the width of each fixed field.
struct Span {
  std::size_t begin;
  std::size_t width;
};
constexpr Span kFixedFields[6] = {{1, 2}, {4, 8}, {14, 8}, {24, 12}, {39, 8}, {49, 12}};
constexpr std::size_t kFixedEnd = 61;

}  // namespace

std::size_t splitFreeTokens(std::string_view line,
                            std::array<std::string_view, kMaxTokens>& tokens) {
  std::size_t count = 0;
  std::size_t i = 0;
  while (true) {
    while (i < line.size() && isBlank(line[i])) ++i;
    if (i == line.size() || line[i] == '$') return count;
    const std::size_t start = i;
    while (i < line.size() && !isBlank(line[i])) ++i;
    if (count == kMaxTokens) return kMaxTokens + 1;
    tokens[count++] = line.substr(start, i - start);
  }
}

bool splitFixedFields(std::string_view line, MpsRecord& fields) {
  if (line.find('\t') != std::string_view::npos) return false;
  std::size_t previousEnd = 0;
  for (std::size_t k = 0; k < 6; ++k) {
    const Span s = kFixedFields[k];
    for (std::size_t c = previousEnd; c < s.begin && c < line.size(); ++c) {
      if (line[c] != ' ') return false;
    }
    fields[k] = s.begin < line.size() ? trimmed(line.substr(s.begin, s.width)) : std::string_view();
    // A '$' at the start of a name or number field comments out the rest of the line.
    if (!fields[k].empty() && fields[k].front() == '$' && k >= 2) {
      for (std::size_t rest = k; rest < 6; ++rest) fields[rest] = std::string_view();
      return true;
    }
    previousEnd = s.begin + s.width;
  }
  for (std::size_t c = kFixedEnd; c < line.size(); ++c) {
    if (line[c] == '$' || line[c] == '*') break;
    if (line[c] != ' ') return false;
  }
  return true;
}

}  // namespace lpconv::detail
