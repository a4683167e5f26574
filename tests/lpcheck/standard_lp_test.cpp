// The standard reading is the side lpconv is compared against, and the no-false-clean property
// test leans on it too: its reading of each construct is pinned here against hand-written
// expectations, never against itself.

#include <gtest/gtest.h>

#include <string>

#include <lpconv/formats/exact_number.h>

#include "standard_lp.h"

namespace lpcheck {
namespace {

// "sense rhs | name:value ..." for each row, in order.
std::string rowsOf(const StandardReading& r) {
  std::string out;
  for (const Row& row : r.rows) {
    out += std::string(1, row.sense) + " " + lpconv::exactText(row.rhs) + " |";
    for (const Term& t : row.terms) out += " " + t.name + ":" + lpconv::exactText(t.value);
    for (const auto& [value, at] : row.leftConstants) out += " c:" + lpconv::exactText(value);
    out += row.label.empty() ? ";" : " @" + row.label + ";";
  }
  return out;
}

std::string boundsOf(const StandardReading& r) {
  std::string out;
  for (const auto& [name, b] : r.bounds) {
    out += name + "=" + lpconv::exactText(lpconv::Coefficient(b.lower)) + ".." +
           lpconv::exactText(lpconv::Coefficient(b.upper)) + ";";
  }
  return out;
}

struct RowCase {
  const char* text;
  const char* rows;
};

TEST(StandardLp, RowsAreReadAsWritten) {
  const RowCase cases[] = {
      {"Minimize\n obj: x1\nSubject To\n c1: 2 x1 + 3 x2 >= 1\nEnd\n", "> 1 | x1:2 x2:3 @c1;"},
      {"Minimize\n obj: x1\nSubject To\n 3 x2 - 0.5 x1 <= 4\nEnd\n", "< 4 | x2:3 x1:-0.5;"},
      {"Minimize\n obj: x1\nst\n x1 +\n x2 = -2.5e-1\nEnd\n", "= -0.25 | x1:1 x2:1;"},
      {"Minimize\n obj: x1\ns.t.\n - x1 - - x2 =< 2\n x1 => 0\nEnd\n",
       "< 2 | x1:-1 x2:1;> 0 | x1:1;"},
      {"Minimize\n obj: x1\nSubject To\n 1 x1 + 3 <= 7 \\ a comment\nEnd\n", "< 7 | x1:1 c:3;"},
      {"Minimize\n obj: x1\nSuch That\n bin1: 1 x1 >= 1\nEnd\n", "> 1 | x1:1 @bin1;"},
      {"Minimize\n obj: x1\nSubject To\n 1 x1 + 2 x1 >= 1\nEnd\n", "> 1 | x1:1 x1:2;"},
  };
  for (const RowCase& c : cases) {
    const StandardReading r = readStandardLp(c.text);
    EXPECT_FALSE(r.error.has_value()) << c.text << (r.error ? r.error->second : "");
    EXPECT_EQ(rowsOf(r), c.rows) << c.text;
  }
}

TEST(StandardLp, ObjectiveSenseLabelAndConstant) {
  const StandardReading r = readStandardLp("Maximise\n profit: 3 x1 + 2 x2 + 5\nSubject To\nEnd\n");
  ASSERT_FALSE(r.error.has_value());
  EXPECT_TRUE(r.objective.present);
  EXPECT_FALSE(r.objective.minimise);
  EXPECT_EQ(r.objective.label, "profit");
  ASSERT_EQ(r.objective.terms.size(), 2u);
  EXPECT_EQ(lpconv::exactText(r.objective.terms[1].value), "2");
  ASSERT_EQ(r.objective.constants.size(), 1u);
  EXPECT_EQ(lpconv::exactText(r.objective.constants[0].first), "5");
}

TEST(StandardLp, BoundForms) {
  const StandardReading r = readStandardLp(
      "Minimize\n obj: x1\nSubject To\n x1 >= 0\nBounds\n -5 <= x1 <= 40\n x2 <= 10\n"
      " x3 >= 2\n x4 = 7\n x5 free\n -inf <= x6 <= inf\n 3 >= x7\nGeneral\n x2\nBinary\n "
      "x8\nEnd\n");
  ASSERT_FALSE(r.error.has_value()) << r.error->second;
  EXPECT_EQ(boundsOf(r), "x1=-5..40;x2=0..10;x3=2..inf;x4=7..7;x5=-inf..inf;x6=-inf..inf;x7=0..3;");
  EXPECT_EQ(r.integers.count("x2"), 1u);
  EXPECT_EQ(r.integers.count("x8"), 1u);
  EXPECT_EQ(r.binaries.count("x8"), 1u);
  EXPECT_EQ(r.binaries.count("x2"), 0u);
}

TEST(StandardLp, PlacesAreLinesAndColumns) {
  const StandardReading r =
      readStandardLp("Minimize\n obj: x1\nSubject To\n  c: 2 x1 + 3 x2 >= 1\n");
  ASSERT_EQ(r.rows.size(), 1u);
  const Row& row = r.rows[0];
  EXPECT_EQ(row.at.line, 4);
  EXPECT_EQ(row.at.column, 3);
  EXPECT_EQ(row.terms[1].at.column, 11);      // the "+" of "+ 3 x2"
  EXPECT_EQ(row.terms[1].nameAt.column, 15);  // "x2"
  EXPECT_EQ(row.terms[1].written, "+3");
  EXPECT_TRUE(row.terms[0].first);
  EXPECT_EQ(row.rhsAt.column, 21);
  EXPECT_EQ(r.firstMention.at("x1").line, 2);
}

TEST(StandardLp, SectionsInOrder) {
  const StandardReading r =
      readStandardLp("Minimize\n obj: x1\nSubject To\n x1 >= 1\nBinary\n x1\nGeneral\n x1\nEnd\n");
  ASSERT_EQ(r.sections.size(), 5u);
  EXPECT_EQ(r.sections[2].word, "binary");
  EXPECT_EQ(r.sections[3].word, "general");
  EXPECT_EQ(r.sections[3].at.line, 7);
}

struct ErrorCase {
  const char* text;
  long line;
  long column;
};

TEST(StandardLp, WhatItCannotReadEndsTheReadingAtItsPlace) {
  const ErrorCase cases[] = {
      {"blah blah\n", 1, 1},
      {"Minimize\n obj: x1 + [ x1 ^2 ] / 2\nSubject To\nEnd\n", 2, 12},
      {"Minimize\n obj: x1\nSubject To\n x1 + x2 >= x3\nEnd\n", 4, 13},
      {"Minimize\n obj: x1\nSubject To\n x1 + x2\nEnd\n", 5, 1},
      {"Minimize\n obj: x1 <= 3\nSubject To\nEnd\n", 2, 10},
      {"Minimize\n obj: x1\nSubject To\n x1 >= 1\nSemi-continuous\n x1\nEnd\n", 5, 1},
      {"Minimize\n obj: x1\nBounds\n x1 <=\nEnd\n", 5, 1},
  };
  for (const ErrorCase& c : cases) {
    const StandardReading r = readStandardLp(c.text);
    ASSERT_TRUE(r.error.has_value()) << c.text;
    EXPECT_EQ(r.error->first.line, c.line) << c.text << r.error->second;
    EXPECT_EQ(r.error->first.column, c.column) << c.text << r.error->second;
  }
}

TEST(StandardLp, ByteOrderMarkIsNoPartOfTheText) {
  const StandardReading r = readStandardLp("\xEF\xBB\xBFMinimize\n obj: 3 x1\nSubject To\nEnd\n");
  ASSERT_FALSE(r.error.has_value());
  ASSERT_EQ(r.objective.terms.size(), 1u);
  EXPECT_EQ(lpconv::exactText(r.objective.terms[0].value), "3");
}

TEST(StandardLp, RowsGoToTheSinkInstead) {
  std::string seen;
  const StandardReading r =
      readStandardLp("Minimize\n obj: x1\nSubject To\n x1 >= 1\n x2 <= 2\nEnd\n",
                     [&](const Row& row) { seen += std::to_string(row.at.line) + row.sense; });
  EXPECT_TRUE(r.rows.empty());
  EXPECT_EQ(seen, "4>5<");
}

}  // namespace
}  // namespace lpcheck
