// PLACEHOLDER: replaced by the real writer.
#include <lpconv/formats/formats.h>
#include <stdexcept>

namespace lpconv {

void writeOpt(const Model&, std::ostream&, DiagnosticSink&) {
  throw std::logic_error("writeOpt is not built yet");
}
void writeNameMap(const Model&, std::ostream&) {
  throw std::logic_error("writeNameMap is not built yet");
}

}  // namespace lpconv
