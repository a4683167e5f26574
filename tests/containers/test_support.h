#pragma once
// Helpers shared by the container tests.

#include <gtest/gtest.h>

#include <istream>
#include <iterator>
#include <string>
#include <vector>

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

// The elements 1..dimension as a std::vector, for whole-value comparisons.
template <typename Container>
auto contents(const Container& c) {
  std::vector<std::decay_t<decltype(c[1])>> out;
  for (long i = 1; i <= c.getDimension(); ++i) out.push_back(c[i]);
  return out;
}

}  // namespace lpconv::testing_support
