#include <lpconv/optfile/opt_file.h>

namespace lpconv {

std::ostream& operator<<(std::ostream& os, const OptFile& file) {
  os << file.sense << "\n" << file.objective << "\n\n";
  os << file.equations << "\n" << file.equationRhs << "\n" << file.reserved << "\n\n";
  os << file.inequalities << "\n" << file.lower << "\n" << file.upper << "\n\n";
  return os << file.integers << "\n" << file.variableLower << "\n" << file.variableUpper << "\n";
}

}  // namespace lpconv
