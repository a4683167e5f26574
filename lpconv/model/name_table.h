#pragma once
// Names numbered in the order they were added, found again by hashing. The text of all names
// lives in large shared chunks, so a model with millions of names makes few allocations.

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
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
  // Open addressing: each slot holds a name's key (its length in the top byte, 24 bits of hash
  // below), its first eight bytes and its number + 1 (0: empty). The table is at most half
  // full, so a lookup usually touches one slot, and a name of up to eight bytes is compared in
  // the slot itself.
  struct Slot {
    std::uint32_t key = 0;
    std::uint32_t indexPlusOne = 0;
    std::uint64_t prefix = 0;
  };
  void insert(const Slot& slot);
  void grow();
  std::vector<std::unique_ptr<char[]>> chunks_;
  std::size_t chunkUsed_ = 0;
  std::size_t chunkSize_ = 0;
  std::vector<std::string_view> names_;
  std::vector<Slot> slots_;
};

}  // namespace lpconv
