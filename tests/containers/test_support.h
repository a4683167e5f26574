#pragma once
// Helpers shared by the container tests.

#include <gtest/gtest.h>

#include <functional>
#include <istream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include <lpconv/containers/array.h>
#include <lpconv/containers/serializable.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>

namespace lpconv::testing_support {

// What is left in the buffer, whatever state the stream is in.
inline std::string rest(std::istream& is) {
  return std::string(std::istreambuf_iterator<char>(is.rdbuf()), std::istreambuf_iterator<char>());
}

// The anchored death-test pattern of one failure report, with the message escaped.
inline std::string failureRegex(const std::string& message) {
  std::string escaped;
  for (char c : message) {
    if (std::string(".[]()*+?{}|^$\\").find(c) != std::string::npos) escaped += '\\';
    escaped += c;
  }
  return "^\n\\*\\*\\* FAIL: " + escaped + "\n$";
}

// With throwFailure installed: "" when f returns, else the failure message (or that of the integer
// reader's std::invalid_argument).
inline std::string failureOf(const std::function<void()>& f) {
  const FailureHandler previous = setFailureHandler(throwFailure);
  std::string message;
  try {
    f();
  } catch (const FailureException& e) {
    message = e.what();
  } catch (const std::invalid_argument& e) {
    message = e.what();
  }
  setFailureHandler(previous);
  return message;
}

// The elements 1..dimension as a std::vector, for whole-value comparisons.
template <typename Container>
auto contents(const Container& c) {
  std::vector<std::decay_t<decltype(c[1])>> out;
  for (long i = 1; i <= c.getDimension(); ++i) out.push_back(c[i]);
  return out;
}

// Dimension, capacity and every slot 0..dimension; rows with their settings.
template <typename T>
std::string describeSlots(const Array<T>& a) {
  std::ostringstream out;
  out << "dim " << a.getDimension() << " cap " << a.getCapacity() << " {";
  for (long i = 0; a.data() != nullptr && i <= a.getDimension(); ++i) {
    if constexpr (std::is_same_v<T, long>) {
      out << a.data()[i] << ' ';
    } else if constexpr (std::is_same_v<T, QQ>) {
      out << a.data()[i] << (a.data()[i].isPositive ? "+ " : " ");
    } else {
      const Serializable& row = a.data()[i];
      out << describeSlots(a.data()[i]) << row.getDelimiters() << row.getAllowComments()
          << row.getSecondFlag() << ' ';
    }
  }
  return out.str() + "}";
}

}  // namespace lpconv::testing_support
