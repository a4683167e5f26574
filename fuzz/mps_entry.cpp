// The MPS reader's fuzz entry: any input either reads or stops with a ParseError; a model that
// reads is written as MPS and must read back to the same model (compared by position, since
// the writer replaces names free MPS cannot carry).
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include <lpconv/formats/formats.h>

#include "entries.h"

namespace lpconv::fuzz {

namespace {

class DiscardingSink : public DiagnosticSink {
 public:
  void report(const Diagnostic&) override {}
};

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }

// The model without its names, position by position.
std::string shape(const Model& m) {
  std::ostringstream os;
  os << (m.sense() == ObjectiveSense::maximize) << ' ' << toString(m.objectiveConstant()) << '\n';
  for (Model::Index j = 0; j < m.columnCount(); ++j) {
    os << toString(m.columnLower(j)) << ' ' << toString(m.columnUpper(j)) << ' ' << m.isInteger(j)
       << ' ' << toString(m.objective(j)) << '\n';
  }
  for (Model::Index i = 0; i < m.rowCount(); ++i) {
    os << toString(m.rowLower(i)) << ' ' << toString(m.rowUpper(i)) << ':';
    const RowView r = m.row(i);
    for (std::size_t k = 0; k < r.size(); ++k)
      os << ' ' << r.column(k) << '=' << toString(r.value(k));
    os << '\n';
  }
  return os.str();
}

// Reads bytes through an anonymous in-memory file, as the reader reads any file.
bool readBytes(const char* data, std::size_t size, Model& model) {
  const int fd = memfd_create("mps", 0);
  if (fd < 0) std::abort();
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = write(fd, data + done, size - done);
    if (n <= 0) std::abort();
    done += static_cast<std::size_t>(n);
  }
  lseek(fd, 0, SEEK_SET);
  bool ok = true;
  try {
    LineSource source("/proc/self/fd/" + std::to_string(fd));
    DiscardingSink sink;
    model = readMps(source, sink);
  } catch (const ParseError&) {
    ok = false;
  }
  close(fd);
  return ok;
}

}  // namespace

int mpsReader(const std::uint8_t* data, std::size_t size) {
  Model first;
  if (!readBytes(reinterpret_cast<const char*>(data), size, first)) return 0;
  // A row whose sides both came out infinite is written as a free row, which reads as dropped.
  for (Model::Index i = 0; i < first.rowCount(); ++i) {
    if (isInfinite(first.rowLower(i)) && isInfinite(first.rowUpper(i))) return 0;
  }
  std::ostringstream os;
  writeMps(first, os);
  const std::string text = os.str();
  Model second;
  if (!readBytes(text.data(), text.size(), second)) {
    std::fprintf(stderr, "fuzz property violated: written MPS does not read\n%s", text.c_str());
    std::abort();
  }
  const std::string a = shape(first);
  const std::string b = shape(second);
  if (a != b) {
    std::fprintf(stderr, "fuzz property violated: MPS round trip\n  first:\n%s  second:\n%s",
                 a.c_str(), b.c_str());
    std::abort();
  }
  return 0;
}

}  // namespace lpconv::fuzz
