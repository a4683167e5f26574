#pragma once

#include <string>

namespace lpconv {

// The input name with ".lp" at its end replaced by ".opt", where the "." stands for any character
// but a carriage return or line feed: "a.lp" -> "a.opt", "a_lp" -> "a.opt", "alp" -> ".opt".
// A name that does not end that way comes back unchanged, which the caller reads as a bad name.
std::string outputNameFor(const std::string& inputName);

}  // namespace lpconv
