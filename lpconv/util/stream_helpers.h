#pragma once
// Character-level helpers shared by every text reader of the containers and numbers: peeking,
// skipping delimiter characters and skipping "//" and "/* */" comments. Peeking never consumes;
// every helper stops at the end of the input.

#include <istream>
#include <string>

namespace lpconv {

// Stores the next character of the stream in c without consuming it. Returns false at the end
// of the input (or on a failed stream), where c holds the byte 255; a literal byte 255 in the
// input reads as the end too.
bool peekChar(std::istream& is, char& c);

// Skips one comment at the read position. Returns false, consuming nothing, unless the next
// character is "/". After "/" it consumes the slash and then:
//   "//": everything up to, not including, the next line feed (c holds the line feed);
//   "/*": everything up to and including the next "*/" (c holds the character after it);
//   else: puts back the character that follows the slash (not the slash, which stays consumed)
//         and returns false. On a read-only string stream that putback fails and sets the bad bit;
//         on a read-write one it overwrites the slash, so that character is read twice. Readers
//         rely on this exact behaviour, so it is kept.
// An unterminated comment runs to the end of the input. Returns true when a comment was skipped.
bool skipComment(std::istream& is, char& c);

// With all = true: consumes characters while the next one is in set, stores the first one that
// is not (or the end value 255) in c and returns false. With all = false: consumes the next
// character only if it is in set and returns whether it did; c holds the peeked character.
bool skipDelimiters(std::istream& is, const std::string& set, bool all, char& c);

// Consumes characters of set and comments, alternately, until neither follows. c (when not null)
// receives the last peeked character. Always returns false, also when something was consumed:
// callers read "false" as "no delimiter ended the token".
bool skipDelimitersAndComments(std::istream& is, const std::string& set, char* c = nullptr);

// Like skipDelimitersAndComments with the set " \t\r\n", then consumes one "|" if that is the
// character it stopped at and returns true; otherwise returns false.
bool skipWhitespaceToBar(std::istream& is);

}  // namespace lpconv
