#pragma once
// The library's small exception family. GeneralException hides its standard base, so a handler
// for std::exception does not catch it; handlers name GeneralException or a subclass.

#include <exception>
#include <string>

namespace lpconv {

class GeneralException : private std::exception {
 public:
  explicit GeneralException(const std::string& message);
  virtual ~GeneralException();
  // The message; valid as long as the exception lives.
  virtual const char* what() const noexcept;

 protected:
  std::string message;
};

// A stream that could not be read. An empty text becomes "Read exception".
class ReadException : public GeneralException {
 public:
  explicit ReadException(const std::string& message);
};

}  // namespace lpconv
