// Writes a random, balanced linear program in the LP dialect lpconv reads, for benchmarking.
//
//   lp_generator [--vars N] [--pairs P] [--equations E] [--nonzeros K] [--seed S]
//                [--objective all|none] [--sense max|min] [--bounds B]
//
// Every pair is one ">=" row and a "<=" row with the same coefficients; all rows are shuffled, so
// a twin sits anywhere among the rows. Coefficients are non-zero integers with mixed signs and the
// first term of every row carries an explicit number, because the converter gives a leading
// variable without a number the coefficient 0. Rows have no labels: a label would be read as part
// of the first coefficient. The objective lists every variable in descending index order on one
// line, and the first bound line names xN, so the variable count found is N either way.
// The output depends only on the arguments (the random source is fixed here, not the library's).

#include <unistd.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Options {
  long vars = 20000;
  long pairs = 10000;
  long equations = 2000;
  long nonzeros = 20;
  std::uint64_t seed = 1;
  bool objective = true;
  bool minimize = false;
  long bounds = 5;
};

// splitmix64: tiny, fast and the same on every platform, unlike the standard distributions.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
  }
  // Uniform enough in [0, bound) for the small bounds used here.
  long below(long bound) { return static_cast<long>(next() % static_cast<std::uint64_t>(bound)); }
  long between(long low, long high) { return low + below(high - low + 1); }

 private:
  std::uint64_t state_;
};

// Collects the whole text and writes it with few system calls.
class Output {
 public:
  Output() { buffer_.reserve(kFlushAt + 4096); }
  ~Output() { flush(); }
  void put(std::string_view text) {
    buffer_.append(text);
    if (buffer_.size() >= kFlushAt) flush();
  }
  void put(long value) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    put(std::string_view(digits, static_cast<std::size_t>(result.ptr - digits)));
  }
  void flush() {
    const char* data = buffer_.data();
    std::size_t left = buffer_.size();
    while (left > 0) {
      const ssize_t written = ::write(STDOUT_FILENO, data, left);
      if (written <= 0) {
        std::perror("lp_generator: write");
        std::exit(1);
      }
      data += written;
      left -= static_cast<std::size_t>(written);
    }
    buffer_.clear();
  }

 private:
  static constexpr std::size_t kFlushAt = std::size_t{1} << 22;
  std::string buffer_;
};

long nonZeroCoefficient(Random& random) {
  const long magnitude = random.between(1, 99);
  return random.below(2) == 0 ? magnitude : -magnitude;
}

// " 3 x17 - 12 x204 + 5 x999": distinct indices in 1..vars, the first term with its own sign.
void writeTerms(Output& out, Random& random, long vars, long count, std::vector<long>& used) {
  used.clear();
  while (static_cast<long>(used.size()) < count) {
    const long index = random.between(1, vars);
    bool seen = false;
    for (long other : used) seen = seen || other == index;
    if (!seen) used.push_back(index);
  }
  bool first = true;
  for (long index : used) {
    const long coefficient = nonZeroCoefficient(random);
    if (first) {
      out.put(" ");
      out.put(coefficient);
    } else {
      out.put(coefficient < 0 ? " - " : " + ");
      out.put(coefficient < 0 ? -coefficient : coefficient);
    }
    out.put(" x");
    out.put(index);
    first = false;
  }
}

std::uint64_t rowSeed(std::uint64_t seed, std::uint64_t kind, std::uint64_t index) {
  Random mix(seed * 0x100000001b3ULL ^ (kind << 56) ^ index);
  return mix.next();
}

void writeObjective(Output& out, const Options& options, Random& random) {
  out.put(options.minimize ? "Minimize\n obj:" : "Maximize\n obj:");
  for (long index = options.vars; index >= 1; --index) {
    const long coefficient = nonZeroCoefficient(random);
    if (index == options.vars) {
      out.put(" ");
      out.put(coefficient);
    } else {
      out.put(coefficient < 0 ? " - " : " + ");
      out.put(coefficient < 0 ? -coefficient : coefficient);
    }
    out.put(" x");
    out.put(index);
  }
  out.put("\n");
}

enum class RowKind : std::uint64_t { kGreater = 1, kLess = 2, kEqual = 3 };

