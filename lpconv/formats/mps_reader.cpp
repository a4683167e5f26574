// PLACEHOLDER: replaced by the real reader.
#include <lpconv/formats/formats.h>

namespace lpconv {

Model readMps(LineSource& source, DiagnosticSink&) {
  source.fail(source.currentLine(), "this format's reader is not built yet");
}

}  // namespace lpconv
