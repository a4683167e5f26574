#pragma once
// Raised when an exact value is converted to dbl_t with exactness demanded and does not fit.

#include <string>

#include <lpconv/util/exceptions.h>

namespace lpconv {

// An empty text becomes "Precision exception"; any other text is kept as it is.
class PrecisionException : public GeneralException {
 public:
  explicit PrecisionException(const std::string& message);
  ~PrecisionException() override;
};

// The integer part does not fit: "PreCommaPrecision exception", followed by ": " and the text
// when the text is not empty.
class PreCommaPrecisionException : public PrecisionException {
 public:
  explicit PreCommaPrecisionException(const std::string& message);
  ~PreCommaPrecisionException() override;
};

// The digits after the comma do not fit: "PostCommaPrecision exception", followed by ": " and
// the text when the text is not empty.
class PostCommaPrecisionException : public PrecisionException {
 public:
  explicit PostCommaPrecisionException(const std::string& message);
  ~PostCommaPrecisionException() override;
};

}  // namespace lpconv
