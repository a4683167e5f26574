#include <lpconv/model/model.h>

#include <gtest/gtest.h>

#include <vector>

#include "lp_model_text.h"

namespace lpconv {
namespace {

using testing::modelText;

TEST(Model, AddRowSortsMergesAndDropsZeros) {
  Model m;
  const auto x = m.addColumn("x");
  const auto y = m.addColumn("y");
  const auto z = m.addColumn("z");
  std::vector<ModelEntry> entries{{z, Coefficient(2L)},
                                  {x, Coefficient(1L)},
                                  {y, Coefficient(0L)},
                                  {z, Coefficient(-2L)},
                                  {x, Coefficient::fromLowestTerms(1, 2)}};
  m.addRow("r", entries, Coefficient(), Coefficient::infinity());
  EXPECT_EQ(modelText(m), "min:\nr: 0 <= 1.5 x <= inf\nx [0, inf]\ny [0, inf]\nz [0, inf]\n");
  EXPECT_EQ(m.nonzeroCount(), 1u);
  EXPECT_EQ(m.findOrAddColumn("y"), y);
  EXPECT_EQ(m.findOrAddColumn("w"), 3u);
  EXPECT_FALSE(m.findRow("s").has_value());
}

TEST(Model, ColumnEntriesJoinTheirRowsAtFinish) {
  Model m;
  const auto x = m.addColumn("x");
  const auto y = m.addColumn("y");
  std::vector<ModelEntry> first{{y, Coefficient(1L)}};
  m.addRow("a", first, Coefficient(), Coefficient(1L));
  std::vector<ModelEntry> none;
  m.addRow("b", none, Coefficient(2L), Coefficient(2L));
  m.appendColumnEntry(0, x, Coefficient(3L));
  m.appendColumnEntry(1, x, Coefficient(4L));
  m.appendColumnEntry(0, y, Coefficient(-1L));  // cancels the entry addRow stored
  m.appendColumnEntry(1, y, Coefficient(5L));
  m.appendColumnEntry(1, y, Coefficient(1L));
  m.finishColumns();
  EXPECT_EQ(modelText(m), "min:\na: 0 <= 3 x <= 1\nb: 2 <= 4 x 6 y <= 2\nx [0, inf]\ny [0, inf]\n");
  EXPECT_EQ(m.nonzeroCount(), 3u);
}

}  // namespace
}  // namespace lpconv
