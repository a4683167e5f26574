// Replays every kept input (seed corpus and regressions) of every target through its entry
// function, without a fuzzer. Argument: the fuzz/ folder. A violated property aborts; a file
// that cannot be read fails the run.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "entries.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FUZZ_FOLDER\n", argv[0]);
    return 2;
  }
  namespace fs = std::filesystem;
  int files = 0;
  for (const lpconv::fuzz::Target& target : lpconv::fuzz::kTargets) {
    for (const char* kind : {"corpus", "regressions"}) {
      const fs::path folder = fs::path(argv[1]) / target.name / kind;
      if (!fs::is_directory(folder)) continue;
      for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        std::ifstream in(file.path(), std::ios::binary);
        const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                      std::istreambuf_iterator<char>());
        if (!in.eof() && in.fail()) {
          std::fprintf(stderr, "cannot read %s\n", file.path().c_str());
          return 1;
        }
        target.entry(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++files;
      }
    }
  }
  std::printf("replayed %d inputs\n", files);
  return files > 0 ? 0 : 1;
}
