#pragma once
// The dialect reading as the exact sparse model: the model lpconv's output means, with the line
// each row comes from. Columns x1..xn; the equations, then the merged inequalities in lpconv's
// output order; a variable without a stated bound gets the bounds a standard reader gives it
// (0 and +inf), which is what lpconv's "no bound stated" means. No column is integer, as in
// lpconv's output.

#include <optional>

#include <lpconv/model/model.h>

#include "dialect_reading.h"

namespace lpcheck {

// Columns beyond this many are not built: lpconv's dense output of such a file is the problem.
inline constexpr long kMaxDialectColumns = 50'000'000;

// The model of a reading lpconv converts; nothing when lpconv fails on the file or n exceeds
// kMaxDialectColumns.
std::optional<lpconv::Model> dialectModel(const DialectReading& reading);

}  // namespace lpcheck
