// The dialect reading as a model: lpconv's output items, with the line of each row.

#include <gtest/gtest.h>

#include <string>

#include <lpconv/formats/exact_number.h>

#include "dialect_model.h"

namespace lpcheck {
namespace {

std::string rowText(const lpconv::Model& m, lpconv::Model::Index i) {
  std::string out = lpconv::exactText(m.rowLower(i)) + " <=";
  const lpconv::RowView row = m.row(i);
  for (std::size_t k = 0; k < row.size(); ++k) {
    out += " " + lpconv::exactText(row.value(k)) + "*x" + std::to_string(row.column(k) + 1);
  }
  return out + " <= " + lpconv::exactText(m.rowUpper(i)) + " @" + std::to_string(m.rowLine(i));
}

std::optional<lpconv::Model> modelOf(const std::string& text) {
  const LineIndex lines(text);
  return dialectModel(readDialect(text, lines, "model.lp"));
}

TEST(DialectModel, TheWorkedExampleAsLpconvWritesIt) {
  const auto m = modelOf(
      "Maximize\n obj: 3 x1 + 2 x2\nSubject To\n 1 x1 + 1 x2 >= 1\n 1 x2 + 1 x1 <= 4\n 1 x1 = 2\n"
      "Bounds\n 0 <= x1 <= 10\nEnd\n");
  ASSERT_TRUE(m.has_value());
  ASSERT_EQ(m->columnCount(), 2u);
  EXPECT_EQ(m->sense(), lpconv::ObjectiveSense::maximize);
  EXPECT_EQ(lpconv::exactText(m->objective(0)), "3");
  EXPECT_EQ(lpconv::exactText(m->objective(1)), "2");
  ASSERT_EQ(m->rowCount(), 2u);
  EXPECT_EQ(rowText(*m, 0), "2 <= 1*x1 <= 2 @6");
  EXPECT_EQ(rowText(*m, 1), "1 <= 1*x1 1*x2 <= 4 @4");
  EXPECT_EQ(lpconv::exactText(m->columnUpper(0)), "10");
  // x2 has no bound line: "no bound stated" means the standard 0 .. inf.
  EXPECT_EQ(lpconv::exactText(m->columnLower(1)), "0");
  EXPECT_EQ(lpconv::exactText(m->columnUpper(1)), "inf");
}

TEST(DialectModel, TrapsAreInTheModelAsLpconvReadsThem) {
  // The label gives x1 the coefficient 1; the leftover "<=" row keeps its line and -inf.
  const auto m = modelOf(
      "Minimize\n obj: 1 x1 + 1 x2\nSubject To\n c1: 2 x1 + 3 x2 >= 1\n 2 x1 + 3 x2 <= 5\n"
      " 1 x2 - 0.5 x1 >= 0\n 1 x2 + 1 x1 <= 9\nBounds\n 1 <= x1 <= 4\n x2 <= 3\nEnd\n");
  ASSERT_TRUE(m.has_value());
  ASSERT_EQ(m->rowCount(), 4u);
  EXPECT_EQ(rowText(*m, 0), "1 <= 1*x1 3*x2 <= inf @4");
  EXPECT_EQ(rowText(*m, 1), "0 <= 0.5*x1 1*x2 <= inf @6");
  EXPECT_EQ(rowText(*m, 2), "-inf <= 2*x1 3*x2 <= 5 @5");
  EXPECT_EQ(rowText(*m, 3), "-inf <= 1*x1 1*x2 <= 9 @7");
  // The carried lower value of the bound lines.
  EXPECT_EQ(lpconv::exactText(m->columnLower(1)), "1");
}

TEST(DialectModel, NoModelWhenLpconvFails) {
  EXPECT_FALSE(modelOf("Minimize\n obj: 1 x1\nSubject To\n 1 x1 >= 1\nEnd\n").has_value());
  EXPECT_FALSE(modelOf("Minimize\n obj: 1 x1\nSubject To\n 1 x1 <= 1\n").has_value());
}

}  // namespace
}  // namespace lpcheck
