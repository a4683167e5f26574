#include <lpconv/formats/diagnostics.h>

#include <gtest/gtest.h>

#include <sstream>

namespace lpconv {
namespace {

TEST(Diagnostics, HeadlineLineAndCaret) {
  const struct {
    Diagnostic d;
    const char* text;
  } cases[] = {
      {{Severity::error, "m.lp", 3, 5, "bad", "ab cd ef"},
       "m.lp:3:5: error: bad\nab cd ef\n    ^\n"},
      {{Severity::warning, "m.lp", 2, 0, "whole line", "xyz"},
       "m.lp:2: warning: whole line\nxyz\n"},
      {{Severity::note, "m.lp", 0, 0, "file", ""}, "m.lp: note: file\n"},
      // Tabs before the column stay tabs, so the caret stands under its character.
      {{Severity::error, "t", 1, 4, "x", "\t\tab"}, "t:1:4: error: x\n\t\tab\n\t\t ^\n"},
      // A column just past the end of the line (a missing piece at the end).
      {{Severity::error, "t", 1, 3, "x", "ab"}, "t:1:3: error: x\nab\n  ^\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(format(c.d), c.text);
}

TEST(Diagnostics, StreamSinkCounts) {
  std::ostringstream os;
  StreamSink sink(os);
  sink.report({Severity::note, "f", 1, 1, "n", "a"});
  sink.report({Severity::warning, "f", 0, 0, "w", ""});
  EXPECT_EQ(sink.notes(), 1u);
  EXPECT_EQ(sink.warnings(), 1u);
  EXPECT_EQ(os.str(), "f:1:1: note: n\na\n^\nf: warning: w\n");
  const ParseError e({Severity::error, "f", 2, 3, "boom", "abc"});
  EXPECT_STREQ(e.what(), "f:2:3: error: boom");
}

}  // namespace
}  // namespace lpconv
