#include <lpconv/optfile/messages.h>

namespace lpconv::messages {

namespace {

const char* itemTitle(OptItem item) {
  switch (item) {
    case OptItem::sense:
      return "objective sense";
    case OptItem::objective:
      return "objective";
    case OptItem::equations:
      return "equation matrix";
    case OptItem::equationRhs:
      return "equation right-hand sides";
    case OptItem::reserved:
      return "empty array";
    case OptItem::inequalities:
      return "inequality matrix";
    case OptItem::lower:
      return "inequality lower sides";
    case OptItem::upper:
      return "inequality upper sides";
    case OptItem::integers:
      return "integer vector";
    case OptItem::variableLower:
      return "variable lower bounds";
    case OptItem::variableUpper:
      return "variable upper bounds";
  }
  return "";
}

std::string counted(long count, const std::string& unit) {
  std::string text = std::to_string(count) + " ";
  if (count == 1) return text + unit;
  return text + (unit == "entry" ? "entries" : unit + "s");
}

}  // namespace

std::string optItemName(OptItem item) {
  return "item " + std::to_string(static_cast<int>(item)) + " (" + itemTitle(item) + ")";
}

std::string optFileMissing(OptItem item) {
  return kOptFilePrefix + optItemName(item) + kOptFileMissing;
}

std::string optFileSenseValue() {
  return kOptFilePrefix + optItemName(OptItem::sense) + kOptFileSenseValue;
}

std::string optFileCount(OptItem item, long count, const std::string& unit,
                         const std::string& expected, const std::string& reason) {
  std::string text = kOptFilePrefix + optItemName(item) + " has " + counted(count, unit) +
                     ", expected " + expected;
  if (!reason.empty()) text += " (" + reason + ")";
  return text;
}

std::string optFileRowWidth(OptItem item, long width, long n, OptItem nFrom) {
  return kOptFilePrefix + optItemName(item) + " has a row of " + counted(width, "entry") +
         ", expected " + std::to_string(n) + " (" + kOptFileNFrom +
         std::to_string(static_cast<int>(nFrom)) + ")";
}

}  // namespace lpconv::messages
