#include <lpconv/formats/formats.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/numbers/qq.h>

#include "lp_model_text.h"

namespace lpconv {
namespace {

using testing::modelText;
using testing::readLpText;

std::string lpText(const Model& m) {
  std::ostringstream os;
  writeLp(m, os);
  return os.str();
}

// Writes the model, reads the text back and expects the same model, names included.
void expectRoundTrip(const Model& m, const std::string& what) {
  const std::string text = lpText(m);
  CollectingSink sink;
  try {
    const Model back = readLpText(text, sink);
    EXPECT_EQ(modelText(back), modelText(m)) << what << "\n" << text;
    EXPECT_TRUE(sink.messages.empty()) << what << ": " << headline(sink.messages.front());
  } catch (const ParseError& e) {
    ADD_FAILURE() << what << ": " << format(e.diagnostic()) << text;
  }
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 255u) << what;
  }
}

TEST(LpWriter, EveryAcceptedCorpusFileReadsBackTheSame) {
  int accepted = 0;
  for (const auto& file : std::filesystem::directory_iterator(LPCONV_LP_CORPUS)) {
    if (file.path().extension() != ".lp") continue;
    CollectingSink sink;
    LineSource source(file.path().string());
    Model m;
    try {
      m = readLp(source, sink);
    } catch (const ParseError&) {
      continue;
    }
    ++accepted;
    expectRoundTrip(m, file.path().filename().string());
  }
  EXPECT_EQ(accepted, 6);  // the rest hold quadratic or semi-continuous sections, or garbage
}

TEST(LpWriter, WritesTheExpectedText) {
  CollectingSink sink;
  const Model m = readLpText(
      "max\n obj: 3 x - y + 1/3 z - 2.5\nst\n r: -1 <= x - 2 y <= 4\n e: x + z = 1\n"
      "f: x >= -inf\nbounds\n -inf <= y <= -2\n z free\n w = 1e-20\ngeneral\n x w\nEnd\n",
      sink);
  EXPECT_EQ(lpText(m),
            "Maximize\n obj: 3 x - y + 1/3 z - 2.5\nSubject To\n r: -1 <= x - 2 y <= 4\n"
            " e: x + z = 1\n f: x >= -inf\nBounds\n -inf <= y <= -2\n z free\n w = 1e-20\n"
            "Generals\n x w\nEnd\n");
}

TEST(LpWriter, NamesTheFormatCannotCarryAreMadeSafe) {
  Model m;
  const std::vector<std::string> names = {"1x", "a b", "end", "x[1]", "", "bin", "_end", ".5"};
  std::vector<ModelEntry> entries;
  for (const std::string& n : names) {
    const Model::Index j = m.addColumn(n);
    entries.push_back({j, Coefficient(static_cast<long>(j + 1))});
  }
  m.addRow("free", entries, Coefficient(1L), Coefficient::infinity());
  const std::string text = lpText(m);
  EXPECT_EQ(text,
            "Minimize\nSubject To\n free: _1x + 2 a_b + 3 _end#1 + 4 x_1_ + 5 _ + 6 _bin + 7 _end "
            "+ 8 _.5 >= 1\n"
            "End\n");
  CollectingSink sink;
  const Model back = readLpText(text, sink);
  EXPECT_EQ(back.columnCount(), m.columnCount());
  EXPECT_EQ(back.row(0).size(), names.size());
}

TEST(LpWriter, ColumnsKeepTheirOrderWhenTheyAppearOutOfIt) {
  Model m;
  const Model::Index a = m.addColumn("a");
  const Model::Index b = m.addColumn("b");
  m.addColumn("unused");
  std::vector<ModelEntry> entries{{b, Coefficient(1L)}};
  m.addRow("r", entries, Coefficient(), Coefficient(1L));
  m.setObjective(b, Coefficient(2L));
  (void)a;
  expectRoundTrip(m, "out of order");
}

// Random models with every kind of row and bound, values with and without a finite decimal,
// large numbers, long rows.
Model randomModel(std::mt19937& random) {
  auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  auto value = [&]() -> Coefficient {
    switch (pick(6)) {
      case 0:
        return Coefficient(static_cast<long>(pick(21) - 10));
      case 1:
        return Coefficient::fromLowestTerms(pick(2) ? 1 : -1, 3);
      case 2:
        return Coefficient(QQ("-123456789012345678901234567/1000"));
      case 3:
        return Coefficient::fromLowestTerms(25, 1000000);
      case 4:
        return Coefficient(QQ("7/123456789012345678901"));
      default:
        return Coefficient::fromLowestTerms(pick(2001) - 1000, 8);
    }
  };
  Model m;
  m.setSense(pick(2) ? ObjectiveSense::maximize : ObjectiveSense::minimize);
  if (pick(2)) m.setObjectiveName("cost");
  const int columns = 1 + pick(40);
  for (int j = 0; j < columns; ++j) {
    const Model::Index c = m.addColumn("x" + std::to_string(pick(1000)) + "_" + std::to_string(j));
    if (pick(3) == 0) m.setObjective(c, value());
    switch (pick(6)) {
      case 0:
        m.setColumnLower(c, Coefficient::minusInfinity());
        break;
      case 1:
        m.setColumnUpper(c, value());
        break;
      case 2: {
        Coefficient v = value();
        m.setColumnLower(c, v);
        m.setColumnUpper(c, v);
        break;
      }
      case 3:
        m.setColumnLower(c, value());
        m.setColumnUpper(c, pick(2) ? Coefficient::infinity() : value());
        break;
      default:
        break;
    }
    m.setInteger(c, pick(4) == 0);
  }
  if (pick(2)) m.setObjectiveConstant(value());
  const int rows = pick(30);
  for (int i = 0; i < rows; ++i) {
    std::vector<ModelEntry> entries;
    const int n = pick(3) == 0 ? pick(columns * 3 + 1) : pick(4);
    for (int k = 0; k < n; ++k)
      entries.push_back({static_cast<Model::Index>(pick(columns)), value()});
    Coefficient lower = Coefficient::minusInfinity();
    Coefficient upper = Coefficient::infinity();
    switch (pick(5)) {
      case 0:
        lower = value();
        break;
      case 1:
        upper = value();
        break;
      case 2:
        lower = value();
        upper = lower;
        break;
      case 3:
        lower = value();
        upper = value();
        break;
      default:
        break;
    }
    m.addRow("row" + std::to_string(i), entries, std::move(lower), std::move(upper));
  }
  return m;
}

TEST(LpWriter, GeneratedModelsReadBackTheSame) {
  std::mt19937 random(20261123);
  for (int k = 0; k < 150; ++k) {
    const Model m = randomModel(random);
    expectRoundTrip(m, "model " + std::to_string(k));
    if (HasFailure()) break;
  }
}

}  // namespace
}  // namespace lpconv
