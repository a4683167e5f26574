#pragma once
// Names numbered in the order they were added, found again by hashing. The text of all names
// lives in large shared chunks, so a model with millions of names makes few allocations.

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lpconv {

class NameTable {
 public:
  using Index = std::uint32_t;

  // Adds a name that is not in the table yet and returns its number.
  Index add(std::string_view name);
  std::optional<Index> find(std::string_view name) const;
  std::string_view name(Index i) const { return names_[i]; }
  std::size_t size() const { return names_.size(); }

 private:
  std::string_view store(std::string_view name);

  std::vector<std::unique_ptr<char[]>> chunks_;
  std::size_t chunkUsed_ = 0;
  std::size_t chunkSize_ = 0;
  std::vector<std::string_view> names_;
  std::unordered_map<std::string_view, Index> index_;
};

}  // namespace lpconv
