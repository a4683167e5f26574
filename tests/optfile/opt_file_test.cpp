// The shape checks of readOptFile, with and without a row observer, and the rows an observer sees.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/optfile/opt_file.h>
#include <lpconv/util/failure.h>

namespace lpconv {
namespace {

// The worked example, item by item; a case replaces some items.
using Items = std::map<int, std::string>;
const Items kWorked = {{1, "[ inf ]"},      {2, "[\n[ 3 2 ]\n]"}, {4, "[\n[ 1 0 ]\n]"},
                       {5, "[ 2 ]"},        {6, "[ ]"},           {8, "[\n[ 1 1 ]\n]"},
                       {9, "[ 1 ]"},        {10, "[ 4 ]"},        {12, "[ 0 0 ]"},
                       {13, "[ 0 inf ]"},   {14, "[ 10 inf ]"}};

// The converter's layout; an item mapped to "-" is left out, and the file stops there.
std::string fileText(const Items& changes) {
  Items items = kWorked;
  for (const auto& [item, text] : changes) items[item] = text;
  std::string text;
  for (const auto& [item, itemText] : items) {
    if (itemText == "-") break;
    text += itemText + "\n";
    if (item == 2 || item == 6 || item == 10) text += "\n";
  }
  return text;
}

// Keeps a copy of every row it is shown, in the matrices' own text form.
struct RowRecorder : RowObserver {
  std::map<OptItem, std::string> rows;
  void row(OptItem item, const Vector<QQ>& r) override {
    std::ostringstream out;
    out << r << "\n";
    rows[item] += out.str();
  }
};

class OptFileTest : public ::testing::Test {
 protected:
  void SetUp() override { previous = setFailureHandler(throwFailure); }
  void TearDown() override { setFailureHandler(previous); }

  // The failure message of reading text, "" when it reads; with and without an observer.
  static std::string failure(const std::string& text, bool observed) {
    std::istringstream in(text);
    RowRecorder recorder;
    try {
      readOptFile(in, observed ? &recorder : nullptr);
    } catch (const FailureException& e) {
      return e.what();
    }
    return "";
  }

