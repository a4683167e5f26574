#include <lpconv/containers/serializable.h>

namespace lpconv {

Serializable::Serializable(const std::string& delimiters, bool allowComments, bool secondFlag)
    : delimiters(delimiters), allowComments(allowComments), secondFlag(secondFlag) {
  if (this->delimiters.find(' ') == std::string::npos) this->delimiters += ' ';
}

Serializable::~Serializable() = default;

std::ostream& operator<<(std::ostream& os, const Serializable& x) { return x.serialize(os); }

std::istream& operator>>(std::istream& is, Serializable& x) {
  x.deserialize(is);
  return is;
}

}  // namespace lpconv
