#include <lpconv/formats/formats.h>

#include <cctype>

namespace lpconv {

namespace {

bool endsWithIgnoringCase(std::string_view text, std::string_view suffix) {
  if (text.size() < suffix.size()) return false;
  text.remove_prefix(text.size() - suffix.size());
  for (std::size_t i = 0; i < suffix.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(text[i])) != suffix[i]) return false;
  }
  return true;
}

}  // namespace

std::optional<Format> formatOfName(std::string_view path) {
  if (endsWithIgnoringCase(path, ".gz")) path.remove_suffix(3);
  if (endsWithIgnoringCase(path, ".lp")) return Format::lp;
  if (endsWithIgnoringCase(path, ".mps")) return Format::mps;
  if (endsWithIgnoringCase(path, ".opt")) return Format::opt;
  return std::nullopt;
}

const char* formatWord(Format format) {
  switch (format) {
    case Format::lp:
      return "lp";
    case Format::mps:
      return "mps";
    case Format::opt:
      return "opt";
  }
  return "lp";
}

std::optional<Format> formatOfWord(std::string_view word) {
  if (word == "lp") return Format::lp;
  if (word == "mps") return Format::mps;
  if (word == "opt") return Format::opt;
  return std::nullopt;
}

}  // namespace lpconv
