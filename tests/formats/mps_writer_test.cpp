#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include <lpconv/formats/exact_number.h>

#include "tests/formats/model_text.h"

namespace lpconv {
namespace {

using test::modelText;
using test::readText;

std::string mpsText(const Model& m) {
  std::ostringstream os;
  writeMps(m, os);
  return os.str();
}

Model reread(const Model& m) {
  CollectingSink sink;
  return readText(mpsText(m), Format::mps, sink);
}

Coefficient value(const char* text) {
  Coefficient c;
  EXPECT_EQ(parseExactNumber(text, c), NumberError::none) << text;
  return c;
}

// A model with every kind of row and bound the writer distinguishes.
Model corners() {
  Model m;
  m.setSense(ObjectiveSense::maximize);
  m.setObjectiveName("profit");
  m.setObjectiveConstant(value("-7/3"));
  const Model::Index x = m.addColumn("x");
  const Model::Index y = m.addColumn("y");
  const Model::Index z = m.addColumn("z");
  const Model::Index w = m.addColumn("w");
  const Model::Index v = m.addColumn("v");
  m.setObjective(x, value("0.1"));
  m.setObjective(y, value("1/3"));
  m.setColumnUpper(x, value("-2"));  // lower 0 must be written before it
  m.setInteger(y, true);             // default bounds, written since markers imply 0..1
  m.setInteger(z, true);
  m.setColumnLower(z, Coefficient::minusInfinity());
  m.setColumnUpper(z, value("5"));
  m.setColumnLower(w, Coefficient::minusInfinity());
  m.setColumnUpper(w, Coefficient::infinity());
  m.setColumnLower(v, value("2.5"));
  m.setColumnUpper(v, value("2.5"));
  std::vector<ModelEntry> e1{{x, value("1")}, {y, value("123456789012345678901234567891/7")}};
  m.addRow("eq", e1, value("3"), value("3"));
  std::vector<ModelEntry> e2{{y, value("2")}};
  m.addRow("le", e2, Coefficient::minusInfinity(), value("-1e-20"));
  std::vector<ModelEntry> e3{{z, value("2")}, {w, value("-1")}};
  m.addRow("ge", e3, value("1/3"), Coefficient::infinity());
  std::vector<ModelEntry> e4{{x, value("1")}, {w, value("1")}};
  m.addRow("range", e4, value("-4"), value("9/2"));
  std::vector<ModelEntry> e5{};
  m.addRow("empty", e5, value("0"), value("0"));
  return m;
}

TEST(MpsWriter, CornersReadBackExactly) {
  const Model m = corners();
  EXPECT_EQ(modelText(reread(m)), modelText(m));
}

TEST(MpsWriter, WritesFreeMpsWithExactValues) {
  EXPECT_EQ(mpsText(corners()),
            "NAME\nOBJSENSE\n    MAX\nROWS\n N  profit\n E  eq\n L  le\n G  ge\n G  range\n"
            " E  empty\nCOLUMNS\n    x profit 0.1\n    x eq 1\n    x range 1\n"
            "    MARKER0 'MARKER' 'INTORG'\n    y profit 1/3\n"
            "    y eq 123456789012345678901234567891/7\n    y le 2\n    z ge 2\n"
            "    MARKER1 'MARKER' 'INTEND'\n    w ge -1\n    w range 1\n    v profit 0\n"
            "RHS\n    RHS profit 7/3\n    RHS eq 3\n    RHS le -1e-20\n    RHS ge 1/3\n"
            "    RHS range -4\nRANGES\n    RNG range 8.5\nBOUNDS\n LO BND x 0\n UP BND x -2\n"
            " LO BND y 0\n PL BND y\n MI BND z\n UP BND z 5\n FR BND w\n FX BND v 2.5\n"
            "ENDATA\n");
}

TEST(MpsWriter, ReplacesNamesFreeMpsCannotCarry) {
  Model m;
  const Model::Index a = m.addColumn("has blank");
  const Model::Index b = m.addColumn("");
  m.addColumn("C1");  // the generated name of column 1 is taken
  m.setObjective(a, value("1"));
  m.setObjective(b, value("2"));
  std::vector<ModelEntry> e{{a, value("1")}};
  m.addRow("$comment", e, value("1"), Coefficient::infinity());
  m.addRow("obj", e, value("2"), Coefficient::infinity());
  const std::string text = mpsText(m);
  EXPECT_NE(text.find(" N  obj_\n G  R1\n G  obj\n"), std::string::npos) << text;
  EXPECT_NE(text.find("    C1_ obj_ 1\n    C1_ R1 1\n    C1_ obj 1\n    C2 obj_ 2\n"),
            std::string::npos)
      << text;
}

TEST(MpsWriter, FreeRowBecomesAnNRowThatReadsAsDropped) {
  Model m;
  const Model::Index a = m.addColumn("a");
  std::vector<ModelEntry> e{{a, value("1")}};
  m.addRow("free", e, Coefficient::minusInfinity(), Coefficient::infinity());
  const std::string text = mpsText(m);
  EXPECT_NE(text.find(" N  free\n"), std::string::npos) << text;
  EXPECT_EQ(reread(m).rowCount(), 0u);
}

// Every MPS file of the corpus that the reader accepts: MPS -> model -> MPS -> model gives the
// same model, and no written line is longer than 255 characters.
TEST(MpsWriter, CorpusRoundTrip) {
  const std::filesystem::path corpus =
      std::filesystem::path(LPCONV_SOURCE_DIR) / ".." / "shared" / "corpus" / "standard";
  if (!std::filesystem::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
    if (entry.path().extension() != ".mps") continue;
    CollectingSink sink;
    Model first;
    try {
      first = readModel(entry.path().string(), Format::mps, sink);
    } catch (const ParseError&) {
      continue;
    }
    ++files;
    const std::string text = mpsText(first);
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(line.size(), 255u) << entry.path() << ": " << line;
    }
    EXPECT_EQ(modelText(reread(first)), modelText(first)) << entry.path();
  }
  EXPECT_GE(files, 60);
}

}  // namespace
}  // namespace lpconv
