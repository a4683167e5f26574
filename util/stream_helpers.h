#pragma once
// Character-level helpers shared by the readers of the bracketed text forms. Peeking never
// consumes; getting consumes one character.

#include <istream>
#include <string>

namespace lpconv {

// Stores the next character in c; false when it is the end of input (byte 255).
bool peekChar(std::istream& is, char& c);

// Skips one "//" comment (up to, not including, the line feed) or "/* ... */" comment and stores
// the character after it in c. A lone "/" stays consumed and the peeked character is put back.
bool skipComment(std::istream& is, char& c);

// all = true: consumes characters of `set`, stores the first other one, returns false.
// all = false: consumes one character of `set` if it is next and returns whether it did.
bool skipDelimiters(std::istream& is, const std::string& set, bool all, char& c);

// Consumes characters of `set` and comments in any order. Always returns false.
bool skipDelimitersAndComments(std::istream& is, const std::string& set, char* c = nullptr);

// Skips blanks, tabs, line breaks and comments, then one "|" if that is next (true);
// otherwise returns the last comment test.
bool skipWhitespaceToBar(std::istream& is);

}  // namespace lpconv
