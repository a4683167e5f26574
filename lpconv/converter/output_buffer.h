#pragma once
// Large gathered writes to the output file. Text is collected in batches; long runs of one
// repeated item (the zeros of a sparse row, the "inf" of unstated bounds) are never copied: the
// gathered write points at a prebuilt block of copies instead. Once a first batch is full, a
// writer thread writes the batches in order while the next ones are filled, so the kernel's copy
// of the bytes overlaps the work that produces them.

#include <sys/uio.h>

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <lpconv/numbers/coefficient.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

class OutputBuffer {
 public:
  // Writes to `fd`, which stays owned by the caller. A failed write is not reported here: the
  // buffer stops writing, and failed() tells the owner, who decides what the failure means.
  explicit OutputBuffer(int fd);
  // Writes what is left and stops the writer thread.
  ~OutputBuffer();
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  void put(std::string_view text);
  void put(const QQ& value);
  void put(const Coefficient& value);
  // `count` copies of `item` (such as "0 " or "inf "), without building them one by one.
  void putRepeated(std::string_view item, long count);
  // Writes everything collected so far and returns when it is written (or a write failed).
  void flush();
  // Whether a write has failed (nothing is written after that); final after flush().
  bool failed() const;

 private:
  // Text and the pieces of one gathered write; the pieces point into the text and into the
  // repeat blocks.
  struct Batch {
    std::string text;
    std::vector<iovec> pieces;
  };

  // Makes room for at least `bytes` more text, handing the batch over when its text would have
  // to grow (its pieces point into it, so it never reallocates).
  void reserveText(std::size_t bytes);
  // The last piece grows when the new text follows it directly in the buffer.
  void addTextPiece(std::size_t offset, std::size_t size);
  void addPiece(const char* data, std::size_t size);
  // A block of whole copies of `item`, kept for the next run of the same item.
  const std::string& blockOf(std::string_view item);

  // Queues the current batch for the writer thread (started here the first time) and continues
  // in a free one, waiting while every batch is in use.
  void handOver();
  void runWriter();
  // Writes the current batch on the calling thread (no writer thread runs) and empties it.
  void writeInPlace();
  // Writes one batch whole; false when a write failed.
  bool write(Batch& batch) const;

  int fd_;
  std::unique_ptr<Batch> current_;
  // Item -> block. Map nodes never move, so pieces may point into any block; blocks are never
  // changed once built, so the writer thread reads them while new ones are added.
  std::map<std::string, std::string, std::less<>> repeatBlocks_;
  const std::pair<const std::string, std::string>* lastBlock_ = nullptr;

  // Shared with the writer thread, under mutex_.
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::unique_ptr<Batch>> queued_;
  std::vector<std::unique_ptr<Batch>> spare_;
  std::size_t batches_ = 1;  // in existence: current, queued, spare and the one being written
  bool writing_ = false;     // the writer thread holds a batch
  bool stopping_ = false;
  bool failed_ = false;
  bool inPlace_ = false;  // no writer thread could be started
  std::thread writer_;
};

}  // namespace lpconv
