#include <lpconv/numbers/precision_exceptions.h>

namespace lpconv {

namespace {

// The derived classes replace the whole message, so the base's default text never survives.
std::string withClassText(const char* classText, const std::string& given) {
  return given.empty() ? std::string(classText) : classText + (": " + given);
}

}  // namespace

PrecisionException::PrecisionException(const std::string& message) : GeneralException(message) {
  if (this->message.empty()) this->message = "Precision exception";
}

PrecisionException::~PrecisionException() = default;

PreCommaPrecisionException::PreCommaPrecisionException(const std::string& message)
    : PrecisionException(message) {
  this->message = withClassText("PreCommaPrecision exception", message);
}

PreCommaPrecisionException::~PreCommaPrecisionException() = default;

PostCommaPrecisionException::PostCommaPrecisionException(const std::string& message)
    : PrecisionException(message) {
  this->message = withClassText("PostCommaPrecision exception", message);
}

PostCommaPrecisionException::~PostCommaPrecisionException() = default;

}  // namespace lpconv
