// The shape checks of readOptFile, with and without a row observer, and the rows an observer sees.

#include <lpconv/optfile/opt_file.h>

#include <gtest/gtest.h>

#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include <lpconv/util/failure.h>

namespace lpconv {
namespace {

// The worked example, item by item; a case replaces some items.
using Items = std::map<int, std::string>;
const Items kWorked = {{1, "[ inf ]"},  {2, "[\n[ 3 2 ]\n]"}, {4, "[\n[ 1 0 ]\n]"}, {5, "[ 2 ]"},
                       {6, "[ ]"},      {8, "[\n[ 1 1 ]\n]"}, {9, "[ 1 ]"},         {10, "[ 4 ]"},
                       {12, "[ 0 0 ]"}, {13, "[ 0 inf ]"},    {14, "[ 10 inf ]"}};

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

std::string contents(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
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

// The failure message of reading text, "" when it reads.
std::string failure(const std::string& text, RowObserver* observer) {
  const FailureHandler previous = setFailureHandler(throwFailure);
  std::string message;
  try {
    std::istringstream in(text);
    readOptFile(in, observer);
  } catch (const FailureException& e) {
    message = e.what();
  } catch (const std::exception& e) {
    // std::invalid_argument from integer text the number parser rejects.
    message = e.what();
  }
  setFailureHandler(previous);
  return message;
}

// The failure cases of optinfo are the table: every case folder with an .opt input and an exit
// status of 1 holds the file and, in its standard error, the one message both ways of reading
// must report.
TEST(OptFile, EachMalformedItemIsNamed) {
  namespace fs = std::filesystem;
  int checked = 0;
  for (const auto& c :
       fs::directory_iterator(fs::path(LPCONV_SOURCE_DIR) / "tests/optinfo/cases")) {
    const fs::path input = c.path() / "input/model.opt";
    if (!fs::exists(input) || !fs::exists(c.path() / "status")) continue;
    const std::string text = contents(input);
    const std::string report = contents(c.path() / "stderr");
    SCOPED_TRACE(c.path().string() + "\n" + text);
    const std::string prefix = "\n*** FAIL: ";
    ASSERT_EQ(report.substr(0, prefix.size()), prefix);
    const std::string message = report.substr(prefix.size(), report.size() - prefix.size() - 1);
    RowRecorder recorder;
    EXPECT_EQ(failure(text, nullptr), message);
    EXPECT_EQ(failure(text, &recorder), message);
    ++checked;
  }
  EXPECT_GE(checked, 20);
  EXPECT_EQ(failure(fileText({}), nullptr), "");
}

// With n = 0 every row is "[ ]"; the matrix reader keeps none, the sides tell how many.
TEST(OptFile, RowsWithoutEntriesComeBack) {
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
TEST(OptFile, ObserverSeesTheRowsTheMatrixReaderKeeps) {
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
