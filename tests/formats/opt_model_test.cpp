#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/formats/formats.h>
#include <lpconv/util/failure.h>

namespace lpconv {
namespace {

Coefficient q(const char* text) { return Coefficient(QQ(text)); }

// A file in the test's temporary folder, removed with the object.
class TempFile {
 public:
  explicit TempFile(const std::string& text, const char* suffix = ".opt")
      : path_(std::filesystem::temp_directory_path() /
              ("opt_model_test_" + std::to_string(counter_++) + suffix)) {
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~TempFile() { std::filesystem::remove(path_); }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  std::string path() const { return path_.string(); }

 private:
  static inline int counter_ = 0;
  std::filesystem::path path_;
};

// x (integer, [0, 4]), y (free), z ([1/2, inf)); maximise 3:1/2 x - z + 2;
// r1: x + y = 5, r2: -inf <= y + 2z <= 7, r3: free row, r4: 1 <= x - z <= 1:1/3,
// r5: 2 <= z.
Model sampleModel() {
  Model m;
  const auto x = m.addColumn("x");
  const auto y = m.addColumn("y");
  const auto z = m.addColumn("z");
  m.setInteger(x, true);
  m.setColumnUpper(x, Coefficient(4));
  m.setColumnLower(y, Coefficient::minusInfinity());
  m.setColumnLower(z, q("1/2"));
  m.setSense(ObjectiveSense::maximize);
  m.setObjectiveName("profit");
  m.setObjective(x, q("3:1/2"));
  m.setObjective(z, Coefficient(-1));
  m.setObjectiveConstant(Coefficient(2));
  std::vector<ModelEntry> r1{{y, Coefficient(1)}, {x, Coefficient(1)}};
  m.addRow("r1", r1, Coefficient(5), Coefficient(5));
  std::vector<ModelEntry> r2{{y, Coefficient(1)}, {z, Coefficient(2)}};
  m.addRow("r2", r2, Coefficient::minusInfinity(), Coefficient(7));
  std::vector<ModelEntry> r3{{x, Coefficient(1)}};
  const auto free = m.addRow("r3", r3, Coefficient::minusInfinity(), Coefficient::infinity());
  m.setRowLine(free, 12);
  std::vector<ModelEntry> r4{{x, Coefficient(1)}, {z, Coefficient(-1)}};
  m.addRow("r4 with blanks", r4, Coefficient(1), q("1:1/3"));
  std::vector<ModelEntry> r5{{z, Coefficient(1)}};
  m.addRow("r5", r5, Coefficient(2), Coefficient::infinity());
  return m;
}

constexpr char kSampleOpt[] =
    "[ inf ]\n[\n[ 3:1/2 0 -1 ]\n]\n\n"
    "[\n[ 1 1 0 ]\n]\n[ 5 ]\n[ ]\n\n"
    "[\n[ 0 1 2 ]\n[ 1 0 -1 ]\n[ 0 0 1 ]\n]\n[ -inf 1 2 ]\n[ 7 1:1/3 inf ]\n\n"
    "[ 1 0 0 ]\n[ 0 -inf 1/2 ]\n[ 4 inf inf ]\n";

constexpr char kSampleNames[] =
    "column 1 x\ncolumn 2 y\ncolumn 3 z\nequation 1 r1\ninequality 1 r2\n"
    "inequality 2 r4 with blanks\ninequality 3 r5\nobjective profit\nconstant 2\n";

TEST(OptModelWriter, WritesTheConverterLayoutAndReportsWhatItCannotHold) {
  const Model m = sampleModel();
  std::ostringstream opt;
  CollectingSink sink;
  writeOpt(m, opt, sink);
  EXPECT_EQ(opt.str(), kSampleOpt);
  ASSERT_EQ(sink.messages.size(), 2u);
  EXPECT_EQ(headline(sink.messages[0]),
            ": note: row 'r3' (line 12) has no finite side; the .opt file leaves it out");
  EXPECT_EQ(sink.messages[1].severity, Severity::warning);
  EXPECT_NE(sink.messages[1].message.find("objective constant 2"), std::string::npos);

  std::ostringstream names;
  writeNameMap(m, names);
  EXPECT_EQ(names.str(), kSampleNames);
}

TEST(OptModelWriter, LongZeroRunsAndAnEmptyModel) {
  Model m;
  for (int j = 0; j < 70000; ++j) m.addColumn("c" + std::to_string(j));
  std::vector<ModelEntry> row{{69999, q("-1/3")}, {0, Coefficient(7)}};
  m.addRow("only", row, Coefficient(1), Coefficient(1));
  std::ostringstream opt;
  CollectingSink sink;
  writeOpt(m, opt, sink);
  std::string zeros;
  for (int j = 0; j < 69998; ++j) zeros += "0 ";
  const std::string text = opt.str();
  EXPECT_NE(text.find("[\n[ 7 " + zeros + "-1/3 ]\n]\n[ 1 ]\n"), std::string::npos);
  EXPECT_TRUE(sink.messages.empty());

  std::ostringstream empty;
  writeOpt(Model(), empty, sink);
  EXPECT_EQ(empty.str(),
            "[ -inf ]\n[\n[ ]\n]\n\n[\n]\n[ ]\n[ ]\n\n[\n]\n[ ]\n[ ]\n\n[ ]\n[ ]\n[ ]\n");
}

// Takes `room` bytes, then refuses, as a full disk does.
class FullBuffer : public std::streambuf {
 public:
  explicit FullBuffer(std::size_t room) : room_(room) {}

