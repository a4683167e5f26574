#pragma once
// Helpers shared by the container tests.

#include <gtest/gtest.h>

#include <initializer_list>
#include <istream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <lpconv/numbers/qq.h>

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

// Fills a one-based container with the given values.
template <typename Container, typename T>
void fill(Container& c, std::initializer_list<T> values) {
  c.resize(static_cast<long>(values.size()), false);
  long i = 1;
  for (const T& v : values) c[i++] = v;
}

// The elements 1..dimension as a std::vector, for whole-value comparisons.
template <typename Container>
auto contents(const Container& c) {
  std::vector<std::decay_t<decltype(c[1])>> out;
  for (long i = 1; i <= c.getDimension(); ++i) out.push_back(c[i]);
  return out;
}

// The written forms of elements 1..dimension: exact, unlike the tolerant vector comparison.
template <typename Container>
std::vector<std::string> texts(const Container& c) {
  std::vector<std::string> out;
  for (long i = 1; i <= c.getDimension(); ++i) out.push_back(toString(c[i]));
  return out;
}

// A random rational: small fractions, huge integers and fractions, and the two infinities.
inline QQ randomQQ(std::mt19937_64& random) {
  switch (random() % 8) {
    case 0:
      return QQ(random() % 2 == 0);
    case 1: {
      std::string digits = random() % 2 == 0 ? "-" : "";
      digits += std::to_string(random() % 9 + 1);
      for (int k = static_cast<int>(random() % 40); k > 0; --k)
        digits += std::to_string(random() % 10);
      return QQ(digits + "/" + std::to_string(random() % 1000000007 + 1));
    }
    case 2:
      return QQ();
    default:
      return QQ(static_cast<long>(random() % 2001) - 1000, static_cast<long>(random() % 97) + 1);
  }
}

}  // namespace lpconv::testing_support
