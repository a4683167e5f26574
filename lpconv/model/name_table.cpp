#include <lpconv/model/name_table.h>

#include <cstring>

namespace lpconv {

namespace {
constexpr std::size_t kChunkSize = std::size_t{1} << 20;
}

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
  index_.emplace(stored, index);
  return index;
}

std::optional<NameTable::Index> NameTable::find(std::string_view name) const {
  const auto found = index_.find(name);
  if (found == index_.end()) return std::nullopt;
  return found->second;
}

}  // namespace lpconv
