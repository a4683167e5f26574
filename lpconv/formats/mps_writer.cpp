// PLACEHOLDER: replaced by the real writer.
#include <lpconv/formats/formats.h>
#include <stdexcept>

namespace lpconv {

void writeMps(const Model&, std::ostream&) { throw std::logic_error("writeMps is not built yet"); }

}  // namespace lpconv
