// The work behind converting one TrueType font to a Type 42 program from a
// command line, shared by `zorva type42` and the stand-alone zorva-type42
// program. It stands on the converter and file I/O only, so the small program
// starts without the libraries the full tool carries.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

// What both front ends' help says after the options (a macro so each can
// join it to its own text at compile time).
#define ZORVA_TYPE42_NOTES                                                              \
  "The program carries the whole font as hexadecimal strings of at most 65534 bytes,\n" \
  "split at table and glyph boundaries. NAME defaults to the font's PostScript name\n"  \
  "(or the file name when the font has none).\n\n"                                      \
  "Exit status: 0 complete program; 1 unreadable or malformed font, or the output\n"    \
  "cannot be written; 2 usage error; 3 the program was written but stops early\n"       \
  "because a table is larger than 65534 bytes and has no split point (the message\n"    \
  "names it; --split-large-tables avoids this).\n\n"

namespace zorva {

inline constexpr int kType42ExitFailure = 1;  // unreadable or malformed font, unwritable output
inline constexpr int kType42ExitUsage = 2;    // a bad value on the command line
// The program was written but stops early (a table too large to split).
inline constexpr int kType42ExitIncomplete = 3;

struct Type42Job {
  std::filesystem::path font;
  std::string name;              // empty: the font's PostScript name, else the file name
  std::filesystem::path output;  // empty: standard output
  bool splitLargeTables = false;
};

// Shows a piece of user input in a message (quoted, made one-line safe).
using Type42Quote = std::string (*)(std::string_view);

// Why a conversion ended other than with a complete program: the exit status
// (1 failed, 2 usage, 3 incomplete) and a one-line message without prefix.
class Type42Failure : public std::runtime_error {
 public:
  Type42Failure(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
  int code() const { return code_; }

 private:
  int code_;
};

// Throws (code 2) when a name given by the user cannot stand in the program.
void CheckType42Name(const std::string& name, Type42Quote quote);

// Reads the font, converts it and writes the program to standard output as it
// is made, or to the output file once it is whole. Throws Type42Failure.
void RunType42Job(const Type42Job& job, Type42Quote quote);

}  // namespace zorva
