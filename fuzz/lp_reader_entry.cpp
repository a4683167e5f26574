// The LP reader's fuzz entry: any text either reads into a model or ends in a ParseError with a
// place; a model that was read is written as LP, and that text must read back to a model that
// writes the very same text.
#include "entries.h"

#include <lpconv/formats/formats.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace lpconv::fuzz {

int lpReader(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CollectingSink sink;
  std::string first;
  try {
    LineSource source = LineSource::fromText("fuzz.lp", text);
    const Model model = readLp(source, sink);
    std::ostringstream os;
    writeLp(model, os);
    first = os.str();
  } catch (const ParseError&) {
    return 0;
  }
  std::string second;
  try {
    LineSource again = LineSource::fromText("again.lp", first);
    const Model model = readLp(again, sink);
    std::ostringstream os;
    writeLp(model, os);
    second = os.str();
  } catch (const ParseError& e) {
    std::fprintf(stderr, "written LP does not read back: %s\n%s\n", e.what(), first.c_str());
    std::abort();
  }
  if (first != second) {
    std::fprintf(stderr, "written LP reads back differently\n--- first\n%s--- second\n%s",
                 first.c_str(), second.c_str());
    std::abort();
  }
  return 0;
}

}  // namespace lpconv::fuzz
