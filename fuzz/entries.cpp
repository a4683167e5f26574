#include "entries.h"

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/vector.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/numbers/zz.h>
#include <lpconv/optfile/opt_file.h>
#include <lpconv/util/exceptions.h>
#include <lpconv/util/failure.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>

namespace lpconv::fuzz {

namespace {

[[noreturn]] void violated(const char* what, const std::string& first, const std::string& second) {
  std::fprintf(stderr, "fuzz property violated: %s\n  first:  %s\n  second: %s\n", what,
               first.c_str(), second.c_str());
  std::abort();
}

std::string asText(const std::uint8_t* data, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

// Runs read() with the throwing failure handler; the documented failures end it normally.
template <typename Read>
void outcome(Read read) {
  static const bool installed = (setFailureHandler(throwFailure), true);
  (void)installed;
  try {
    read();
  } catch (const FailureException&) {
  } catch (const ReadException&) {
  } catch (const std::invalid_argument& e) {
    if (std::strcmp(e.what(), "mpz_set_str") != 0) throw;
  }
}

template <typename T>
std::string written(const T& x) {
  std::ostringstream os;
  os << x;
  return os.str();
}

// What a successful read wrote must read back (with a fresh object of the same settings) to
// the same text. Two documented quirks are outside this promise: a non-canonical value (a
// signed integer part, as "-+-5" leaves it after the vector negates it) is written field by
// field as "--5", which reads back as its opposite; and an array reader that skips comments
// loses the "/" of a fraction (a lone slash is taken as the start of a comment).
template <typename T>
void checkReadsBack(const T& read, T fresh, bool slashesSurvive = true) {
  const std::string first = written(read);
  if (first.find("--") != std::string::npos) return;
  if (!slashesSurvive && first.find('/') != std::string::npos) return;
  std::istringstream is(first);
  is >> fresh;
  const std::string second = written(fresh);
  if (first != second) violated("written text does not read back", first, second);
}

struct ArraySettings {
  const char* delimiters;
  bool allowComments;
};

constexpr ArraySettings kArraySettings[] = {
    {" ", false}, {" ", true}, {", ", false}, {", ", true}, {"\n ", false}, {";,/ ", false},
};

template <typename T>
int serializableArray(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const ArraySettings settings = kArraySettings[data[0] % std::size(kArraySettings)];
  const std::string text = asText(data + 1, size - 1);
  outcome([&] {
    SerializableArray<T> a(settings.delimiters, settings.allowComments, false);
    std::istringstream is(text);
    is >> a;
    checkReadsBack(a, SerializableArray<T>(settings.delimiters, settings.allowComments, false),
                   !settings.allowComments);
  });
  return 0;
}

template <typename T>
int streamRead(const std::uint8_t* data, std::size_t size) {
  const std::string text = asText(data, size);
  outcome([&] {
    T x;
    std::istringstream is(text);
    is >> x;
    checkReadsBack(x, T());
  });
  return 0;
}

// Keeps the text of every row it is given, in the order given. Rows without entries (n = 0) are
// not given to an observer, though a full read keeps them.
class RowTexts : public RowObserver {
 public:
  void row(OptItem item, const Vector<QQ>& row) override {
    text += std::to_string(static_cast<int>(item)) + ":" + written(row) + "\n";
  }
  std::string text;
};

std::string rowTexts(OptItem item, const Matrix<QQ>& matrix) {
  std::string text;
  for (long i = 1; i <= matrix.getRows(); ++i) {
    if (matrix.at(i).getDimension() == 0) continue;
    text += std::to_string(static_cast<int>(item)) + ":" + written(matrix.at(i)) + "\n";
  }
  return text;
}

}  // namespace

int optFile(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool observed = (data[0] & 1) != 0;
  const std::string text = asText(data + 1, size - 1);
  outcome([&] {
    std::istringstream is(text);
    const OptFile file = readOptFile(is);
    const std::string first = written(file);
    if (first.find("--") != std::string::npos) return;
    std::istringstream again(first);
    const std::string second = written(readOptFile(again));
    if (first != second) violated("written .opt file does not read back", first, second);
    if (!observed) return;
    // The same text read with an observer: the rows it sees are the rows a full read keeps.
    RowTexts rows;
    std::istringstream is2(text);
    const OptFile skipped = readOptFile(is2, &rows);
    const std::string kept = rowTexts(OptItem::equations, file.equations) +
                             rowTexts(OptItem::inequalities, file.inequalities);
    if (rows.text != kept) violated("observed rows differ from the kept rows", rows.text, kept);
    if (skipped.equations.getRows() != 0 || skipped.inequalities.getRows() != 0) {
      violated("an observed read kept rows", written(skipped.equations),
               written(skipped.inequalities));
    }
  });
  return 0;
}

int qqText(const std::uint8_t* data, std::size_t size) {
  const std::string text = asText(data, size);
  outcome([&] {
    const QQ x(text);
    const std::string first = toString(x);
    const std::string second = toString(QQ(first));
    if (first != second) violated("QQ text does not read back", first, second);
  });
  return 0;
}

int qqStream(const std::uint8_t* data, std::size_t size) {
  const std::string text = asText(data, size);
  outcome([&] {
    std::istringstream is(text);
    for (int i = 0; i < 64 && is.good(); ++i) {
      QQ x;
      is >> x;
      // The text constructor reads every token the stream reader collects.
      checkReadsBack(x, QQ());
    }
  });
  return 0;
}

int zzText(const std::uint8_t* data, std::size_t size) {
  const std::string text = asText(data, size);
  outcome([&] {
    const ZZ x(text);
    const std::string first = toString(x);
    const ZZ y(first);
    if (cmp(x, y) != 0) violated("ZZ text does not read back", first, toString(y));
  });
  return 0;
}

int vectorQQ(const std::uint8_t* data, std::size_t size) {
  return streamRead<Vector<QQ>>(data, size);
}

int vectorLong(const std::uint8_t* data, std::size_t size) {
  return streamRead<Vector<long>>(data, size);
}

int matrixQQ(const std::uint8_t* data, std::size_t size) {
  return streamRead<Matrix<QQ>>(data, size);
}

int serializableArrayLong(const std::uint8_t* data, std::size_t size) {
  return serializableArray<long>(data, size);
}

int serializableArrayQQ(const std::uint8_t* data, std::size_t size) {
  return serializableArray<QQ>(data, size);
}

}  // namespace lpconv::fuzz