 private:
  FailureHandler previous = nullptr;
};

TEST_F(OptFileTest, EachMalformedItemIsNamed) {
  const std::string n2 = ", expected 2 (n from item 2)";
  const struct {
    Items changes;
    std::string message;
  } cases[] = {
      {{}, ""},
      {{{1, "-"}}, "OptFile: item 1 (objective sense) is missing"},
      {{{1, "x"}}, "OptFile: item 1 (objective sense) is missing"},
      {{{12, "-"}}, "OptFile: item 12 (integer vector) is missing"},
      {{{6, "5"}}, "OptFile: item 6 (empty array) is missing"},
      {{{14, "[ 10 inf ]\n[ ]"}}, "OptFile: text after item 14 (variable upper bounds)"},
      {{{14, "[ 10 inf ] // note"}}, "OptFile: text after item 14 (variable upper bounds)"},
      {{{1, "[ inf -inf ]"}}, "OptFile: item 1 (objective sense) has 2 entries, expected at most 1"},
      {{{1, "[ 5 ]"}}, "OptFile: item 1 (objective sense) is neither inf nor -inf"},
      {{{1, "[ ]"}}, "OptFile: item 2 (objective) has 1 row, expected 0 (one per entry of item 1)"},
      {{{2, "[\n]"}}, "OptFile: item 2 (objective) has 0 rows, expected 1 (one per entry of item 1)"},
      {{{2, "[\n[ 3 2 ]\n[ 1 1 ]\n]"}},
       "OptFile: item 2 (objective) has 2 rows, expected 1 (one per entry of item 1)"},
      {{{2, "[\n[ 3 2 1 ]\n]"}}, "OptFile: item 4 (equation matrix) has a row of 2 entries, expected 3 (n from item 2)"},
      {{{4, "[\n[ 1 0 ]\n[ 1 ]\n]"}, {5, "[ 2 3 ]"}},
       "OptFile: item 4 (equation matrix) has a row of 1 entry" + n2},
      {{{5, "[ 2 3 ]"}},
       "OptFile: item 5 (equation right-hand sides) has 2 entries, expected 1 (one per row of item 4)"},
      {{{6, "[ 7 ]"}}, "OptFile: item 6 (empty array) has 1 entry, expected 0"},
      {{{8, "[\n[ 1 1 1 ]\n]"}}, "OptFile: item 8 (inequality matrix) has a row of 3 entries" + n2},
      {{{9, "[ ]"}},
       "OptFile: item 9 (inequality lower sides) has 0 entries, expected 1 (one per row of item 8)"},
      {{{10, "[ 4 5 ]"}},
       "OptFile: item 10 (inequality upper sides) has 2 entries, expected 1 (one per row of item 8)"},
      {{{12, "[ 0 ]"}}, "OptFile: item 12 (integer vector) has 1 entry" + n2},
      {{{13, "[ 0 inf 0 ]"}}, "OptFile: item 13 (variable lower bounds) has 3 entries" + n2},
      {{{14, "[ ]"}}, "OptFile: item 14 (variable upper bounds) has 0 entries" + n2},
      // Without rows n comes from the integer vector.
      {{{1, "[ ]"}, {2, "[\n]"}, {4, "[\n]"}, {5, "[ ]"}, {8, "[\n]"}, {9, "[ ]"}, {10, "[ ]"},
        {12, "[ ]"}},
       "OptFile: item 13 (variable lower bounds) has 2 entries, expected 0 (n from item 12)"},
      // The readers' own failures come through unchanged.
      {{{8, "[\n[ 1 1 ]\n[ 1 1 1 ]\n]"}}, "Matrix row dimension mismatch"},
      {{{8, "[\n[ 1 1 ]\n5\n]"}}, "Matrix: bad input"},
      {{{9, "[ 1 ? ]"}}, "QQ: parse error1"},
      {{{4, "[\n[ 1 ix ]\n]"}}, "Vector: bad input2"},
  };
  for (const auto& c : cases) {
    const std::string text = fileText(c.changes);
    SCOPED_TRACE(text);
    EXPECT_EQ(failure(text, false), c.message);
    EXPECT_EQ(failure(text, true), c.message);
  }
}

// With n = 0 every row is "[ ]"; the matrix reader keeps none, the sides tell how many.
TEST_F(OptFileTest, RowsWithoutEntriesComeBack) {
  const std::string text = fileText({{2, "[\n[ ]\n]"},
                                     {4, "[\n[ ]\n[ ]\n]"},
                                     {5, "[ 1 2 ]"},
                                     {8, "[\n[ ]\n]"},
                                     {12, "[ ]"},
                                     {13, "[ ]"},
                                     {14, "[ ]"}});
  std::istringstream in(text);
  const OptFile file = readOptFile(in);
  EXPECT_EQ(file.equations.getRows(), 2);
  std::ostringstream out;
  out << file;
  EXPECT_EQ(out.str(), text);
}

// The observer is shown what the matrix reader stores: leading empty rows and a short row that
// is not the last become full rows of zeros and zero-filled rows.
TEST_F(OptFileTest, ObserverSeesTheRowsTheMatrixReaderKeeps) {
  const std::string text = fileText({{2, "[\n[ 3 2 ]\n]"},
                                     {8, "[\n[ ]\n[ 1 2 ]\n[ 3 ]\n[ 4 1/2 ]\n]"},
                                     {9, "[ 1 2 3 4 ]"},
                                     {10, "[ 5 6 7 8 ]"}});
  std::istringstream kept(text);
  const OptFile file = readOptFile(kept);
  std::ostringstream keptRows;
  for (long r = 1; r <= file.inequalities.getRows(); ++r) keptRows << file.inequalities[r] << "\n";
  EXPECT_EQ(keptRows.str(), "[ 0 0 ]\n[ 1 2 ]\n[ 3 0 ]\n[ 4 1/2 ]\n");

  std::istringstream streamed(text);
  RowRecorder recorder;
  const OptFile observed = readOptFile(streamed, &recorder);
  EXPECT_EQ(recorder.rows[OptItem::inequalities], keptRows.str());
  EXPECT_EQ(recorder.rows[OptItem::equations], "[ 1 0 ]\n");
  EXPECT_EQ(observed.inequalities.getRows(), 0);
  EXPECT_EQ(observed.lower.getDimension(), 4);
}

}  // namespace
}  // namespace lpconv
