#include <lpconv/containers/serializable_array.h>

#include <lpconv/util/strings.h>

namespace lpconv::detail {

std::string escapeDelimiters(const std::string& text, const std::string& delimiters) {
  std::string result = text;
  for (std::string::size_type j = 1; j <= delimiters.size(); ++j) {
    const std::string one(1, delimiters[j]);
    result = replaceAll(result, one, "\\" + one);
  }
  return result;
}

std::string unescapeDelimiters(const std::string& text, const std::string& delimiters) {
  std::string result = text;
  for (std::string::size_type j = 1; j <= delimiters.size(); ++j) {
    const std::string one(1, delimiters[j]);
    result = replaceAll(result, "\\" + one, one);
  }
  return result;
}

}  // namespace lpconv::detail
