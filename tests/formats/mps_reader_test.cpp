#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/formats/model_text.h"

namespace lpconv {
namespace {

using test::modelText;
using test::readText;

struct ReadCase {
  const char* name;
  const char* text;
  const char* model;               // modelText of the result
  std::vector<const char*> notes;  // headlines of the notes, in order
};

// Each corner of the format read into its exact model, with the notes its rules give.
const ReadCase kReadCases[] = {
    {"free layout, exact decimals and p/q",
     "NAME test\nROWS\n N obj\n L c1\n G c2\n E c3\nCOLUMNS\n x obj 0.1 c1 2.5e-05\n"
     " x c2 1/3\n y c1 -1 c3 1e2\nRHS\n rhs c1 4 c2 -0.5\n rhs c3 7\nBOUNDS\n UP bnd x 10\n"
     "ENDATA\n",
     "min obj const 0\ncol x [0, 10] obj 1/10\ncol y [0, inf]\n"
     "row c1 [-inf, 4]: x 1/40000, y -1\nrow c2 [-1/2, inf]: x 1/3\nrow c3 [7, 7]: y 100\n",
     {}},
    {"fixed layout with blanks in names",
     "NAME          fixed\nROWS\n N  cost\n L  row one\nCOLUMNS\n"
     "    my col    cost      1.5            row one   2\nRHS\n    rhs 1     row one   3\n"
     "ENDATA\n",
     "min cost const 0\ncol my col [0, inf] obj 1:1/2\nrow row one [-inf, 3]: my col 2\n",
     {}},
    {"ranges by the sign table",
     "ROWS\n N o\n E e1\n E e2\n L l1\n G g1\n E e0\nCOLUMNS\n x e1 1 e2 1\n x l1 1 g1 1\n"
     " x e0 1\nRHS\n r e1 1 e2 4\n r l1 4 g1 4\n r e0 2\nRANGES\n q e1 3 e2 -3\n q l1 -3 g1 -3\n"
     " q e0 0\nENDATA\n",
     "min o const 0\ncol x [0, inf]\nrow e1 [1, 4]: x 1\nrow e2 [1, 4]: x 1\n"
     "row l1 [1, 4]: x 1\nrow g1 [4, 7]: x 1\nrow e0 [2, 2]: x 1\n",
     {}},
    {"objective right-hand side is the negated constant",
     "ROWS\n N o\n L c\nCOLUMNS\n x o 1 c 1\nRHS\n r o 10 c 1\nENDATA\n",
     "min o const -10\ncol x [0, inf] obj 1\nrow c [-inf, 1]: x 1\n",
     {"t.mps:7:6: note: the right-hand side of objective row 'o' is read as the objective "
      "constant -10 (its negation)"}},
    {"negative upper bound with no lower bound frees the lower side",
     "ROWS\n N o\nCOLUMNS\n x o 1\n y o 1\nBOUNDS\n UP b x -2\n LO b y 1\n UP b y -1\nENDATA\n",
     "min o const 0\ncol x [-inf, -2] obj 1\ncol y [1, -1] obj 1\n",
     {"t.mps:7:9: note: negative upper bound on 'x' with no lower bound given: the lower bound "
      "becomes -infinity"}},
    {"marker integers: 0..1 without bounds, +inf above a lone lower bound",
     "ROWS\n N o\nCOLUMNS\n m 'MARKER' 'INTORG'\n a o 1\n b o 1\n c o 1\n m 'MARKER' 'INTEND'\n"
     " d o 1\nBOUNDS\n LO b b 2\n UP b c 5\nENDATA\n",
     "min o const 0\ncol a [0, 1] int obj 1\ncol b [2, inf] int obj 1\ncol c [0, 5] int obj 1\n"
     "col d [0, inf] obj 1\n",
     {"t.mps:4:13: note: integer columns up to INTEND with no bound in BOUNDS get the bounds 0 "
      "and 1; a bound in BOUNDS leaves the other side at its usual default (0, +infinity)",
      "t.mps:11:2: note: marker integer column 'b' has a bound in BOUNDS: its upper bound is "
      "+infinity unless BOUNDS gives one"}},
    {"objective sense on the same line",
     "NAME x\nOBJSENSE MAX\nROWS\n N o\nCOLUMNS\n x o 1\nENDATA\n",
     "max o const 0\ncol x [0, inf] obj 1\n",
     {}},
    {"objective sense on the next line",
     "NAME x\nOBJSENSE\n    MAXIMIZE\nROWS\n N o\nCOLUMNS\n x o 1\nENDATA\n",
     "max o const 0\ncol x [0, inf] obj 1\n",
     {}},
    {"1e30 and beyond is infinity in sides and bounds, not in the matrix",
     "ROWS\n N o\n L c\nCOLUMNS\n x o 1e30 c 1\nRHS\n r c 1e30\nBOUNDS\n LO b x -1E+31\nENDATA\n",
     "min o const 0\ncol x [-inf, inf] obj 1000000000000000000000000000000\n"
     "row c [-inf, inf]: x 1\n",
     {"t.mps:7:6: note: right-hand side 1e30 is 1e30 or more in magnitude and is read as "
      "+infinity",
      "t.mps:9:9: note: lower bound -1E+31 is 1e30 or more in magnitude and is read as "
      "-infinity"}},
    {"a bound named twice: the later one holds",
     "ROWS\n N o\nCOLUMNS\n x o 1\nBOUNDS\n UP b x 4\n UP b x 3\nENDATA\n",
     "min o const 0\ncol x [0, 3] obj 1\n",
     {"t.mps:7:2: note: the upper bound of 'x' is given again: the later bound holds"}},
    {"later free rows are dropped with their entries",
     "ROWS\n N o\n N extra\n G c\nCOLUMNS\n x o 1 extra 5\n x c 1\nRHS\n r extra 3\nENDATA\n",
     "min o const 0\ncol x [0, inf] obj 1\nrow c [0, inf]: x 1\n",
     {"t.mps:3:4: note: free row 'extra' is not the objective: it and its entries are dropped",
      "t.mps:9:4: note: the right-hand side of dropped free row 'extra' is left out"}},
    {"OBJNAME chooses among the free rows",
     "OBJNAME\n second\nROWS\n N first\n N second\nCOLUMNS\n x first 1 second 2\nENDATA\n",
     "min second const 0\ncol x [0, inf] obj 2\n",
     {"t.mps:4:4: note: free row 'first' is not the row OBJNAME names: it and its entries are "
      "dropped"}},
    {"every bound type",
     "ROWS\n N o\nCOLUMNS\n a o 1\n b o 1\n c o 1\n d o 1\n e o 1\n f o 1\n g o 1\nBOUNDS\n"
     " BV b a\n LI b b -3\n UI b c 7\n FR b d\n MI b e\n PL b f\n FX b g 2.5\nENDATA\n",
     "min o const 0\ncol a [0, 1] int obj 1\ncol b [-3, inf] int obj 1\ncol c [0, 7] int obj 1\n"
     "col d [-inf, inf] obj 1\ncol e [-inf, inf] obj 1\ncol f [0, inf] obj 1\n"
     "col g [2:1/2, 2:1/2] obj 1\n",
     {}},
    {"comments, a second vector and an unclosed marker block",
     "* comment\nROWS\n N o $ objective\n L c\nCOLUMNS\n m MARKER INTORG\n x o 1 c 1 $ two\n"
     "RHS\n r c 2\n s c 9\nENDATA\n",
     "min o const 0\ncol x [0, 1] int obj 1\nrow c [-inf, 2]: x 1\n",
     {"t.mps:6:11: note: integer columns up to INTEND with no bound in BOUNDS get the bounds 0 "
      "and 1; a bound in BOUNDS leaves the other side at its usual default (0, +infinity)",
      "t.mps:8:1: note: the integer marker block begun at line 6 has no INTEND marker: it ends "
      "with the COLUMNS section",
      "t.mps:10:2: note: only the first vector ('r') is read: this entry of 's' is left out"}},
};

class MpsReadCase : public ::testing::TestWithParam<ReadCase> {};

TEST_P(MpsReadCase, GivesItsModelAndNotes) {
  const ReadCase& c = GetParam();
  CollectingSink sink;
  const Model model = readText(c.text, Format::mps, sink);
  EXPECT_EQ(modelText(model), c.model);
  std::vector<std::string> notes;
  for (const Diagnostic& d : sink.messages) notes.push_back(headline(d));
  EXPECT_EQ(notes, std::vector<std::string>(c.notes.begin(), c.notes.end()));
}

INSTANTIATE_TEST_SUITE_P(Corners, MpsReadCase, ::testing::ValuesIn(kReadCases),
                         [](const auto& info) { return "case" + std::to_string(info.index); });

struct ErrorCase {
  const char* text;
  const char* headline;
};

// Each malformed input stops at its first error, which names the line and column.
const ErrorCase kErrorCases[] = {
    {"ROWS\n N o\nCOLUMNS\n x nope 1\nENDATA\n", "t.mps:4:4: error: unknown row 'nope'"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nBOUNDS\n UP b y 1\nENDATA\n",
     "t.mps:6:7: error: unknown column 'y'"},
    {"ROWS\n N o\n L c\nCOLUMNS\n x c 1 c 2\nENDATA\n",
     "t.mps:5:8: error: column 'x' has a second entry in row 'c'"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\n y o 1\n x o 2\nENDATA\n",
     "t.mps:6:2: error: the entries of column 'x' must be contiguous (it appeared before)"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\n", "t.mps:4: error: the file ends without ENDATA"},
    {"ROWS\n N o\nCOLUMNS\n x o 0x10\nENDATA\n",
     "t.mps:4:6: error: hexadecimal numbers are not supported"},
    {"ROWS\n N o\nCOLUMNS\n x o NaN\nENDATA\n",
     "t.mps:4:6: error: NaN is not a number an exact model can hold"},
    {"ROWS\n N o\nCOLUMNS\n x o inf\nENDATA\n",
     "t.mps:4:6: error: an infinite value is not allowed here"},
    {"ROWS\n N o\nCOLUMNS\n x o 1.5D3\nENDATA\n", "t.mps:4:6: error: not a number"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nSOS\n S1 SOS s1 1\nENDATA\n",
     "t.mps:5:1: error: SOS constraints (SOS section) are not supported"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nBOUNDS\n SC b x 4\nENDATA\n",
     "t.mps:6:2: error: semi-continuous bounds (SC) are not supported"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nQUADOBJ\n x x 1\nENDATA\n",
     "t.mps:5:1: error: quadratic objectives (QUADOBJ section) are not supported"},
    {"ROWS\n N o\nINDICATORS\nENDATA\n",
     "t.mps:3:1: error: indicator constraints (INDICATORS section) are not supported"},
    {"ROWS\n N o\nWHATEVER\nENDATA\n",
     "t.mps:3:1: error: unknown section 'WHATEVER' (a data line must begin with a blank)"},
    {"COLUMNS\n x o 1\nENDATA\n", "t.mps:1:1: error: 'COLUMNS' before the ROWS section"},
    {"ROWS\n N o\n L o\nENDATA\n", "t.mps:3:4: error: row 'o' is defined twice"},
    {"ROWS\n N o\n X c\nENDATA\n",
     "t.mps:3:2: error: unknown row type 'X' (expected N, E, L or G)"},
    {"ROWS\n N o\n L c\nRHS\n r c 1\n r c 2\nENDATA\n",
     "t.mps:6:4: error: a second right-hand side for row 'c'"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nBOUNDS\n XX b x 1\nENDATA\n",
     "t.mps:6:2: error: unknown bound type 'XX' (expected UP, LO, FX, FR, MI, PL, BV, LI or UI)"},
    {"ROWS\n N o\nCOLUMNS\n x o\nENDATA\n",
     "t.mps:4:4: error: wrong number of fields for this section"},
    {"ROWS\n N o\nCOLUMNS\n m 'MARKER' 'INTORG'\n m 'MARKER' 'INTORG'\nENDATA\n",
     "t.mps:5:13: error: an INTORG marker inside an integer block (begun at line 4)"},
    {"ROWS\n N o\nNAME x\nENDATA\n", "t.mps:3:1: error: 'NAME' must come before ROWS"},
    {"OBJSENSE\n    UP\nROWS\nENDATA\n",
     "t.mps:2:5: error: expected MAX or MIN as the objective sense, not 'UP'"},
    {"NAME\n x\nROWS\nENDATA\n", "t.mps:2:2: error: a data line in the NAME section"},
    {"ROWS\n N o\nCOLUMNS\n x o 1\nRHS\n r o 1\n r o 2\nENDATA\n",
     "t.mps:7:4: error: a second right-hand side for 'o'"},
};

class MpsErrorCase : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(MpsErrorCase, StopsWithItsMessage) {
  CollectingSink sink;
  try {
    readText(GetParam().text, Format::mps, sink);
    ADD_FAILURE() << "read without error";
  } catch (const ParseError& e) {
    EXPECT_EQ(headline(e.diagnostic()), GetParam().headline);
  }
}

INSTANTIATE_TEST_SUITE_P(Errors, MpsErrorCase, ::testing::ValuesIn(kErrorCases));

TEST(MpsReader, ErrorShowsTheLineAndACaret) {
  CollectingSink sink;
  try {
    readText("ROWS\n N o\nCOLUMNS\n    x   o   0x1\nENDATA\n", Format::mps, sink);
    FAIL() << "read without error";
  } catch (const ParseError& e) {
    EXPECT_EQ(format(e.diagnostic()),
              "t.mps:4:13: error: hexadecimal numbers are not supported\n"
              "    x   o   0x1\n"
              "            ^\n");
  }
}

TEST(MpsReader, ReadsGzipInput) {
  // "ROWS\n N o\nCOLUMNS\n x o 3\nENDATA\n" compressed by gzip -n.
  const unsigned char gz[] = {0x1f, 0x8b, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x03,
                              0x0b, 0xf2, 0x0f, 0x0f, 0xe6, 0x52, 0xf0, 0x53, 0xc8, 0xe7,
                              0x72, 0xf6, 0xf7, 0x09, 0xf5, 0xf5, 0x03, 0x72, 0x2a, 0x14,
                              0xf2, 0x15, 0x8c, 0xb9, 0x5c, 0xfd, 0x5c, 0x1c, 0x43, 0x1c,
                              0xb9, 0x00, 0x4f, 0x14, 0x02, 0x05, 0x20, 0x00, 0x00, 0x00};
  CollectingSink sink;
  const Model m = readText(std::string(reinterpret_cast<const char*>(gz), sizeof gz), Format::mps,
                           sink, "t.mps.gz");
  EXPECT_EQ(modelText(m), "min o const 0\ncol x [0, inf] obj 3\n");
}

}  // namespace
}  // namespace lpconv
