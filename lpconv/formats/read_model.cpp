#include <lpconv/formats/formats.h>

#include <memory>

namespace lpconv {

Model readModel(const std::string& path, std::optional<Format> format, DiagnosticSink& sink,
                const std::string* namesPath) {
  if (!format) format = formatOfName(path);
  if (!format) {
    Diagnostic d;
    d.file = path == "-" ? "<stdin>" : path;
    d.message = "cannot tell the format from the name (expected .lp, .mps or .opt, optionally .gz)";
    throw ParseError(std::move(d));
  }
  LineSource source(path);
  switch (*format) {
    case Format::lp:
      return readLp(source, sink);
    case Format::mps:
      return readMps(source, sink);
    case Format::opt: {
      std::unique_ptr<LineSource> names;
      if (namesPath != nullptr) names = std::make_unique<LineSource>(*namesPath);
      return readOpt(source, names.get(), sink);
    }
  }
  return readLp(source, sink);
}

}  // namespace lpconv
