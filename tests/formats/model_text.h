#pragma once
// Test helpers: a model as one canonical text, and a model read from a text.

#include <string>
#include <string_view>

#include <lpconv/formats/formats.h>

namespace lpconv::test {

// "min NAME const C", then "col NAME [L, U] int obj C" per column and "row NAME [L, U]: COL V,
// ..." per row, values in their QQ text form.
std::string modelText(const Model& model);

// Reads `text` as the given format through a temporary file named `name`.
Model readText(std::string_view text, Format format, DiagnosticSink& sink,
               const std::string& name = "t.mps");

}  // namespace lpconv::test
