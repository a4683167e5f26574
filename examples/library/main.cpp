// Uses the installed lpconv library: exact arithmetic with QQ, a Vector read from its text form,
// and recovery from malformed texts through the throwing failure handler.
#include <iostream>
#include <sstream>
#include <string>

#include <lpconv/containers/vector.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/optfile/opt_file.h>
#include <lpconv/util/failure.h>

namespace {

// Reads a vector of exact numbers from its bracketed text form, e.g. "[ 1/2 3:1/4 -inf ]".
lpconv::Vector<lpconv::QQ> readVector(const std::string& text) {
  std::istringstream in(text);
  lpconv::Vector<lpconv::QQ> v;
  in >> v;
  return v;
}

lpconv::QQ sum(const lpconv::Vector<lpconv::QQ>& v) {
  lpconv::QQ total;
  for (long i = 1; i <= v.getDimension(); ++i) total += v.at(i);
  return total;
}

}  // namespace

int main() {
  using lpconv::QQ;

  // Exact: 1/3 + 1/6 is 1/2, and 0.1 read as text is exactly one tenth.
  std::cout << "1/3 + 1/6 = " << QQ(1, 3) + QQ(1, 6) << "\n";
  std::cout << "7/2 = " << QQ("7/2") << " (a mixed number)\n";
  std::cout << "10 * 0.1 = " << QQ(10) * QQ("0.1") << "\n";

  const lpconv::Vector<QQ> v = readVector("[ 1/2 3:1/4 2,25 ]");
  std::cout << "read " << v << " with sum " << sum(v) << "\n";

  // Without a handler a failure report ends the process with status 1; with throwFailure it
  // becomes a FailureException and the program goes on.
  lpconv::setFailureHandler(lpconv::throwFailure);
  for (const std::string text : {"[ 1 2 ]", "[ 1 two ]", "[ 1 2"}) {
    try {
      const lpconv::Vector<QQ> read = readVector(text);
      std::cout << text << " -> " << read << "\n";
    } catch (const lpconv::FailureException& e) {
      std::cout << text << " -> failure: " << e.what() << "\n";
    }
  }
  try {
    const QQ mixed("1:5/2");
    std::cout << "1:5/2 -> " << mixed << "\n";
  } catch (const lpconv::FailureException& e) {
    std::cout << "1:5/2 -> failure: " << e.what() << "\n";
  }

  // An .opt file as the converter writes it (the README's worked example), read and written back.
  const std::string opt =
      "[ inf ]\n[\n[ 3 2 ]\n]\n\n[\n[ 1 0 ]\n]\n[ 2 ]\n[ ]\n\n[\n[ 1 1 ]\n]\n[ 1 ]\n[ 4 ]\n\n"
      "[ 0 0 ]\n[ 0 inf ]\n[ 10 inf ]\n";
  std::istringstream optText(opt);
  const lpconv::OptFile file = lpconv::readOptFile(optText);
  std::ostringstream written;
  written << file;
  std::cout << "opt file: " << file.variableUpper.getDimension() << " variables, "
            << file.inequalities.getDimension() << " inequality, upper bounds "
            << file.variableUpper << ", written back "
            << (written.str() == opt ? "unchanged" : "CHANGED") << "\n";
  return 0;
}
