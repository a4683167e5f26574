#pragma once
// The failure texts of the .opt reader, all in one place. Each names the item by number and
// name: "OptFile: item 5 (equation right-hand sides) has 1 entry, expected 2 (one per row of
// item 4)".

#include <string>

#include <lpconv/optfile/opt_file.h>

namespace lpconv::messages {

inline constexpr char kOptFilePrefix[] = "OptFile: ";
inline constexpr char kOptFileMissing[] = " is missing";
inline constexpr char kOptFileTrailingText[] = "text after item 14 (variable upper bounds)";
inline constexpr char kOptFileSenseValue[] = " is neither inf nor -inf";
inline constexpr char kOptFileAtMostOne[] = "at most 1";
inline constexpr char kOptFileOnePerSenseEntry[] = "one per entry of item 1";
inline constexpr char kOptFileOnePerRowOf[] = "one per row of item ";
inline constexpr char kOptFileNFrom[] = "n from item ";

// "item 5 (equation right-hand sides)".
std::string optItemName(OptItem item);

// "OptFile: item 5 (equation right-hand sides) is missing".
std::string optFileMissing(OptItem item);

// "OptFile: item 1 (objective sense) is neither inf nor -inf".
std::string optFileSenseValue();

// "OptFile: " + item + " has " + count + " " + unit(s) + ", expected " + expected, then
// " (" + reason + ")" when reason is not empty. unit is "entry" or "row".
std::string optFileCount(OptItem item, long count, const std::string& unit,
                         const std::string& expected, const std::string& reason);

// "OptFile: item 8 (inequality matrix) has a row of 3 entries, expected 2 (n from item 2)".
std::string optFileRowWidth(OptItem item, long width, long n, OptItem nFrom);

}  // namespace lpconv::messages
