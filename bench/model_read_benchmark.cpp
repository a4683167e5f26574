// model_read_benchmark FILE: reads an LP, MPS or .opt file into the exact model and prints its
// size, for bench/formats.sh (the read that optinfo's summary starts with).
#include <lpconv/formats/formats.h>

#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: model_read_benchmark FILE\n";
    return 2;
  }
  std::ostringstream notes;
  lpconv::StreamSink sink(notes);
  try {
    const lpconv::Model m = lpconv::readModel(argv[1], std::nullopt, sink);
    std::cout << "rows " << m.rowCount() << " columns " << m.columnCount() << " nonzeros "
              << m.nonzeroCount() << "\n";
  } catch (const lpconv::ParseError& e) {
    std::cerr << lpconv::format(e.diagnostic());
    return 1;
  }
  return 0;
}
