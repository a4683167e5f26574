#include <lpconv/converter/output_buffer.h>

#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace lpconv {

namespace {
constexpr std::size_t kTextCapacity = 1 << 18;
constexpr std::size_t kRepeatBlockBytes = 1 << 18;
// Shorter runs are copied: a piece of their own would cost more than the copy.
constexpr std::size_t kCopyBelowBytes = 512;
constexpr std::size_t kMaxPieces = IOV_MAX;
// Enough for the writer never to wait for a batch while some are full; few enough that the text
// held at once stays a few MB.
constexpr std::size_t kMaxBatches = 8;
}  // namespace

OutputBuffer::OutputBuffer(int fd) : fd_(fd), current_(std::make_unique<Batch>()) {
  current_->text.reserve(kTextCapacity);
  current_->pieces.reserve(kMaxPieces);
}

OutputBuffer::~OutputBuffer() {
  flush();
  if (writer_.joinable()) {
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    changed_.notify_all();
    writer_.join();
  }
}

void OutputBuffer::reserveText(std::size_t bytes) {
  std::string& text = current_->text;
  if (text.size() + bytes > text.capacity()) {
    if (!current_->pieces.empty()) handOver();
    current_->text.clear();
    if (bytes > current_->text.capacity()) current_->text.reserve(bytes);
  }
}

void OutputBuffer::addPiece(const char* data, std::size_t size) {
  if (size == 0) return;
  if (current_->pieces.size() == kMaxPieces) handOver();
  current_->pieces.push_back({const_cast<char*>(data), size});
}

void OutputBuffer::addTextPiece(std::size_t offset, std::size_t size) {
  const char* data = current_->text.data() + offset;
  std::vector<iovec>& pieces = current_->pieces;
  if (!pieces.empty()) {
    iovec& last = pieces.back();
    if (static_cast<const char*>(last.iov_base) + last.iov_len == data) {
      last.iov_len += size;
      return;
    }
  }
  addPiece(data, size);
}

void OutputBuffer::put(std::string_view text) {
  reserveText(text.size());
  const std::size_t offset = current_->text.size();
  current_->text.append(text);
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
  std::string& text = current_->text;
  const std::size_t offset = text.size();
  appendText(text, value);
  addTextPiece(offset, text.size() - offset);
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
    const std::size_t offset = current_->text.size();
    current_->text.append(block.data(), bytes);
    addTextPiece(offset, bytes);
    return;
  }
  for (std::size_t left = bytes; left > 0;) {
    const std::size_t size = left < block.size() ? left : block.size();
    addPiece(block.data(), size);
    left -= size;
  }
}

void OutputBuffer::handOver() {
  if (!writer_.joinable() && !inPlace_) {
    try {
      writer_ = std::thread([this] { runWriter(); });
    } catch (const std::system_error&) {
      inPlace_ = true;  // no thread to be had: each batch is written here as it fills
    }
  }
  if (inPlace_) {
    writeInPlace();
    return;
  }
  std::unique_lock lock(mutex_);
  queued_.push_back(std::move(current_));
  changed_.notify_all();
  changed_.wait(lock, [this] { return !spare_.empty() || batches_ < kMaxBatches; });
  if (!spare_.empty()) {
    current_ = std::move(spare_.back());
    spare_.pop_back();
    return;
  }
  ++batches_;
  lock.unlock();
  current_ = std::make_unique<Batch>();
  current_->text.reserve(kTextCapacity);
  current_->pieces.reserve(kMaxPieces);
}

void OutputBuffer::runWriter() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return !queued_.empty() || stopping_; });
    if (queued_.empty()) return;
    std::unique_ptr<Batch> batch = std::move(queued_.front());
    queued_.pop_front();
    writing_ = true;
    const bool skip = failed_;
    lock.unlock();
    const bool written = skip || write(*batch);
    batch->text.clear();
    batch->pieces.clear();
    lock.lock();
    writing_ = false;
    if (!written) failed_ = true;
    spare_.push_back(std::move(batch));
    changed_.notify_all();
  }
}

void OutputBuffer::writeInPlace() {
  if (!failed_ && !write(*current_)) failed_ = true;
  current_->text.clear();
  current_->pieces.clear();
}

void OutputBuffer::flush() {
  if (!writer_.joinable()) {
    // A small output, handed over never, is written here, without a thread.
    writeInPlace();
    return;
  }
  if (!current_->pieces.empty()) handOver();
  current_->text.clear();
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return queued_.empty() && !writing_; });
}

bool OutputBuffer::failed() const {
  const std::lock_guard lock(mutex_);
  return failed_;
}

bool OutputBuffer::write(Batch& batch) const {
  std::vector<iovec>& pieces = batch.pieces;
  std::size_t first = 0;
  while (first < pieces.size()) {
    const int count = static_cast<int>(pieces.size() - first);
    const ssize_t written = ::writev(fd_, pieces.data() + first, count);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    // Skip the pieces written whole and shorten the one written in part.
    auto left = static_cast<std::size_t>(written);
    while (first < pieces.size() && left >= pieces[first].iov_len) {
      left -= pieces[first].iov_len;
      ++first;
    }
    if (left > 0) {
      pieces[first].iov_base = static_cast<char*>(pieces[first].iov_base) + left;
      pieces[first].iov_len -= left;
    }
  }
  return true;
}

}  // namespace lpconv
