// The words of script lines and of the log: split, quoted, and the names of windows and controls.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ormel::ui {

// Splits a line at blanks and tabs. A word that begins with a double quote runs to the next one and
// may hold blanks; \" and \\ stand for themselves inside it, every other backslash stays. Throws
// ScriptError when a quote is not closed or a letter follows it.
std::vector<std::string> SplitWords(std::string_view line);

// The text as one line: each line break (LF, CR LF or CR) as the two letters \n.
std::string OneLine(std::string_view text);

// The text as a quoted word that SplitWords() reads back, on one line.
std::string Quoted(std::string_view text);

// A whole number that is all of `text`, without a plus sign; none: it is something else.
std::optional<int> WholeNumber(std::string_view text);
// A number that is all of `text`.
std::optional<double> DecimalNumber(std::string_view text);

// "frmView(2).picMap(1)" is window frmView, the second open one, and control picMap(1).
struct ControlName {
  std::string window;   // with its number
  std::string control;  // empty: the word has no dot outside parentheses
};
ControlName SplitControlName(const std::string& word);

struct WindowName {
  std::string name;
  int number = 1;
};
WindowName SplitWindowName(const std::string& word);

}  // namespace ormel::ui
