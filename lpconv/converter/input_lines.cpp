#include <lpconv/converter/input_lines.h>

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace lpconv {

InputLines::InputLines(int fd, std::size_t bufferSize) : fd_(fd), buffer_(bufferSize) {}

bool InputLines::fill() {
  if (atEnd_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buffer_.size()) return false;
  for (;;) {
    const ssize_t got = ::read(fd_, buffer_.data() + end_, buffer_.size() - end_);
    if (got > 0) {
      end_ += static_cast<std::size_t>(got);
      return true;
    }
    if (got < 0 && errno == EINTR) continue;
    atEnd_ = true;
    return false;
  }
}

bool InputLines::next(std::string_view& line) {
  if (seekFailed_) return false;
  longLine_.clear();
  bool gathering = false;
  for (;;) {
    const char* start = buffer_.data() + begin_;
    const void* feed = std::memchr(start, '\n', end_ - begin_);
    if (feed != nullptr) {
      const std::size_t length = static_cast<const char*>(feed) - start;
      begin_ += length + 1;
      if (!gathering) {
        line = std::string_view(start, length);
        return true;
      }
      longLine_.append(start, length);
      line = longLine_;
      return true;
    }
    if (end_ - begin_ == buffer_.size()) {
      // The buffer holds only part of one line: move it aside and read on.
      longLine_.append(buffer_.data(), end_);
      begin_ = end_ = 0;
      gathering = true;
    }
    if (!fill()) {
      if (begin_ == end_ && !gathering) return false;
      longLine_.append(buffer_.data() + begin_, end_ - begin_);
      begin_ = end_;
      line = longLine_;
      return true;
    }
  }
}

void InputLines::rewind() {
  begin_ = end_ = 0;
  atEnd_ = false;
  if (::lseek(fd_, 0, SEEK_SET) < 0) seekFailed_ = true;
}

}  // namespace lpconv
