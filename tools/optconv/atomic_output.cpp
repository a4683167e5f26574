#include "atomic_output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <lpconv/formats/diagnostics.h>

namespace lpconv {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;

// The permissions a newly created file gets (0666 less the umask), which mkstemp does not give.
mode_t newFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

AtomicOutput::AtomicOutput(const std::string& path) : path_(path), buffer_(kBufferSize) {
  if (path == "-") {
    stream_ = &std::cout;
    return;
  }
  std::string pattern = path + ".XXXXXX";
  const int fd = mkstemp(pattern.data());
  if (fd < 0) fail(std::strerror(errno));
  temporary_ = pattern;
  const int chmodError = fchmod(fd, newFileMode());
  close(fd);
  if (chmodError != 0) fail(std::strerror(errno));
  file_ = std::make_unique<std::ofstream>();
  file_->rdbuf()->pubsetbuf(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
  file_->open(temporary_, std::ios::binary | std::ios::trunc);
  if (!file_->is_open()) fail(std::strerror(errno));
  stream_ = file_.get();
  // A failed write sets errno and nothing in between clears it: finish() tells the reason.
  errno = 0;
}

AtomicOutput::~AtomicOutput() {
  if (!temporary_.empty()) std::remove(temporary_.c_str());
}

void AtomicOutput::finish() {
  stream_->flush();
  if (file_) file_->close();
  if (!*stream_ || (file_ && file_->fail())) {
    fail(errno != 0 ? std::strerror(errno) : "write error");
  }
}

void AtomicOutput::commit() {
  if (temporary_.empty()) return;
  if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail(std::strerror(errno));
  temporary_.clear();
}

void AtomicOutput::fail(const std::string& why) const {
  Diagnostic d;
  d.file = path_ == "-" ? "<stdout>" : path_;
  d.message = "cannot write: " + why;
  throw ParseError(std::move(d));
}

}  // namespace lpconv
