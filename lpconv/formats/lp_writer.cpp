// PLACEHOLDER: replaced by the real writer.
#include <lpconv/formats/formats.h>
#include <stdexcept>

namespace lpconv {

void writeLp(const Model&, std::ostream&) { throw std::logic_error("writeLp is not built yet"); }

}  // namespace lpconv
