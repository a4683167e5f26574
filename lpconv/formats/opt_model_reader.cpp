// PLACEHOLDER: replaced by the real reader.
#include <lpconv/formats/formats.h>

namespace lpconv {

Model readOpt(LineSource& source, LineSource*, DiagnosticSink&) {
  source.fail(source.currentLine(), "this format's reader is not built yet");
}

}  // namespace lpconv
