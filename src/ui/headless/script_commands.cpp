#include "ui/headless/script_commands.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <vector>

#include "ui/headless/headless_desktop.h"
#include "ui/headless/script_expect.h"
#include "ui/headless/script_words.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

using Context = const ScriptContext&;
using Words = ScriptWords;

Control& ReachableControl(Context context, const std::string& word) {
  const ControlName name = SplitControlName(word);
  return ControlOf(ReachableWindow(context, name.window), name);
}

void Require(const Outcome<>& outcome) {
  if (!outcome.Ok()) throw ScriptError(outcome.Text());
}

int Number(const std::string& word, int minimum, int maximum) {
  const std::optional<int> number = WholeNumber(word);
  if (!number || *number < minimum || *number > maximum) {
    throw ScriptError(word + " is no whole number from " + std::to_string(minimum) + " to " +
                      std::to_string(maximum));
  }
  return *number;
}

double Coordinate(const std::string& word) {
  constexpr double kFarthest = 1e6;  // no picture is as large; the pixel still fits an int
  const std::optional<double> number = DecimalNumber(word);
  if (!number || !(std::abs(*number) <= kFarthest)) throw ScriptError(word + " is no coordinate");
  return *number;
}

void Click(Context context, Words words) { Require(ReachableControl(context, words[0]).Click()); }

void DoubleClick(Context context, Words words) {
  Require(ReachableControl(context, words[0]).DoubleClick());
}

void Set(Context context, Words words) {
  Require(ReachableControl(context, words[0]).Set(words[1]));
}

void Select(Context context, Words words) {
  Require(ReachableControl(context, words[0]).Select(words.subspan(1)));
}

void Mouse(Context context, Words words) {
  struct Action {
    const char* name;
    MouseAction action;
  };
  static constexpr Action kActions[] = {{"down", MouseAction::kDown},
                                        {"move", MouseAction::kMove},
                                        {"up", MouseAction::kUp},
                                        {"click", MouseAction::kClick}};
  const auto* found = std::find_if(std::begin(kActions), std::end(kActions),
                                   [&](const Action& one) { return one.name == words[1]; });
  if (found == std::end(kActions)) throw ScriptError("the mouse cannot " + words[1]);
  Require(ReachableControl(context, words[0])
              .Mouse({found->action, Coordinate(words[2]), Coordinate(words[3])}));
}

// A key goes to the window first, as on a screen: short-cuts and the default button work from every
// control that a person can be in.
void Key(Context context, Words words) {
  std::string key = words[1];
  if (key.size() > 2 && key.front() == '{' && key.back() == '}')
    key = key.substr(1, key.size() - 2);
  const ControlName name = SplitControlName(words[0]);
  Window& window = ReachableWindow(context, name.window);
  if (name.control.empty()) {
    if (!window.PressKey(key)) throw ScriptError(name.window + " has no use for the key " + key);
    return;
  }
  Control& control = ControlOf(window, name);
  if (control.Usable() && window.PressKey(key)) return;  // hidden ones too: the window has it
  Require(control.Key(key));
}

void Close(Context context, Words words) {
  context.desktop.CloseByFrame(ReachableWindow(context, words[0]));
}

void QueueAnswers(Context context, Words words) {
  for (const std::string& word : words) {
    const std::optional<Answer> answer = AnswerNamed(word);
    if (!answer) throw ScriptError(word + " is no answer: ok, cancel, yes or no");
    context.desktop.AnswerBoxes(*answer);
  }
}

void QueueFiles(Context context, Words words) {
  context.desktop.AnswerFiles(std::vector<std::string>(words.begin(), words.end()));
}

void QueueNoFile(Context context, Words /*words*/) { context.desktop.AnswerFiles(std::nullopt); }

void QueueInput(Context context, Words words) { context.desktop.AnswerPrompt(words[0]); }

void QueueNoInput(Context context, Words /*words*/) { context.desktop.AnswerPrompt(std::nullopt); }

void QueueColour(Context context, Words words) {
  const int colour = Number(words[0], 0, static_cast<int>(kLargestColour));
  context.desktop.AnswerColour(static_cast<Colour>(colour));
}

void QueueNoColour(Context context, Words /*words*/) { context.desktop.AnswerColour(std::nullopt); }

void Advance(Context context, Words words) {
  context.desktop.Advance(std::chrono::milliseconds(Number(words[0], 0, 1'000'000'000)));
}

void Print(Context context, Words words) {
  const ControlName name = SplitControlName(words[0]);
  context.out << ControlOf(OpenWindow(context, name.window), name).Printed() << '\n';
}

void Resize(Context context, Words words) {
  Window& window = OpenWindow(context, words[0]);
  constexpr int kLargest = 32767;  // pixels
  ScreenOf(context).Resize(window, {Number(words[1], 1, kLargest), Number(words[2], 1, kLargest)});
}

void Snapshot(Context context, Words words) {
  Window& window = OpenWindow(context, words[0]);
  if (context.desktop.ItsScreen() != nullptr && !context.desktop.Snapshot(window, words[1])) {
    throw ScriptError("cannot write " + words[1]);
  }
}

struct Command {
  const char* name;
  const char* takes;
  std::size_t fewest;  // words behind the name
  std::size_t most;
  void (*run)(Context context, Words words);
};

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

constexpr Command kCommands[] = {
    {"click", "WIN.CTL", 1, 1, Click},
    {"doubleclick", "WIN.CTL", 1, 1, DoubleClick},
    {"set", "WIN.CTL VALUE", 2, 2, Set},
    {"select", "WIN.CTL ITEM...", 2, kAnyNumber, Select},
    {"mouse", "WIN.CTL down|move|up|click X Y", 4, 4, Mouse},
    {"key", "WIN.CTL KEY", 2, 2, Key},
    {"close", "WIN", 1, 1, Close},
    {"answer", "WORD...", 1, kAnyNumber, QueueAnswers},
    {"file", "PATH...", 1, kAnyNumber, QueueFiles},
    {"nofile", "nothing", 0, 0, QueueNoFile},
    {"input", "TEXT", 1, 1, QueueInput},
    {"noinput", "nothing", 0, 0, QueueNoInput},
    {"colour", "N", 1, 1, QueueColour},
    {"nocolour", "nothing", 0, 0, QueueNoColour},
    {"advance", "MS", 1, 1, Advance},
    {"print", "WIN.CTL", 1, 1, Print},
    {"expect", "WHAT VALUE", 2, 3, Expect},
    {"resize", "WIN WIDTH HEIGHT", 3, 3, Resize},
    {"snapshot", "WIN FILE.png", 2, 2, Snapshot},
};

}  // namespace

void RunCommand(const ScriptContext& context, ScriptWords words) {
  const auto* command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [&](const Command& one) { return one.name == words[0]; });
  if (command == std::end(kCommands)) throw ScriptError("unknown command " + words[0]);
  const ScriptWords rest = words.subspan(1);
  if (rest.size() < command->fewest || rest.size() > command->most) {
    throw ScriptError(words[0] + " takes " + command->takes);
  }
  command->run(context, rest);
}

}  // namespace ormel::ui
