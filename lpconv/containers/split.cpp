#include <lpconv/containers/split.h>

#include <sstream>

namespace lpconv {

Array<String> split(const std::string& text, char delimiter) {
  Array<String> pieces;
  std::istringstream in(text);
  String piece;
  while (std::getline(in, piece, delimiter)) {
    pieces.resize(pieces.getDimension() + 1, true);
    pieces[pieces.getDimension()] = piece;
  }
  return pieces;
}

}  // namespace lpconv
