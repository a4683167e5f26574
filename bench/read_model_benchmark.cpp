// Reads one model file through the formats library and prints the best wall time of a few
// reads (and the least processor time), with the model's sizes: the C++ side of
// bench/python_read.py.
//
//   read_model_benchmark FILE [REPEATS]
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <string>

#include <lpconv/formats/formats.h>

int main(int argc, char** argv) {
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: read_model_benchmark FILE [REPEATS]\n";
    return 2;
  }
  const std::string path = argv[1];
  const int repeats = argc == 3 ? std::atoi(argv[2]) : 3;
  double best = 1e300;
  double bestCpu = 1e300;
  std::size_t rows = 0;
  std::size_t columns = 0;
  std::size_t nonzeros = 0;
  try {
    for (int k = 0; k < repeats; ++k) {
      lpconv::CollectingSink sink;
      const auto start = std::chrono::steady_clock::now();
      const std::clock_t startCpu = std::clock();
      const lpconv::Model model = lpconv::readModel(path, std::nullopt, sink);
      const double cpu = static_cast<double>(std::clock() - startCpu) / CLOCKS_PER_SEC;
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      if (took.count() < best) best = took.count();
      if (cpu < bestCpu) bestCpu = cpu;
      rows = model.rowCount();
      columns = model.columnCount();
      nonzeros = model.nonzeroCount();
    }
  } catch (const lpconv::ParseError& error) {
    std::cerr << lpconv::format(error.diagnostic());
    return 1;
  }
  std::cout << "seconds " << best << "\ncpu " << bestCpu << "\nrows " << rows << "\ncolumns "
            << columns << "\nnonzeros " << nonzeros << "\n";
  return 0;
}
