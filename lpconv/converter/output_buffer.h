#pragma once
// Large gathered writes to the output file. Text is collected in one buffer; long runs of one
// repeated item (the zeros of a sparse row, the "inf" of unstated bounds) are never copied: the
// gathered write points at a prebuilt block of copies instead.

#include <sys/uio.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <lpconv/converter/coefficient.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

class OutputBuffer {
 public:
  // Writes to `fd`, which stays owned by the caller. A failed write is not reported here: the
  // buffer stops writing, and failed() tells the owner, who decides what the failure means.
  explicit OutputBuffer(int fd);
  ~OutputBuffer();
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  void put(std::string_view text);
  void put(const QQ& value);
  void put(const Coefficient& value);
  // `count` copies of `item` (such as "0 " or "inf "), without building them one by one.
  void putRepeated(std::string_view item, long count);
  // Writes everything collected so far.
  void flush();
  // Whether a write has failed (nothing is written after that).
  bool failed() const { return failed_; }

 private:
  // Makes room for at least `bytes` more text, flushing when the buffer would have to grow (the
  // gathered pieces point into it, so it never reallocates).
  void reserveText(std::size_t bytes);
  // The last piece grows when the new text follows it directly in the buffer.
  void addTextPiece(std::size_t offset, std::size_t size);
  void addPiece(const char* data, std::size_t size);
  // A block of whole copies of `item`, kept for the next run of the same item.
  const std::string& blockOf(std::string_view item);

  int fd_;
  bool failed_ = false;
  std::string text_;
  std::vector<iovec> pieces_;
  // Item -> block. Map nodes never move, so pieces may point into any block.
  std::map<std::string, std::string, std::less<>> repeatBlocks_;
  const std::pair<const std::string, std::string>* lastBlock_ = nullptr;
};

}  // namespace lpconv
