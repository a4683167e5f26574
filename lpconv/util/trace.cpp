#include <lpconv/util/trace.h>

#include <array>
#include <cstdint>

#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

struct TraceState {
  long depth = 0;
  // One slot more than the deepest legal level: the fatal report at depth 128 still ends its
  // line through endLine, which marks the flags of that depth.
  std::array<std::uint8_t, kMaxTraceDepth + 1> linePending{};
  std::array<std::uint8_t, kMaxTraceDepth + 1> lineEnded{};
  std::string prefix;
};

TraceState& state() {
  static TraceState trace;
  return trace;
}

}  // namespace

std::string enterLevel(bool noArrow) {
  TraceState& t = state();
  if (t.linePending[t.depth] == 1) {
    t.prefix.assign(1, '\n');
    t.linePending[t.depth] = 0;
  } else {
    t.prefix.clear();
  }
  t.prefix += "|";
  for (long i = 0; i < t.depth; ++i) t.prefix += "    |";
  if (!noArrow) t.prefix += "->";
  ++t.depth;
  if (t.depth == kMaxTraceDepth) reportFailure("Maximum thread depth reached");
  t.linePending[t.depth] = 1;
  return t.prefix;
}

std::string endLine() {
  TraceState& t = state();
  t.lineEnded[t.depth] = 1;
  t.linePending[t.depth] = 0;
  return "\n";
}

std::string leaveLevel(bool quiet) {
  TraceState& t = state();
  std::string result = "\n";
  const bool endedHere = t.lineEnded[t.depth] == 1;
  if (t.linePending[t.depth] == 1) {
    t.linePending[t.depth] = 0;
  } else {
    result.clear();
  }
  if (t.depth != 0) {
    t.lineEnded[t.depth] = 0;
    --t.depth;
  }
  if (quiet && endedHere) return "";
  return result;
}

std::string resetLevels() {
  TraceState& t = state();
  for (long i = 1; i <= t.depth; ++i) {
    t.lineEnded[i] = 0;
    t.linePending[i] = 0;
  }
  t.depth = 0;
  t.lineEnded[0] = 0;
  t.linePending[0] = 0;
  return "\n";
}

long traceDepth() { return state().depth; }

}  // namespace lpconv
