#pragma once
// The library's exception family. The standard exception base is private on purpose: a handler
// for std::exception does not catch these; handlers must name GeneralException or a subclass.

#include <exception>
#include <string>

namespace lpconv {

class GeneralException : private std::exception {
 public:
  explicit GeneralException(const std::string& message);
  ~GeneralException() override;

  // The message; valid as long as the exception lives.
  const char* what() const noexcept override;

 protected:
  std::string message;
};

// A stream that could not be read. An empty text becomes "Read exception".
class ReadException : public GeneralException {
 public:
  explicit ReadException(const std::string& message);
  ~ReadException() override;
};

}  // namespace lpconv
