#include "ui/headless/script_words.h"

#include <charconv>

#include "ui/headless/headless_desktop.h"

namespace ormel::ui {
namespace {

bool IsBlank(char letter) { return letter == ' ' || letter == '\t'; }

// Reads the quoted word that begins at `at`, and moves `at` behind it.
std::string QuotedWord(std::string_view line, std::size_t& at) {
  std::string word;
  for (++at; at < line.size(); ++at) {
    const char next = at + 1 < line.size() ? line[at + 1] : '\0';
    if (line[at] == '"') {
      if (next != '\0' && !IsBlank(next)) {
        throw ScriptError("a blank is missing behind the closing quote");
      }
      ++at;
      return word;
    }
    if (line[at] == '\\' && (next == '"' || next == '\\')) ++at;
    word += line[at];
  }
  throw ScriptError("a double quote is not closed");
}

std::string PlainWord(std::string_view line, std::size_t& at) {
  const std::size_t start = at;
  while (at < line.size() && !IsBlank(line[at])) ++at;
  return std::string(line.substr(start, at - start));
}

template <class T>
std::optional<T> WholeOf(std::string_view text) {
  T number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace

std::vector<std::string> SplitWords(std::string_view line) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while (at < line.size()) {
    if (IsBlank(line[at])) {
      ++at;
    } else {
      words.push_back(line[at] == '"' ? QuotedWord(line, at) : PlainWord(line, at));
    }
  }
  return words;
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    if (text[i] == '\r' || text[i] == '\n') {
      line += "\\n";
    } else {
      line += text[i];
    }
  }
  return line;
}

std::string Quoted(std::string_view text) {
  std::string escaped;
  for (const char letter : text) {
    if (letter == '"' || letter == '\\') escaped += '\\';
    escaped += letter;
  }
  return '"' + OneLine(escaped) + '"';
}

std::optional<int> WholeNumber(std::string_view text) { return WholeOf<int>(text); }

std::optional<double> DecimalNumber(std::string_view text) { return WholeOf<double>(text); }

ControlName SplitControlName(const std::string& word) {
  int depth = 0;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] == '(') ++depth;
    if (word[i] == ')') --depth;
    if (word[i] == '.' && depth == 0) return {word.substr(0, i), word.substr(i + 1)};
  }
  return {word, ""};
}

WindowName SplitWindowName(const std::string& word) {
  const std::size_t open = word.find('(');
  if (open == std::string::npos || word.back() != ')') return {word, 1};
  const auto number = WholeNumber(std::string_view(word).substr(open + 1, word.size() - open - 2));
  if (!number || *number < 1) return {word, 1};
  return {word.substr(0, open), *number};
}

}  // namespace ormel::ui
