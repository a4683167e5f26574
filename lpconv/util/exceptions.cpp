#include <lpconv/util/exceptions.h>

namespace lpconv {

GeneralException::GeneralException(const std::string& message) : message(message) {}

GeneralException::~GeneralException() = default;

const char* GeneralException::what() const noexcept { return message.c_str(); }

ReadException::ReadException(const std::string& message) : GeneralException(message) {
  if (message.empty()) this->message = "Read exception";
}

ReadException::~ReadException() = default;

}  // namespace lpconv
