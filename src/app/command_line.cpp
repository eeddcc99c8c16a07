#include "app/command_line.h"

#include <cstddef>
#include <string_view>

namespace ormel {
namespace {

struct Option {
  std::string_view name;
  std::string_view other;                     // a second name
  std::string CommandLine::*value = nullptr;  // of an option with a value
  bool CommandLine::*flag = nullptr;          // of one without
};

constexpr Option kOptions[] = {
    {"-o", "--output", &CommandLine::output, nullptr},
    {"--picture", "", &CommandLine::picture, nullptr},
    {"--script", "", &CommandLine::script, nullptr},
    {"-h", "--help", nullptr, &CommandLine::help},
    {"--version", "", nullptr, &CommandLine::version},
};

const Option* FindOption(std::string_view word) {
  for (const Option& option : kOptions) {
    if (word == option.name || word == option.other) return &option;
  }
  return nullptr;
}

Failure Refuse(const std::string& text) { return {FailureKind::kRefused, text}; }

}  // namespace

Outcome<CommandLine> ReadCommandLine(std::span<const char* const> words) {
  CommandLine line;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string word = words[i];
    const Option* option = FindOption(word);
    if (option == nullptr) {
      if (word.size() > 1 && word[0] == '-') return Refuse("unknown option " + word);
      if (!line.model.empty()) return Refuse("more than one model: " + line.model + " and " + word);
      line.model = word;
    } else if (option->flag != nullptr) {
      line.*option->flag = true;
    } else if (i + 1 == words.size()) {
      return Refuse(word + " needs a file");
    } else {
      line.*option->value = words[++i];
    }
  }
  return line;
}

}  // namespace ormel
