#pragma once
// Reading and writing the exact sparse model in every format the system knows: CPLEX LP, MPS
// (fixed and free, told apart by their content) and the .opt file with its name map. Inputs may
// be gzip-compressed. Every reader stops at the first error with a ParseError that names the
// file, line and column; notes and warnings (a rule applied where the established readers
// disagree, say) go to the sink.

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include <lpconv/formats/diagnostics.h>
#include <lpconv/formats/line_source.h>
#include <lpconv/model/model.h>

namespace lpconv {

enum class Format { lp, mps, opt };

// The format an input or output name stands for by its extension (".lp", ".mps", ".opt", each
// optionally followed by ".gz"), compared without regard to case; nullopt for any other name.
std::optional<Format> formatOfName(std::string_view path);
// "lp", "mps" or "opt" (and back; nullopt for another word).
const char* formatWord(Format format);
std::optional<Format> formatOfWord(std::string_view word);

// The readers, each from lines already opened.
Model readLp(LineSource& source, DiagnosticSink& sink);
Model readMps(LineSource& source, DiagnosticSink& sink);
// The .opt file; `names`, when given, is the name map written beside it (see writeNameMap).
Model readOpt(LineSource& source, LineSource* names, DiagnosticSink& sink);

// The writers. LP and MPS values are exact: the shortest exact decimal where the value has one,
// p/q otherwise.
void writeLp(const Model& model, std::ostream& os);
void writeMps(const Model& model, std::ostream& os);
// The .opt file in the converter's layout; what the file cannot hold (an objective constant, a
// row with no finite side) is reported to the sink.
void writeOpt(const Model& model, std::ostream& os, DiagnosticSink& sink);
// The name map of the .opt file that writeOpt writes for the same model.
void writeNameMap(const Model& model, std::ostream& os);

// Reads `path` ("-": standard input) in `format`, or in the format of its name.
// Throws ParseError when the format cannot be told or the file cannot be read.
Model readModel(const std::string& path, std::optional<Format> format, DiagnosticSink& sink,
                const std::string* namesPath = nullptr);

}  // namespace lpconv
