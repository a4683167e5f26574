#pragma once
// A scratch file for tests that drive the converter's descriptor-based reader and writer.

#include <unistd.h>

#include <cstdio>
#include <string>

namespace lpconv::testing {

class TempFile {
 public:
  TempFile() : file_(std::tmpfile()) {}
  ~TempFile() { std::fclose(file_); }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  int fd() const { return fileno(file_); }

  void write(const std::string& bytes) {
    ::ftruncate(fd(), 0);
    ::lseek(fd(), 0, SEEK_SET);
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t n = ::write(fd(), bytes.data() + done, bytes.size() - done);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    ::lseek(fd(), 0, SEEK_SET);
  }

  std::string contents() const {
    std::string out;
    char chunk[65536];
    ::lseek(fd(), 0, SEEK_SET);
    for (ssize_t n; (n = ::read(fd(), chunk, sizeof chunk)) > 0;) {
      out.append(chunk, static_cast<std::size_t>(n));
    }
    return out;
  }

 private:
  std::FILE* file_;
};

}  // namespace lpconv::testing