 protected:
  std::streamsize xsputn(const char*, std::streamsize n) override {
    const auto taken = std::min<std::streamsize>(n, static_cast<std::streamsize>(room_));
    room_ -= static_cast<std::size_t>(taken);
    return taken;
  }
  int_type overflow(int_type c) override {
    if (room_ == 0) return traits_type::eof();
    --room_;
    return traits_type::not_eof(c);
  }

 private:
  std::size_t room_;
};

TEST(OptModelWriter, AShortWriteMarksTheStreamBad) {
  Model m;
  for (int j = 0; j < 5000; ++j) m.addColumn("c" + std::to_string(j));
  std::vector<ModelEntry> row{{4999, Coefficient(1)}};
  m.addRow("r", row, Coefficient(1), Coefficient(2));
  for (const std::size_t room : {std::size_t{10}, std::size_t{9000}, std::size_t{30000}}) {
    FullBuffer full(room);
    std::ostream os(&full);
    CollectingSink sink;
    writeOpt(m, os, sink);
    EXPECT_TRUE(os.bad()) << room;
  }
}

TEST(OptModelWriter, RefusesALowerBoundOfPlusInfinity) {
  Model m;
  m.setColumnLower(m.addColumn("x"), Coefficient::infinity());
  std::ostringstream opt;
  CollectingSink sink;
  EXPECT_THROW(writeOpt(m, opt, sink), ParseError);
}

void expectSameModel(const Model& a, const Model& b) {
  ASSERT_EQ(a.columnCount(), b.columnCount());
  ASSERT_EQ(a.rowCount(), b.rowCount());
  EXPECT_EQ(a.sense(), b.sense());
  EXPECT_EQ(a.objectiveName(), b.objectiveName());
  EXPECT_TRUE(identical(a.objectiveConstant(), b.objectiveConstant()));
  for (Model::Index j = 0; j < a.columnCount(); ++j) {
    EXPECT_EQ(a.columnName(j), b.columnName(j));
    EXPECT_TRUE(identical(a.columnLower(j), b.columnLower(j))) << j;
    EXPECT_TRUE(identical(a.columnUpper(j), b.columnUpper(j))) << j;
    EXPECT_TRUE(identical(a.objective(j), b.objective(j))) << j;
    EXPECT_EQ(a.isInteger(j), b.isInteger(j));
  }
  for (Model::Index i = 0; i < a.rowCount(); ++i) {
    EXPECT_EQ(a.rowName(i), b.rowName(i));
    EXPECT_TRUE(identical(a.rowLower(i), b.rowLower(i))) << i;
    EXPECT_TRUE(identical(a.rowUpper(i), b.rowUpper(i))) << i;
    const RowView ra = a.row(i);
    const RowView rb = b.row(i);
    ASSERT_EQ(ra.size(), rb.size()) << i;
    for (std::size_t k = 0; k < ra.size(); ++k) {
      EXPECT_EQ(ra.column(k), rb.column(k));
      EXPECT_TRUE(identical(ra.value(k), rb.value(k)));
    }
  }
}

// The sample without its free row (which the .opt leaves out), equations first.
Model sampleAsRead() {
  Model m = sampleModel();
  Model expected;
  for (Model::Index j = 0; j < m.columnCount(); ++j) {
    const auto c = expected.addColumn(m.columnName(j));
    expected.setColumnLower(c, m.columnLower(j));
    expected.setColumnUpper(c, m.columnUpper(j));
    expected.setObjective(c, m.objective(j));
    expected.setInteger(c, m.isInteger(j));
  }
  expected.setSense(m.sense());
  expected.setObjectiveName(m.objectiveName());
  expected.setObjectiveConstant(m.objectiveConstant());
  for (Model::Index i : {0u, 1u, 3u, 4u}) {
    std::vector<ModelEntry> entries;
    const RowView r = m.row(i);
    for (std::size_t k = 0; k < r.size(); ++k) entries.push_back({r.column(k), r.value(k)});
    expected.addRow(m.rowName(i), entries, m.rowLower(i), m.rowUpper(i));
  }
  return expected;
}

TEST(OptModelReader, RoundTripKeepsTheModelAndItsNames) {
  const TempFile opt(kSampleOpt);
  const TempFile names(kSampleNames, ".names");
  CollectingSink sink;
  LineSource source(opt.path());
  LineSource nameSource(names.path());
  const Model read = readOpt(source, &nameSource, sink);
  expectSameModel(read, sampleAsRead());
  EXPECT_TRUE(sink.messages.empty());

  std::ostringstream again;
  writeOpt(read, again, sink);
  EXPECT_EQ(again.str(), kSampleOpt);
}

TEST(OptModelReader, WithoutNamesNumbersTheNamesAndReadsUnstatedBounds) {
  // The converter's own output: "inf" for a bound nobody stated, a minimisation, no integers.
  const TempFile opt(
      "[ -inf ]\n[\n[ 1 2 ]\n]\n\n[\n[ 1 0 ]\n]\n[ 2 ]\n[ ]\n\n[\n[ 1 1 ]\n]\n[ 1 ]\n[ 4 ]\n\n"
      "[ 0 0 ]\n[ inf -inf ]\n[ 10 inf ]\n");
  CollectingSink sink;
  LineSource source(opt.path());
  const Model m = readOpt(source, nullptr, sink);
  ASSERT_EQ(m.columnCount(), 2u);
  ASSERT_EQ(m.rowCount(), 2u);
  EXPECT_EQ(m.columnName(0), "C1");
  EXPECT_EQ(m.columnName(1), "C2");
  EXPECT_EQ(m.rowName(0), "E1");
  EXPECT_EQ(m.rowName(1), "I1");
  EXPECT_EQ(m.sense(), ObjectiveSense::minimize);
  EXPECT_TRUE(m.columnLower(0).isZero());  // "inf": no bound stated, the default 0
  EXPECT_TRUE(identical(m.columnLower(1), Coefficient::minusInfinity()));
  EXPECT_TRUE(identical(m.columnUpper(0), Coefficient(10)));
  EXPECT_TRUE(identical(m.rowLower(0), Coefficient(2)));
  EXPECT_TRUE(identical(m.rowUpper(0), Coefficient(2)));
  EXPECT_TRUE(identical(m.rowUpper(1), Coefficient(4)));
  EXPECT_EQ(m.row(1).size(), 2u);
  EXPECT_EQ(m.row(0).size(), 1u);
}

TEST(OptModelReader, RowsWithoutColumns) {
  const TempFile opt(
      "[ ]\n[\n]\n\n[\n[ ]\n]\n[ 0 ]\n[ ]\n\n[\n[ ]\n[ ]\n]\n[ -1 0 ]\n[ 1 inf ]\n\n"
      "[ ]\n[ ]\n[ ]\n");
  CollectingSink sink;
  LineSource source(opt.path());
  const Model m = readOpt(source, nullptr, sink);
  EXPECT_EQ(m.columnCount(), 0u);
  ASSERT_EQ(m.rowCount(), 3u);
  EXPECT_EQ(m.rowName(2), "I2");
  EXPECT_TRUE(identical(m.rowUpper(2), Coefficient::infinity()));
}

struct BadInput {
  const char* name;
  std::string opt;
  std::string names;  // empty: no name map
  std::string headline;
};

// Test names must not depend on the addresses inside the value.
void PrintTo(const BadInput& bad, std::ostream* os) { *os << bad.name; }

class OptModelReaderErrors : public ::testing::TestWithParam<BadInput> {};

TEST_P(OptModelReaderErrors, EndTheReadWithAPlace) {
  const BadInput& bad = GetParam();
  const TempFile opt(bad.opt);
  const TempFile names(bad.names, ".names");
  const FailureHandler before = setFailureHandler(nullptr);
  setFailureHandler(before);
  CollectingSink sink;
  LineSource source(opt.path());
  LineSource nameSource(names.path());
  try {
    (void)readOpt(source, bad.names.empty() ? nullptr : &nameSource, sink);
    FAIL() << "no error";
  } catch (const ParseError& e) {
    // '@' stands for the .opt file's name, '#' for the name map's.
    std::string expected = bad.headline;
    if (expected[0] == '@') expected.replace(0, 1, opt.path());
    if (expected[0] == '#') expected.replace(0, 1, names.path());
    EXPECT_EQ(e.what(), expected);
  }
  // The throwing handler is gone again.
  EXPECT_EQ(setFailureHandler(before), before);
}

const std::string kSmallOpt =
    "[ -inf ]\n[\n[ 1 ]\n]\n\n[\n]\n[ ]\n[ ]\n\n[\n]\n[ ]\n[ ]\n\n[ 0 ]\n[ 0 ]\n[ inf ]\n";

INSTANTIATE_TEST_SUITE_P(
    Cases, OptModelReaderErrors,
    ::testing::Values(
        BadInput{"BadNumber", "[ -inf ]\n[\n[ 1 x ]\n]\n", "", "@:3:5: error: QQ: parse error1"},
        BadInput{"MissingItem", "[ -inf ]\n[\n[ 1 ]\n]\n\n", "",
                 "@:5: error: OptFile: item 4 (equation matrix) is missing"},
        BadInput{"UnknownKind", kSmallOpt, "column 1 x\nrow 1 r\n",
                 "#:2:1: error: unknown entry 'row' (expected column, equation, inequality, "
                 "objective or constant)"},
        BadInput{"BadIndex", kSmallOpt, "column 0 x\n",
                 "#:1:8: error: expected an index from 1 on after 'column'"},
        BadInput{"NoName", kSmallOpt, "column 1\n", "#:1:9: error: a name is missing"},
        BadInput{"BadConstant", kSmallOpt, "constant 1.x\n",
                 "#:1:10: error: expected a finite number in the form 0, -1/2 or 3:1/2"},
        BadInput{"TooManyColumns", kSmallOpt, "column 2 y\n",
                 "#: error: names column 2, but the .opt file has 1"},
        BadInput{"NameTwice",
                 kSmallOpt.substr(0, 0) +
                     "[ -inf ]\n[\n[ 1 1 ]\n]\n\n[\n]\n[ ]\n[ ]\n\n[\n]\n[ ]\n[ ]\n\n"
                     "[ 0 0 ]\n[ 0 0 ]\n[ inf inf ]\n",
                 "column 1 C2\n", "@:18: error: the column name 'C2' is used twice"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lpconv
