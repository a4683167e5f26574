#include <lpconv/formats/line_source.h>

#include <zlib.h>

#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <utility>

namespace lpconv {

namespace {

constexpr std::size_t kInitialBuffer = std::size_t{1} << 20;
// zlib reads at most an int at a time.
constexpr std::size_t kMaxRead = std::size_t{1} << 30;

gzFile handle(void* file) { return static_cast<gzFile>(file); }

[[noreturn]] void failFile(const std::string& name, const std::string& message) {
  Diagnostic d;
  d.file = name;
  d.message = message;
  throw ParseError(std::move(d));
}

}  // namespace

LineSource::LineSource(const std::string& path) : name_(path == "-" ? "<stdin>" : path) {
  gzFile f = nullptr;
  if (path == "-") {
    const int fd = dup(0);
    if (fd >= 0) f = gzdopen(fd, "rb");
    if (f == nullptr && fd >= 0) close(fd);
  } else {
    errno = 0;
    f = gzopen(path.c_str(), "rb");
  }
  if (f == nullptr) {
    failFile(name_,
             std::string("cannot open: ") + (errno != 0 ? std::strerror(errno) : "out of memory"));
  }
  gzbuffer(f, 256 * 1024);
  file_ = f;
  buffer_.resize(kInitialBuffer);
}

LineSource::LineSource(InMemory, std::string name, std::string_view text)
    : name_(std::move(name)), buffer_(text.begin(), text.end()), end_(text.size()), atEnd_(true) {
  // memchr must not see a null pointer, even for an empty text.
  buffer_.reserve(1);
}

LineSource LineSource::fromText(std::string name, std::string_view text) {
  return LineSource(InMemory{}, std::move(name), text);
}

LineSource::~LineSource() {
  if (file_ != nullptr) gzclose(handle(file_));
}

bool LineSource::fill() {
  if (atEnd_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buffer_.size()) buffer_.resize(buffer_.size() * 2);
  std::size_t room = buffer_.size() - end_;
  if (room > kMaxRead) room = kMaxRead;
  const int got = gzread(handle(file_), buffer_.data() + end_, static_cast<unsigned>(room));
  if (got < 0) {
    int code = 0;
    const char* text = gzerror(handle(file_), &code);
    failFile(name_, std::string("cannot read: ") + (code == Z_ERRNO ? std::strerror(errno) : text));
  }
  if (got == 0) {
    atEnd_ = true;
    return false;
  }
  end_ += static_cast<std::size_t>(got);
  return true;
}

bool LineSource::next(std::string_view& line) {
  std::size_t searched = begin_;
  for (;;) {
    const void* found = std::memchr(buffer_.data() + searched, '\n', end_ - searched);
    if (found != nullptr) {
      const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
      std::size_t stop = at;
      if (stop > begin_ && buffer_[stop - 1] == '\r') --stop;
      current_ = std::string_view(buffer_.data() + begin_, stop - begin_);
      begin_ = at + 1;
      ++lineNumber_;
      line = current_;
      return true;
    }
    const std::size_t unread = end_ - begin_;
    if (!fill()) {
      if (begin_ == end_) return false;
      // A last line without a line feed.
      std::size_t stop = end_;
      if (stop > begin_ && buffer_[stop - 1] == '\r') --stop;
      current_ = std::string_view(buffer_.data() + begin_, stop - begin_);
      begin_ = end_;
      ++lineNumber_;
      line = current_;
      return true;
    }
    searched = begin_ + unread;
  }
}

Diagnostic LineSource::diagnostic(Severity severity, long column, std::string message) const {
  Diagnostic d;
  d.severity = severity;
  d.file = name_;
  d.line = lineNumber_;
  d.column = column;
  d.message = std::move(message);
  d.sourceLine = std::string(current_);
  return d;
}

Diagnostic LineSource::diagnosticAt(Severity severity, std::string_view at,
                                    std::string message) const {
  long column = 0;
  if (at.data() >= current_.data() && at.data() <= current_.data() + current_.size()) {
    column = static_cast<long>(at.data() - current_.data()) + 1;
  }
  return diagnostic(severity, column, std::move(message));
}

void LineSource::fail(std::string_view at, std::string message) const {
  throw ParseError(diagnosticAt(Severity::error, at, std::move(message)));
}

}  // namespace lpconv
