// Reads text back through the library's readers, writes it again with the library's writers and
// reports both times; bench/readback.sh compares the bytes and times `wc -w` beside it.
//
//   readback_benchmark opt IN OUT [--chunk-rows K]   the fourteen items of a converter output
//   readback_benchmark vector N IN OUT               writes a random N-element vector text to IN
//   readback_benchmark matrix ROWS COLS IN OUT       writes a random ROWS x COLS matrix text to IN
//
// With --chunk-rows the matrices are read K rows at a time, each window of rows through one
// Matrix<QQ>'s reader (for outputs whose matrices do not fit in memory as QQ values; a QQ with its
// denominator's limb takes about 112 bytes). Memory use is then that of K rows.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <string>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/vector.h>
#include <lpconv/programs/huge_page_heap.h>

namespace {

using lpconv::Matrix;
using lpconv::QQ;
using lpconv::SerializableArray;
using lpconv::Vector;
using Clock = std::chrono::steady_clock;

double readSeconds = 0;
double writeSeconds = 0;
double readCpuSeconds = 0;

// Wall time into total; for the reads also the process's processor time, since the machine is
// shared and wall time includes waiting for it.
template <typename F>
void timed(double& total, F f) {
  const auto start = Clock::now();
  const std::clock_t cpuStart = std::clock();
  f();
  total += std::chrono::duration<double>(Clock::now() - start).count();
  if (&total == &readSeconds) readCpuSeconds += double(std::clock() - cpuStart) / CLOCKS_PER_SEC;
}

template <typename Object>
void copyItem(std::istream& in, std::ostream& out) {
  Object x;
  timed(readSeconds, [&] { in >> x; });
  timed(writeSeconds, [&] { out << x << "\n"; });
  if (in.fail()) {
    std::cerr << "readback: read failed\n";
    std::exit(1);
  }
}

// A matrix read in windows of rows: its "[" line, then K row lines at a time through the matrix
// reader, each window's rows written back with the row writer, then the "]" line.
void copyMatrixInWindows(std::istream& in, std::ostream& out, long rowsPerWindow) {
  std::string line;
  // The previous item's reader stops after its "]": the rest of that line comes first.
  timed(readSeconds, [&] { std::getline(in >> std::ws, line); });
  out << line << std::endl;
  // One matrix for all windows, as a program streaming rows would keep it: each read reuses the
  // rows of the one before.
  Matrix<QQ> window;
  // The window's text and its stream are reused too, so that no window copies into fresh memory.
  std::string text;
  std::istringstream windowText;
  for (bool done = false; !done;) {
    timed(readSeconds, [&] {
      text.assign("[\n");
      long rows = 0;
      while (rows < rowsPerWindow && std::getline(in, line)) {
        if (line == "]") {
          done = true;
          break;
        }
        text += line;
        text += '\n';
        ++rows;
      }
      if (!in) done = true;
      text += "]";
      windowText.clear();
      windowText.str(std::move(text));
      windowText >> window;
      text = std::move(windowText).str();
    });
    timed(writeSeconds, [&] {
      for (long r = 1; r <= window.getRows(); ++r) window.at(r).serialize(out) << std::endl;
    });
  }
  out << "]\n";
}

void copyOpt(const char* inName, const char* outName, long rowsPerWindow) {
  std::ifstream in(inName, std::ios::binary);
  std::ofstream out(outName, std::ios::binary);
  auto matrix = [&] {
    if (rowsPerWindow > 0) {
      copyMatrixInWindows(in, out, rowsPerWindow);
    } else {
      copyItem<Matrix<QQ>>(in, out);
    }
  };
  copyItem<Vector<QQ>>(in, out);
  matrix();
  out << "\n";
  matrix();
  copyItem<Vector<QQ>>(in, out);
  copyItem<SerializableArray<long>>(in, out);
  out << "\n";
  matrix();
  copyItem<Vector<QQ>>(in, out);
  copyItem<Vector<QQ>>(in, out);
  out << "\n";
  copyItem<Vector<long>>(in, out);
  copyItem<Vector<QQ>>(in, out);
  copyItem<Vector<QQ>>(in, out);
}

// Entries like a converter output: small integers, many zeros, some fractions and infinities.
std::string randomEntry(std::mt19937_64& random) {
  switch (random() % 10) {
    case 0:
      return random() % 2 == 0 ? "inf" : "-inf";
    case 1:
      return lpconv::toString(QQ(static_cast<long>(random() % 2001) - 1000, 7));
    case 2:
    case 3:
    case 4:
      return "0";
    default:
      return std::to_string(static_cast<long>(random() % 201) - 100);
  }
}

void writeVectorText(std::ostream& os, long n, std::mt19937_64& random) {
  os << "[ ";
  for (long i = 0; i < n; ++i) os << randomEntry(random) << ' ';
  os << "]";
}

}  // namespace

int main(int argc, char** argv) {
  lpconv::useHugePagesForHeap();
  const std::string mode = argc > 1 ? argv[1] : "";
  std::mt19937_64 random(11);
  if (mode == "opt" && (argc == 4 || argc == 6)) {
    copyOpt(argv[2], argv[3], argc == 6 ? std::atol(argv[5]) : 0);
  } else if (mode == "vector" && argc == 5) {
    {
      std::ofstream text(argv[3], std::ios::binary);
      writeVectorText(text, std::atol(argv[2]), random);
    }
    std::ifstream in(argv[3], std::ios::binary);
    std::ofstream out(argv[4], std::ios::binary);
    Vector<QQ> v;
    timed(readSeconds, [&] { in >> v; });
    timed(writeSeconds, [&] { out << v; });
  } else if (mode == "matrix" && argc == 6) {
    {
      std::ofstream text(argv[4], std::ios::binary);
      text << "[\n";
      for (long r = std::atol(argv[2]); r > 0; --r) {
        writeVectorText(text, std::atol(argv[3]), random);
        text << "\n";
      }
      text << "]";
    }
    std::ifstream in(argv[4], std::ios::binary);
    std::ofstream out(argv[5], std::ios::binary);
    Matrix<QQ> m;
    timed(readSeconds, [&] { in >> m; });
    timed(writeSeconds, [&] { out << m; });
  } else {
    std::cerr << "usage: readback_benchmark opt IN OUT [--chunk-rows K] | vector N IN OUT |"
                 " matrix ROWS COLS IN OUT\n";
    return 2;
  }
  std::printf("read %.3f s (cpu %.3f s), write %.3f s\n", readSeconds, readCpuSeconds,
              writeSeconds);
  return 0;
}
