#include <lpconv/converter/output_name.h>

namespace lpconv {

std::string outputNameFor(const std::string& inputName) {
  const std::size_t size = inputName.size();
  if (size < 3) return inputName;
  const char any = inputName[size - 3];
  if (any == '\n' || any == '\r') return inputName;
  if (inputName.compare(size - 2, 2, "lp") != 0) return inputName;
  return inputName.substr(0, size - 3) + ".opt";
}

}  // namespace lpconv
