#include <lpconv/model/name_table.h>

#include <cstring>

namespace lpconv {

namespace {

constexpr std::size_t kChunkSize = std::size_t{1} << 20;

// The slot key of a name: its length (up to 255) in the top byte, 24 bits of a hash below,
// and its first eight bytes, zero-padded.
struct Key {
  std::uint32_t key;
  std::uint64_t prefix;
};

Key keyOf(std::string_view name) {
  std::uint64_t h = 0x9E3779B97F4A7C15ull ^ name.size();
  std::uint64_t prefix = 0;
  if (!name.empty()) std::memcpy(&prefix, name.data(), name.size() < 8 ? name.size() : 8);
  std::size_t i = 0;
  for (; i + 8 <= name.size(); i += 8) {
    std::uint64_t chunk;
    std::memcpy(&chunk, name.data() + i, 8);
    h = (h ^ chunk) * 0xBF58476D1CE4E5B9ull;
    h ^= h >> 31;
  }
  std::uint64_t tail = 0;
  if (name.size() > i) std::memcpy(&tail, name.data() + i, name.size() - i);
  h = (h ^ tail) * 0x94D049BB133111EBull;
  h ^= h >> 29;
  h *= 0xBF58476D1CE4E5B9ull;
  h ^= h >> 32;
  const std::uint32_t length = name.size() < 255 ? static_cast<std::uint32_t>(name.size()) : 255;
  return {(length << 24) | (static_cast<std::uint32_t>(h) & 0xFFFFFF), prefix};
}

}  // namespace

std::string_view NameTable::store(std::string_view name) {
  if (name.empty()) return {};
  if (name.size() > chunkSize_ - chunkUsed_) {
    // A name longer than a chunk gets a chunk of its own.
    chunkSize_ = name.size() > kChunkSize ? name.size() : kChunkSize;
    chunks_.push_back(std::make_unique<char[]>(chunkSize_));
    chunkUsed_ = 0;
  }
  char* target = chunks_.back().get() + chunkUsed_;
  std::memcpy(target, name.data(), name.size());
  chunkUsed_ += name.size();
  return {target, name.size()};
}

NameTable::Index NameTable::add(std::string_view name) {
  const auto index = static_cast<Index>(names_.size());
  const std::string_view stored = store(name);
  names_.push_back(stored);
  if (2 * names_.size() > slots_.size()) grow();
  const Key k = keyOf(stored);
  insert({k.key, index + 1, k.prefix});
  return index;
}

void NameTable::insert(const Slot& slot) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = (slot.key ^ (slot.key >> 24) * 0x9E3779B1u) & mask;
  while (slots_[at].indexPlusOne != 0) at = (at + 1) & mask;
  slots_[at] = slot;
}

void NameTable::grow() {
  std::vector<Slot> old = std::move(slots_);
  slots_.assign(old.empty() ? 64 : old.size() * 2, Slot{});
  // In the order the names were added, so that of two equal names the first is found.
  std::vector<Slot> byIndex(names_.size());
  for (const Slot& s : old) {
    if (s.indexPlusOne != 0) byIndex[s.indexPlusOne - 1] = s;
  }
  for (const Slot& s : byIndex) {
    if (s.indexPlusOne != 0) insert(s);
  }
}

std::optional<NameTable::Index> NameTable::find(std::string_view name) const {
  if (slots_.empty()) return std::nullopt;
  const Key k = keyOf(name);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = (k.key ^ (k.key >> 24) * 0x9E3779B1u) & mask; slots_[at].indexPlusOne != 0;
       at = (at + 1) & mask) {
    const Slot& s = slots_[at];
    if (s.key != k.key || s.prefix != k.prefix) continue;
    if (name.size() <= 8 || names_[s.indexPlusOne - 1] == name) return s.indexPlusOne - 1;
  }
  return std::nullopt;
}

}  // namespace lpconv
