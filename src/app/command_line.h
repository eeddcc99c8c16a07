// The command lines of `ormel-batch` and `ormel`.
#pragma once

#include <span>
#include <string>

#include "base/outcome.h"

namespace ormel {

struct CommandLine {
  std::string model;    // a saved model; empty: none
  std::string output;   // -o: the suitability map to write
  std::string picture;  // --picture: its picture, a bitmap
  std::string script;   // --script: a file of window commands
  bool help = false;
  bool version = false;
};

// Reads the words behind the program's name, in any order. Refuses unknown options, an option
// without its value, and more than one model.
[[nodiscard]] Outcome<CommandLine> ReadCommandLine(std::span<const char* const> words);

}  // namespace ormel
