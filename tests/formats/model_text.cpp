#include "tests/formats/model_text.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace lpconv::test {

std::string modelText(const Model& m) {
  std::ostringstream os;
  os << (m.sense() == ObjectiveSense::maximize ? "max " : "min ") << m.objectiveName() << " const "
     << toString(m.objectiveConstant()) << "\n";
  for (Model::Index j = 0; j < m.columnCount(); ++j) {
    os << "col " << m.columnName(j) << " [" << toString(m.columnLower(j)) << ", "
       << toString(m.columnUpper(j)) << "]" << (m.isInteger(j) ? " int" : "");
    if (!m.objective(j).isZero()) os << " obj " << toString(m.objective(j));
    os << "\n";
  }
  for (Model::Index i = 0; i < m.rowCount(); ++i) {
    os << "row " << m.rowName(i) << " [" << toString(m.rowLower(i)) << ", "
       << toString(m.rowUpper(i)) << "]:";
    const RowView r = m.row(i);
    for (std::size_t k = 0; k < r.size(); ++k) {
      os << (k ? ", " : " ") << m.columnName(r.column(k)) << " " << toString(r.value(k));
    }
    os << "\n";
  }
  return os.str();
}

Model readText(std::string_view text, Format format, DiagnosticSink& sink,
               const std::string& name) {
  const std::filesystem::path dir = std::filesystem::temp_directory_path() /
                                    ("lpconv_formats_test_" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir);
  const std::string path = (dir / name).string();
  {
    std::ofstream out(path, std::ios::binary);
    out << text;
  }
  struct Remove {
    std::string path;
    ~Remove() { std::remove(path.c_str()); }
  } remove{path};
  // Messages name the file as `name`, whatever the temporary folder.
  struct Renaming : DiagnosticSink {
    DiagnosticSink& target;
    std::string name;
    Renaming(DiagnosticSink& t, std::string n) : target(t), name(std::move(n)) {}
    void report(const Diagnostic& d) override {
      Diagnostic renamed = d;
      renamed.file = name;
      target.report(renamed);
    }
  } renaming(sink, name);
  try {
    return readModel(path, format, renaming);
  } catch (const ParseError& e) {
    Diagnostic d = e.diagnostic();
    d.file = name;
    throw ParseError(std::move(d));
  }
}

}  // namespace lpconv::test
