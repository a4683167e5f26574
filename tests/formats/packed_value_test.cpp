#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <lpconv/formats/exact_number.h>
#include <lpconv/model/model.h>
#include <lpconv/model/packed_value.h>

#include "tests/formats/model_text.h"

namespace lpconv {
namespace {

Coefficient value(const char* text) {
  Coefficient c;
  EXPECT_EQ(parseExactNumber(text, c), NumberError::none) << text;
  return c;
}

// Every value packs and unpacks to itself; which ones need the table is part of the promise
// (memory), so it is pinned too.
TEST(PackedValue, RoundTripsAndUsesTheTableOnlyBeyondTheWord) {
  struct Case {
    const char* text;
    bool inTable;
  };
  const Case cases[] = {
      {"0", false},
      {"1", false},
      {"-7", false},
      {"0.1", false},
      {"-16.0203754179043", false},
      {"2.5e-05", false},
      {"1e-18", false},
      {"36028797018963967", false},  // 2^55 - 1
      {"-36028797018963967", false},
      {"36028797018963968", true},    // 2^55
      {"0.36028797018963968", true},  // mantissa 2^55
      {"1e-19", true},                // beyond 10^18
      {"1/3", true},
      {"1/1024", false},
      {"1/524288", true},  // 2^19
      {"123456789012345678901234567890", true},
      {"-0.000000000000000001", false},
  };
  for (const Case& c : cases) {
    std::vector<Coefficient> table;
    const Coefficient v = value(c.text);
    const std::uint64_t word = detail::packValue(v, table);
    EXPECT_EQ(table.size(), c.inTable ? 1u : 0u) << c.text;
    const Coefficient back = detail::unpackValue(word, table);
    EXPECT_TRUE(identical(back, v)) << c.text << " came back as " << toString(back);
    EXPECT_EQ(back.isInline(), v.isInline()) << c.text;
  }
}

// Column-wise entries join the rows sorted, repeated columns added up, zeros dropped.
TEST(ModelColumns, AppendedEntriesJoinTheRows) {
  Model m;
  const Model::Index x = m.addColumn("x");
  const Model::Index y = m.addColumn("y");
  std::vector<ModelEntry> none;
  std::vector<ModelEntry> e{{y, value("1/3")}};
  m.addRow("a", e, Coefficient(), Coefficient());
  m.addRow("b", none, Coefficient(), Coefficient());
  m.addRow("c", none, Coefficient(), Coefficient());
  m.appendColumnEntry(0, x, value("0.5"));  // before a's own entry
  m.appendColumnEntry(1, y, value("2"));
  m.appendColumnEntry(1, x, value("-1"));    // out of column order
  m.appendColumnEntry(2, x, value("0"));     // a zero
  m.appendColumnEntry(0, y, value("-1/3"));  // cancels a's own entry
  m.appendColumnEntry(2, y, value("1e-30"));
  m.finishColumns();
  EXPECT_EQ(test::modelText(m),
            "min  const 0\ncol x [0, inf]\ncol y [0, inf]\nrow a [0, 0]: x 1/2\n"
            "row b [0, 0]: x -1, y 2\nrow c [0, 0]: y 1/1000000000000000000000000000000\n");
  EXPECT_EQ(m.nonzeroCount(), 4u);
}

}  // namespace
}  // namespace lpconv
