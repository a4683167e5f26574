#include <lpconv/formats/formats.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lp_model_text.h"

namespace lpconv {
namespace {

using testing::modelText;
using testing::readLpText;

struct ModelCase {
  const char* what;
  const char* input;
  const char* model;
};

// One tiny file per corner of the format, with the model it gives.
const ModelCase kModelCases[] = {
    {"keyword spellings, comments",
     "\\ a comment\nMAXIMUM\n obj: 2 x \\ trailing\nsuch that\n"
     "x <= 4\nBOUND\nGEN\n x\nend\n",
     "max obj: 2 x\nc1: -inf <= 1 x <= 4\nx [0, inf] int\n"},
    {"short keywords", "min\n x\ns.t.\n r: x >= 1\nbin\n y\nEnd\n",
     "min: 1 x\nr: 1 <= 1 x <= inf\nx [0, inf]\ny [0, 1] int\n"},
    {"keywords in the middle of a line", "Minimize a subject to a >= 1 bounds a <= 0\nEnd\n",
     "min: 1 a\nc1: 1 <= 1 a <= inf\na [0, 0]\n"},
    {"keywords used as names",
     "min\n obj: bin + end\nst\n bounds: bin - end >= 1\nbounds\n"
     "end <= 4\nEnd\n",
     "min obj: 1 bin 1 end\nbounds: 1 <= 1 bin -1 end <= inf\nbin [0, inf]\nend [0, 4]\n"},
    {"objective constant on either end", "max\n 3 + x - 1/2 + 2\nst\nEnd\n",
     "max: 1 x const 4.5\nx [0, inf]\n"},
    {"constants on the left move right", "min\nst\n c: 2 x + 3 - 1 <= 7\nEnd\n",
     "min:\nc: -inf <= 2 x <= 5\nx [0, inf]\n"},
    {"constant first, mirrored", "min\nst\n c: 3 >= y\n d: -2 <= z + 1\nEnd\n",
     "min:\nc: -inf <= 1 y <= 3\nd: -3 <= 1 z <= inf\ny [0, inf]\nz [0, inf]\n"},
    {"ranged rows", "min\nst\n r: -1 <= x + y <= 2.5\n s: 4 >= x >= 1\n t: -inf <= x <= 3\nEnd\n",
     "min:\nr: -1 <= 1 x 1 y <= 2.5\ns: 1 <= 1 x <= 4\nt: -inf <= 1 x <= 3\nx [0, inf]\n"
     "y [0, inf]\n"},
    {"a ranged row over lines after an operator", "min\nst\n r: 1 <= x +\n y\n <= 2\nEnd\n",
     "min:\nr: 1 <= 1 x 1 y <= 2\nx [0, inf]\ny [0, inf]\n"},
    {"a variable twice in a row is summed, zeros dropped",
     "min\nst\n r: x + 2 x - 3 x + y = 1\nEnd\n",
     "min:\nr: 1 <= 1 y <= 1\nx [0, inf]\ny [0, inf]\n"},
    {"rows and the objective over lines", "min\n obj:\n x\n + 2\n y\nst\n x\n + y\n >=\n 1\nEnd\n",
     "min obj: 1 x 2 y\nc1: 1 <= 1 x 1 y <= inf\nx [0, inf]\ny [0, inf]\n"},
    {"relation spellings",
     "min\nst\n a: x =< 1\n b: x => 2\n c: x < 3\n d: x > 4\n e: x == 5\nEnd\n",
     "min:\na: -inf <= 1 x <= 1\nb: 2 <= 1 x <= inf\nc: -inf <= 1 x <= 3\nd: 4 <= 1 x <= inf\n"
     "e: 5 <= 1 x <= 5\nx [0, inf]\n"},
    {"unnamed rows are numbered by position", "min\nst\n x >= 1\n r: x <= 5\n x = 2\nEnd\n",
     "min:\nc1: 1 <= 1 x <= inf\nr: -inf <= 1 x <= 5\nc3: 2 <= 1 x <= 2\nx [0, inf]\n"},
    {"a generated name that is taken", "min\nst\n c2: x >= 1\n x <= 5\nEnd\n",
     "min:\nc2: 1 <= 1 x <= inf\nc2#2: -inf <= 1 x <= 5\nx [0, inf]\n"},
    {"empty row and a coefficient without space", "min\nst\n r: >= -5\n s: 2x + 3.5e1y <= 1\nEnd\n",
     "min:\nr: -5 <= <= inf\ns: -inf <= 2 x 35 y <= 1\nx [0, inf]\ny [0, inf]\n"},
    {"exact numbers",
     "min\n 0.1 a + 1e-1 b + 2.5e-05 c + 1/3 d + 12345678901234567890 e\nst\nEnd\n",
     "min: 0.1 a 0.1 b 2.5e-5 c 1/3 d 12345678901234567890 e\na [0, inf]\nb [0, inf]\n"
     "c [0, inf]\nd [0, inf]\ne [0, inf]\n"},
    {"bound forms",
     "min\nst\nbounds\n a >= 1\n -inf <= b <= 5\n c free\n d = 3\n 2 <= e\n"
     "f <= +infinity\n g >= -Inf\n 7 >= h >= -2\nEnd\n",
     "min:\na [1, inf]\nb [-inf, 5]\nc [-inf, inf]\nd [3, 3]\ne [2, inf]\nf [0, inf]\n"
     "g [-inf, inf]\nh [-2, 7]\n"},
    {"columns in order of first appearance, also from bounds and integer sections",
     "min\n b\nst\n a + b >= 0\nbounds\n c <= 1\ngeneral\n d\nbinary\n e\nEnd\n",
     "min: 1 b\nc1: 0 <= 1 b 1 a <= inf\nb [0, inf]\na [0, inf]\nc [0, 1]\nd [0, inf] int\n"
     "e [0, 1] int\n"},
    {"binaries keep a stated bound", "min\nst\nbounds\n x <= 1\n y = 0\nbinary\n x y\nEnd\n",
     "min:\nx [0, 1] int\ny [0, 0] int\n"},
    {"negative upper bound keeps the lower bound 0", "min\nst\nbounds\n x <= -1\nEnd\n",
     "min:\nx [0, -1]\n"},
    {"name characters", "min\n x!\"#$%&()/,.;?@_'`{}|~ + y.1\nst\nEnd\n",
     "min: 1 x!\"#$%&()/,.;?@_'`{}|~ 1 y.1\nx!\"#$%&()/,.;?@_'`{}|~ [0, inf]\ny.1 [0, inf]\n"},
    {"large sides and bounds are infinite", "min\nst\n r: x <= 1e30\nbounds\n x >= -1e31\nEnd\n",
     "min:\nr: -inf <= 1 x <= inf\nx [-inf, inf]\n"},
    {"no End, last line without a line feed", "max\n x\nst\n x <= 1",
     "max: 1 x\nc1: -inf <= 1 x <= 1\n"
     "x [0, inf]\n"},
};

TEST(LpReader, CornersGiveTheirModel) {
  for (const ModelCase& c : kModelCases) {
    CollectingSink sink;
    try {
      EXPECT_EQ(modelText(readLpText(c.input, sink)), c.model) << c.what;
    } catch (const ParseError& e) {
      ADD_FAILURE() << c.what << ": " << format(e.diagnostic());
    }
  }
}

struct ErrorCase {
  const char* input;
  const char* message;  // the whole text: headline, line and caret
};

const ErrorCase kErrorCases[] = {
    {"x + y\n",
     "t.lp:1:1: error: expected a section keyword such as 'Minimize' or 'Maximize' before "
     "this\nx + y\n^\n"},
    {"\\ only a comment\n",
     "t.lp: error: no LP sections found (expected 'Minimize' or 'Maximize')\n"},
    {"min\n x y\n", "t.lp:2:4: error: expected '+' or '-' before this term\n x y\n   ^\n"},
    {"min\n 0x1F x\n", "t.lp:2:2: error: hexadecimal numbers are not supported\n 0x1F x\n ^\n"},
    {"min\n nan x\n", "t.lp:2:2: error: NaN is not a number an exact model can hold\n nan x\n ^\n"},
    {"min\n inf x\n",
     "t.lp:2:2: error: an infinite value is allowed only as a bound or a side of a row\n inf x\n "
     "^\n"},
    {"min\n 3 inf\n",
     "t.lp:2:4: error: expected a column name after the coefficient\n 3 inf\n   ^\n"},
    {"min\n 1e1000001 x\n",
     "t.lp:2:2: error: exponent out of range (at most 1000000 in magnitude)\n 1e1000001 x\n ^\n"},
    {"min\n 1/0 x\n", "t.lp:2:2: error: zero denominator\n 1/0 x\n ^\n"},
    {"min\n\tx + [ x ^ 2 ]\n",
     "t.lp:2:6: error: quadratic terms are not supported\n\tx + [ x ^ 2 ]\n\t    ^\n"},
    {"min\nst\n c: b = 1 -> x <= 2\n",
     "t.lp:3:11: error: indicator constraints are not supported\n c: b = 1 -> x <= 2\n          "
     "^\n"},
    {"min\nst\nsemi-continuous\n",
     "t.lp:3:1: error: semi-continuous sections are not supported\nsemi-continuous\n^\n"},
    {"min\nst\nSOS\n", "t.lp:3:1: error: SOS sections are not supported\nSOS\n^\n"},
    {"min\nst\nlazy constraints\n",
     "t.lp:3:1: error: lazy constraints are not supported\nlazy constraints\n^\n"},
    {"min\nst\nuser cuts\n", "t.lp:3:1: error: user cuts are not supported\nuser cuts\n^\n"},
    {"maximize multi-objectives\n",
     "t.lp:1:10: error: multiple objectives are not supported\n"
     "maximize multi-objectives\n         ^\n"},
    {"min\n x\nmax\n y\n",
     "t.lp:3:1: error: a second objective: multiple objectives are not supported\nmax\n^\n"},
    {"min\n obj: x\n c1: x >= 1\n",
     "t.lp:3:2: error: a row label in the objective ('Subject To' missing?)\n c1: x >= 1\n ^\n"},
    {"min\n x >= 1\n",
     "t.lp:2:4: error: a relation in the objective ('Subject To' missing?)\n x >= 1\n   ^\n"},
    {"min\nst\n c: x + y\n d: x <= 1\n",
     "t.lp:4:2: error: expected a relation (<=, >= or =)\n d: x <= 1\n ^\n"},
    {"min\nst\n c: x +\n",
     "t.lp:3:7: error: a term is missing after this sign\n c: x +\n      ^\n"},
    {"min\nst\n c: x + y",
     "t.lp:3:2: error: the file ends inside this row: a relation (<=, >= or =) "
     "is missing\n c: x + y\n ^\n"},
    {"min\nst\n c: x >= y\n",
     "t.lp:3:10: error: expected a number on the right side\n c: x >= y\n         ^\n"},
    {"min\nst\n c: x <= 3 >= 2\n",
     "t.lp:3:12: error: a second relation: a ranged row is written "
     "'lower <= expression <= upper'\n c: x <= 3 >= 2\n           ^\n"},
    {"min\nst\n c: 1 <= x >= 0\n",
     "t.lp:3:12: error: a ranged row needs two '<=' or two '>=' "
     "relations\n c: 1 <= x >= 0\n           ^\n"},
    {"min\nst\n c: x = inf\n",
     "t.lp:3:9: error: this infinite side leaves the row no value to take\n c: x = inf\n        "
     "^\n"},
    {"min\nst\n c: x >= 1\n c: x <= 2\n",
     "t.lp:4:2: error: row 'c' is named twice (first at line 3)\n c: x <= 2\n ^\n"},
    {"min\nst\n x >= 1\n c1: x <= 2\n",
     "t.lp:4:2: error: row 'c1' is named twice (the name of the "
     "unnamed row at line 3)\n c1: x <= 2\n ^\n"},
    {"min\nst\nbounds\n x >= inf\n",
     "t.lp:4:7: error: a lower bound cannot be +inf\n x >= inf\n      ^\n"},
    {"min\nst\nbounds\n x <= -inf\n",
     "t.lp:4:7: error: an upper bound cannot be -inf\n x <= -inf\n      ^\n"},
    {"min\nst\nbounds\n x = inf\n",
     "t.lp:4:6: error: a column cannot be fixed at an infinite value\n x = inf\n     ^\n"},
    {"min\nst\nbounds\n x fre\n",
     "t.lp:4:4: error: expected a relation or 'free' after the column\n x fre\n   ^\n"},
    {"min\nst\nbounds\n 1 <= x >= 0\n",
     "t.lp:4:9: error: a double bound needs two '<=' or two '>=' "
     "relations\n 1 <= x >= 0\n        ^\n"},
    {"min\nst\ngeneral\n 3\n", "t.lp:4:2: error: expected a column name\n 3\n ^\n"},
    {"min\n x * y\n", "t.lp:2:4: error: expected '+' or '-' before this term\n x * y\n   ^\n"},
    {"min\n .\n", "t.lp:2:2: error: not a number\n .\n ^\n"},
};

TEST(LpReader, EachErrorHasItsMessageAndPlace) {
  for (const ErrorCase& c : kErrorCases) {
    CollectingSink sink;
    try {
      readLpText(c.input, sink);
      ADD_FAILURE() << "read without error: " << c.input;
    } catch (const ParseError& e) {
      EXPECT_EQ(format(e.diagnostic()), c.message) << c.input;
    }
  }
}

struct NoteCase {
  const char* input;
  std::vector<std::string> messages;  // each headline, in order
};

TEST(LpReader, RulesAppliedAreReportedAtTheirLine) {
  const NoteCase cases[] = {
      {"min\nst\nbounds\n x <= -1\nEnd\n",
       {"t.lp:4:7: note: the upper bound of 'x' is negative and no lower bound is stated: the "
        "lower "
        "bound stays 0, so the column has no feasible value"}},
      {"min\nst\nbounds\n x <= -1\n x >= -3\nEnd\n", {}},
      {"min\nst\nbounds\n x <= 1\n x <= 2\n",
       {"t.lp:5:7: note: the upper bound of 'x' is stated again: the last one holds"}},
      {"min\nst\nbounds\n x >= 1\n 2 <= x\n",
       {"t.lp:5:2: note: the lower bound of 'x' is stated again: the last one holds"}},
      {"min\nst\nbounds\n x <= 5\nbinary\n x\n",
       {"t.lp:6:2: note: 'x' is binary but has a bound stated before: the stated bound holds"}},
      {"min\nst\n r: x <= 1e30\n",
       {"t.lp:3:10: note: a value of magnitude 1e30 or more in a row side is read as infinity"}},
      {"min\nst\nbounds\n x >= -1e40\n",
       {"t.lp:4:8: note: a value of magnitude 1e30 or more in a bound is read as infinity"}},
      {"min\n x\nEnd\n y\n", {"t.lp:4:2: warning: text after End is ignored"}},
  };
  for (const NoteCase& c : cases) {
    CollectingSink sink;
    readLpText(c.input, sink);
    std::vector<std::string> got;
    for (const Diagnostic& d : sink.messages) got.push_back(headline(d));
    EXPECT_EQ(got, c.messages) << c.input;
  }
}

TEST(LpReader, ErrorOnALaterLineAfterLookingAheadShowsItsOwnLine) {
  // The reader looks past the line end for the column of "3"; the message still shows line 2.
  CollectingSink sink;
  try {
    readLpText("min\n 3 inf\n\n\\ comment\n + x\n", sink);
    FAIL();
  } catch (const ParseError& e) {
    EXPECT_EQ(e.diagnostic().sourceLine, " 3 inf");
    EXPECT_EQ(e.diagnostic().line, 2);
  }
}

}  // namespace
}  // namespace lpconv