struct RowSlot {
  RowKind kind;
  long index;
};

void writeRows(Output& out, const Options& options, Random& random) {
  std::vector<RowSlot> slots;
  slots.reserve(static_cast<std::size_t>(2 * options.pairs + options.equations));
  for (long i = 0; i < options.pairs; ++i) {
    slots.push_back({RowKind::kGreater, i});
    slots.push_back({RowKind::kLess, i});
  }
  for (long i = 0; i < options.equations; ++i) slots.push_back({RowKind::kEqual, i});
  for (std::size_t i = slots.size(); i > 1; --i) {
    std::swap(slots[i - 1], slots[static_cast<std::size_t>(random.below(static_cast<long>(i)))]);
  }

  const long nonzeros = options.nonzeros < options.vars ? options.nonzeros : options.vars;
  std::vector<long> used;
  for (const RowSlot& slot : slots) {
    // Both rows of a pair draw from the same stream, so they get the same terms.
    const std::uint64_t stream = slot.kind == RowKind::kEqual ? 3 : 1;
    Random rowRandom(rowSeed(options.seed, stream, static_cast<std::uint64_t>(slot.index)));
    writeTerms(out, rowRandom, options.vars, nonzeros, used);
    const long lower = rowRandom.between(-50, 50);
    const long width = rowRandom.between(0, 100);
    switch (slot.kind) {
      case RowKind::kGreater:
        out.put(" >= ");
        out.put(lower);
        break;
      case RowKind::kLess:
        out.put(" <= ");
        out.put(lower + width);
        break;
      case RowKind::kEqual:
        out.put(" = ");
        out.put(lower);
        break;
    }
    out.put("\n");
  }
}

void writeBounds(Output& out, const Options& options, Random& random) {
  out.put("Bounds\n");
  for (long i = 0; i < options.bounds && i < options.vars; ++i) {
    const long index = i == 0 ? options.vars : random.between(1, options.vars);
    out.put(" 0 <= x");
    out.put(index);
    out.put(" <= ");
    out.put(random.between(1, 100));
    out.put("\n");
  }
}

[[noreturn]] void usage(const char* message) {
  std::fprintf(stderr,
               "lp_generator: %s\n"
               "usage: lp_generator [--vars N] [--pairs P] [--equations E] [--nonzeros K]\n"
               "                    [--seed S] [--objective all|none] [--sense max|min]\n"
               "                    [--bounds B]\n",
               message);
  std::exit(2);
}

long parseCount(const char* text, long minimum) {
  char* end = nullptr;
  const long value = std::strtol(text, &end, 10);
  if (end == text || *end != '\0' || value < minimum) usage("bad number");
  return value;
}

Options parseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    if (i + 1 >= argc) usage("option without value");
    const char* value = argv[++i];
    if (name == "--vars") {
      options.vars = parseCount(value, 1);
    } else if (name == "--pairs") {
      options.pairs = parseCount(value, 0);
    } else if (name == "--equations") {
      options.equations = parseCount(value, 0);
    } else if (name == "--nonzeros") {
      options.nonzeros = parseCount(value, 1);
    } else if (name == "--seed") {
      options.seed = static_cast<std::uint64_t>(parseCount(value, 0));
    } else if (name == "--bounds") {
      options.bounds = parseCount(value, 0);
    } else if (name == "--objective") {
      if (std::strcmp(value, "all") != 0 && std::strcmp(value, "none") != 0) {
        usage("--objective takes all or none");
      }
      options.objective = std::strcmp(value, "all") == 0;
    } else if (name == "--sense") {
      if (std::strcmp(value, "max") != 0 && std::strcmp(value, "min") != 0) {
        usage("--sense takes max or min");
      }
      options.minimize = std::strcmp(value, "min") == 0;
    } else {
      usage("unknown option");
    }
  }
  // Without an objective the bound line for xN is what makes N the variable count.
  if (!options.objective && options.bounds < 1) options.bounds = 1;
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = parseOptions(argc, argv);
  Random random(options.seed);
  Output out;
  if (options.objective) writeObjective(out, options, random);
  out.put("Subject To\n");
  writeRows(out, options, random);
  writeBounds(out, options, random);
  out.put("End\n");
  return 0;
}
