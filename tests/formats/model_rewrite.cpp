// model_rewrite IN OUT: reads a model (format from IN's name) and writes it as free MPS or CPLEX
// LP (by OUT's name), for the solve check of the agreement with the peer readers.
#include <lpconv/formats/formats.h>

#include <fstream>
#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: model_rewrite IN OUT.mps|OUT.lp\n";
    return 2;
  }
  std::ostringstream notes;
  lpconv::StreamSink sink(notes);
  try {
    const lpconv::Model model = lpconv::readModel(argv[1], std::nullopt, sink);
    std::ofstream out(argv[2], std::ios::binary);
    if (lpconv::formatOfName(argv[2]) == lpconv::Format::lp) {
      lpconv::writeLp(model, out);
    } else {
      lpconv::writeMps(model, out);
    }
    return out ? 0 : 1;
  } catch (const lpconv::ParseError& e) {
    std::cerr << lpconv::format(e.diagnostic());
    return 1;
  }
}
