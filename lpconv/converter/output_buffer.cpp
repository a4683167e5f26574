#include <lpconv/converter/output_buffer.h>

#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace lpconv {

namespace {
constexpr std::size_t kTextCapacity = 1 << 20;
constexpr std::size_t kRepeatBlockBytes = 1 << 18;
// Shorter runs are copied: a piece of their own would cost more than the copy.
constexpr std::size_t kCopyBelowBytes = 512;
constexpr std::size_t kMaxPieces = IOV_MAX;
}  // namespace

OutputBuffer::OutputBuffer(int fd) : fd_(fd) {
  text_.reserve(kTextCapacity);
  pieces_.reserve(kMaxPieces);
}

OutputBuffer::~OutputBuffer() { flush(); }

void OutputBuffer::reserveText(std::size_t bytes) {
  if (text_.size() + bytes > text_.capacity()) {
    flush();
    if (bytes > text_.capacity()) text_.reserve(bytes);
  }
}

void OutputBuffer::addPiece(const char* data, std::size_t size) {
  if (size == 0) return;
  if (pieces_.size() == kMaxPieces) flush();
  pieces_.push_back({const_cast<char*>(data), size});
}

void OutputBuffer::addTextPiece(std::size_t offset, std::size_t size) {
  const char* data = text_.data() + offset;
  if (!pieces_.empty()) {
    iovec& last = pieces_.back();
    if (static_cast<const char*>(last.iov_base) + last.iov_len == data) {
      last.iov_len += size;
      return;
    }
  }
  addPiece(data, size);
}

void OutputBuffer::put(std::string_view text) {
  reserveText(text.size());
  const std::size_t offset = text_.size();
  text_.append(text);
  addTextPiece(offset, text.size());
}

void OutputBuffer::put(const QQ& value) {
  // The text of a huge value may be long: measure it before it goes into the buffer.
  std::string scratch;
  appendText(scratch, value);
  put(scratch);
}

void OutputBuffer::put(const Coefficient& value) {
  if (!value.isInline()) {
    put(value.big());
    return;
  }
  reserveText(64);  // an inline value's text is at most 41 characters
  const std::size_t offset = text_.size();
  appendText(text_, value);
  addTextPiece(offset, text_.size() - offset);
}

const std::string& OutputBuffer::blockOf(std::string_view item) {
  if (lastBlock_ != nullptr && lastBlock_->first == item) return lastBlock_->second;
  auto found = repeatBlocks_.find(item);
  if (found == repeatBlocks_.end()) {
    std::string block;
    const std::size_t copies = std::max<std::size_t>(1, kRepeatBlockBytes / item.size());
    block.reserve(copies * item.size());
    for (std::size_t i = 0; i < copies; ++i) block.append(item);
    found = repeatBlocks_.emplace(std::string(item), std::move(block)).first;
  }
  lastBlock_ = &*found;
  return found->second;
}

void OutputBuffer::putRepeated(std::string_view item, long count) {
  if (count <= 0 || item.empty()) return;
  const std::size_t bytes = static_cast<std::size_t>(count) * item.size();
  const std::string& block = blockOf(item);
  if (bytes < kCopyBelowBytes) {
    reserveText(bytes);
    const std::size_t offset = text_.size();
    text_.append(block.data(), bytes);
    addTextPiece(offset, bytes);
    return;
  }
  for (std::size_t left = bytes; left > 0;) {
    const std::size_t size = left < block.size() ? left : block.size();
    addPiece(block.data(), size);
    left -= size;
  }
}

void OutputBuffer::flush() {
  std::size_t first = 0;
  while (first < pieces_.size() && !failed_) {
    const int count = static_cast<int>(pieces_.size() - first);
    const ssize_t written = ::writev(fd_, pieces_.data() + first, count);
    if (written < 0) {
      if (errno == EINTR) continue;
      failed_ = true;
      break;
    }
    // Skip the pieces written whole and shorten the one written in part.
    auto left = static_cast<std::size_t>(written);
    while (first < pieces_.size() && left >= pieces_[first].iov_len) {
      left -= pieces_[first].iov_len;
      ++first;
    }
    if (left > 0) {
      pieces_[first].iov_base = static_cast<char*>(pieces_[first].iov_base) + left;
      pieces_[first].iov_len -= left;
    }
  }
  pieces_.clear();
  text_.clear();
}

}  // namespace lpconv
