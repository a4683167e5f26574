#pragma once
// Splitting a text at a delimiter character.

#include <string>

#include <lpconv/containers/array.h>

namespace lpconv {

using String = std::string;

// The pieces of text between delimiters, in order, as getline reads them: two delimiters in a
// row give an empty piece, a trailing delimiter gives no empty last piece, and an empty text
// gives no pieces ("a,,b," -> "a", "", "b").
Array<String> split(const std::string& text, char delimiter);

}  // namespace lpconv
