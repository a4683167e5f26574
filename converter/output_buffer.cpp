#include "converter/output_buffer.h"

#include <unistd.h>

#include <cerrno>

namespace lpconv {

namespace {
constexpr std::size_t flushThreshold = 1 << 20;
constexpr std::size_t repeatBlockBytes = 1 << 18;
}  // namespace

OutputBuffer::OutputBuffer(int fd) : fd_(fd) { buffer_.reserve(flushThreshold + 4096); }

OutputBuffer::~OutputBuffer() { flush(); }

void OutputBuffer::put(std::string_view text) {
  buffer_.append(text);
  flushIfFull();
}

const std::string& OutputBuffer::blockOf(std::string_view item) {
  for (const std::string& block : repeatBlocks_) {
    if (block.compare(0, item.size(), item) == 0 && block.size() % item.size() == 0 &&
        block.size() / item.size() == repeatBlockBytes / item.size()) {
      return block;
    }
  }
  std::string& block = repeatBlocks_.emplace_back();
  const std::size_t copies = repeatBlockBytes / item.size();
  block.reserve(copies * item.size());
  for (std::size_t i = 0; i < copies; ++i) block.append(item);
  return block;
}

void OutputBuffer::putRepeated(std::string_view item, long count) {
  if (count <= 0 || item.empty()) return;
  const std::string& block = blockOf(item);
  const long perBlock = static_cast<long>(block.size() / item.size());
  if (count >= perBlock) {
    flush();
    for (; count >= perBlock; count -= perBlock) writeAll(block.data(), block.size());
  }
  buffer_.append(block, 0, static_cast<std::size_t>(count) * item.size());
  flushIfFull();
}

void OutputBuffer::flushIfFull() {
  if (buffer_.size() >= flushThreshold) flush();
}

void OutputBuffer::flush() {
  writeAll(buffer_.data(), buffer_.size());
  buffer_.clear();
}

void OutputBuffer::writeAll(const char* data, std::size_t size) {
  while (size > 0 && !failed_) {
    const ssize_t written = ::write(fd_, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      failed_ = true;
      return;
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
}

}  // namespace lpconv
