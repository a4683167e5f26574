#pragma once
// Objects that write and read themselves as text, and the stream operators built on them.

#include <istream>
#include <ostream>
#include <string>

namespace lpconv {

class Serializable {
 public:
  // Stores the settings; a blank is appended to delimiters when it holds none, so every
  // delimiter set contains a blank.
  Serializable(const std::string& delimiters, bool allowComments, bool secondFlag);
  Serializable(const Serializable&) = default;
  // Copies the delimiters and both flags.
  Serializable& operator=(const Serializable&) = default;
  virtual ~Serializable();

  // Writes the text form; returns os.
  virtual std::ostream& serialize(std::ostream& os) const = 0;
  // Replaces the contents with the text form read from is.
  virtual void deserialize(std::istream& is) = 0;

  const std::string& getDelimiters() const { return delimiters; }
  bool getAllowComments() const { return allowComments; }
  bool getSecondFlag() const { return secondFlag; }

 protected:
  std::string delimiters;
  // Readers also skip "//" and "/* */" comments where they skip delimiters.
  bool allowComments;
  // Stored and copied; nothing reads it.
  bool secondFlag;
};

// Calls x.serialize(os); returns os.
std::ostream& operator<<(std::ostream& os, const Serializable& x);
// Calls x.deserialize(is); returns is.
std::istream& operator>>(std::istream& is, Serializable& x);

}  // namespace lpconv
