#include <lpconv/converter/input_text.h>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace lpconv {

InputText::InputText(int fd) {
  struct stat status {};
  if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
    const auto size = static_cast<std::size_t>(status.st_size);
    void* map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
    if (map != MAP_FAILED) {
      ::madvise(map, size, MADV_SEQUENTIAL);
      mapped_ = map;
      text_ = std::string_view(static_cast<const char*>(map), size);
      return;
    }
  }
  seekable_ = ::lseek(fd, 0, SEEK_CUR) >= 0;
  char chunk[1 << 16];
  for (;;) {
    const ssize_t got = ::read(fd, chunk, sizeof chunk);
    if (got > 0) {
      read_.append(chunk, static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
      break;
    }
  }
  text_ = read_;
}

InputText::~InputText() {
  if (mapped_ != nullptr) ::munmap(mapped_, text_.size());
}

bool Lines::next(std::string_view& line) {
  if (next_ >= text_.size()) return false;
  const char* start = text_.data() + next_;
  const std::size_t left = text_.size() - next_;
  const void* feed = std::memchr(start, '\n', left);
  const std::size_t length =
      feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - start) : left;
  line = std::string_view(start, length);
  next_ += feed ? length + 1 : length;
  return true;
}

}  // namespace lpconv
