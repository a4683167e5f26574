#pragma once
// What an OutputBuffer writes, read back from a scratch file.

#include <cstdio>
#include <string>

#include <lpconv/converter/output_buffer.h>

namespace lpconv::testing {

// Runs write(out) on a buffer over a fresh scratch file; returns the bytes and, through
// `failed`, whether the buffer saw a failed write.
template <typename Write>
std::string writtenBy(Write write, bool* failed = nullptr) {
  std::FILE* file = std::tmpfile();
  {
    OutputBuffer out(fileno(file));
    write(out);
    out.flush();
    if (failed != nullptr) *failed = out.failed();
  }
  std::string bytes;
  std::rewind(file);
  for (int c; (c = std::fgetc(file)) != EOF;) bytes.push_back(static_cast<char>(c));
  std::fclose(file);
  return bytes;
}

}  // namespace lpconv::testing
