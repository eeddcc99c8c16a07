#include "ui/headless/script_expect.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <vector>

#include "ui/headless/headless_desktop.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

using Context = const ScriptContext&;
using Words = ScriptWords;

void ExpectControl(Context context, Words words) {
  struct State {
    const char* name;
    bool (*holds)(const Control& control);
  };
  static constexpr State kStates[] = {
      {"enabled", [](const Control& control) { return control.Usable(); }},
      {"disabled", [](const Control& control) { return !control.Usable(); }},
      {"visible", [](const Control& control) { return control.Shown(); }},
      {"hidden", [](const Control& control) { return !control.Shown(); }}};
  const ControlName name = SplitControlName(words[0]);
  const Control& control = ControlOf(OpenWindow(context, name.window), name);
  for (const State& state : kStates) {
    if (state.name != words[1]) continue;
    if (!state.holds(control)) throw ExpectationFailed{words[0] + " is not " + words[1]};
    return;
  }
  // What has several lines is compared as it would be logged.
  if (control.Shows(words[1]) || OneLine(control.Printed()) == words[1]) return;
  throw ExpectationFailed{"expected " + words[0] + " " + Quoted(words[1]) + ", it shows " +
                          Quoted(control.Printed())};
}

void ExpectMessage(Context context, Words words) {
  const std::optional<std::string> oldest = context.desktop.TakeMessage();
  if (!oldest) throw ExpectationFailed{"expected message " + Quoted(words[1]) + ", there is none"};
  if (OneLine(*oldest) == words[1]) return;
  throw ExpectationFailed{"expected message " + Quoted(words[1]) + ", it is " + Quoted(*oldest)};
}

void ExpectNoMessage(Context context, Words /*words*/) {
  const std::optional<std::string> oldest = context.desktop.TakeMessage();
  if (oldest) throw ExpectationFailed{"expected no message, there is " + Quoted(*oldest)};
}

// A window that its program has hidden for a while is not there for a person.
bool IsSeen(const HeadlessDesktop& desktop, const std::string& word) {
  const WindowName name = SplitWindowName(word);
  const Window* window = desktop.FindWindow(name.name, name.number);
  return window != nullptr && !desktop.IsHidden(*window);
}

std::string SeenWindows(const HeadlessDesktop& desktop) {
  std::string names;
  for (const Window* window : desktop.OpenWindows()) {
    if (!desktop.IsHidden(*window)) names += (names.empty() ? "" : ", ") + window->Name();
  }
  return names.empty() ? "none" : names;
}

void ExpectWindow(Context context, Words words) {
  if (IsSeen(context.desktop, words[1])) return;
  throw ExpectationFailed{"expected window " + words[1] +
                          ", open are: " + SeenWindows(context.desktop)};
}

void ExpectNoWindow(Context context, Words words) {
  if (!IsSeen(context.desktop, words[2])) return;
  throw ExpectationFailed{"expected no window " + words[2] + ", it is open"};
}

// ---- Places on the screen -----------------------------------------------------------------------

WindowBox BoxOf(Context context, const std::string& window) {
  return ScreenOf(context).BoxOf(OpenWindow(context, window));
}

std::string BoxText(const WindowBox& box) {
  return std::to_string(box.width) + " x " + std::to_string(box.height) + " at " +
         std::to_string(box.left) + ", " + std::to_string(box.top);
}

void ExpectBelow(Context context, Words words) {
  const WindowBox box = BoxOf(context, words[1]);
  const WindowBox above = BoxOf(context, words[2]);
  if (box.top >= above.Bottom()) return;
  throw ExpectationFailed{"expected " + words[1] + " below " + words[2] + ", it is " +
                          BoxText(box) + ", the other " + BoxText(above)};
}

void ExpectBehind(Context context, Words words) {
  const WindowBox box = BoxOf(context, words[1]);
  const WindowBox before = BoxOf(context, words[2]);
  if (box.left > before.left && box.top > before.top) return;
  throw ExpectationFailed{"expected " + words[1] + " further down and right than " + words[2] +
                          ", it is " + BoxText(box) + ", the other " + BoxText(before)};
}

void ExpectInside(Context context, Words words) {
  const WindowBox box = BoxOf(context, words[1]);
  const WindowBox screen = ScreenOf(context).Room();
  if (OnScreen(screen, box) == box) return;
  throw ExpectationFailed{"expected " + words[1] + " on the screen, it is " + BoxText(box) +
                          ", the screen " + BoxText(screen)};
}

// ---- Files --------------------------------------------------------------------------------------

// A file that is compared, block by block.
class ComparedFile {
 public:
  explicit ComparedFile(const std::string& path) : path_(path), file_(path, std::ios::binary) {
    std::error_code error;
    if (!file_ || std::filesystem::is_directory(path, error)) {
      throw ExpectationFailed{path + " cannot be opened"};
    }
  }

  // The next bytes of the file, none at its end.
  std::span<const char> Next() {
    file_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    if (file_.bad()) throw ExpectationFailed{path_ + " cannot be read"};
    return {block_.data(), static_cast<std::size_t>(file_.gcount())};
  }

 private:
  const std::string path_;
  std::ifstream file_;
  std::vector<char> block_ = std::vector<char>(64 * 1024);
};

void ExpectSame(Context /*context*/, Words words) {
  ComparedFile first(words[1]);
  ComparedFile second(words[2]);
  std::size_t same = 0;  // bytes
  std::ptrdiff_t lines = 0;
  while (true) {
    const std::span<const char> a = first.Next();
    const std::span<const char> b = second.Next();
    const auto differs = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    same += static_cast<std::size_t>(differs - a.begin());
    lines += std::count(a.begin(), differs, '\n');
    if (differs != a.end() || a.size() != b.size()) {
      throw ExpectationFailed{words[1] + " and " + words[2] + " differ from byte " +
                              std::to_string(same + 1) + " on (line " + std::to_string(lines + 1) +
                              ")"};
    }
    if (a.empty()) return;
  }
}

void ExpectAbsent(Context /*context*/, Words words) {
  std::error_code error;
  if (std::filesystem::exists(std::filesystem::symlink_status(words[1], error))) {
    throw ExpectationFailed{"expected no file " + words[1] + ", it is there"};
  }
}

struct Expectation {
  std::array<const char*, 2> begins;  // the second may be null: any word
  const char* takes;
  std::size_t words;
  void (*check)(Context context, Words words);
};

constexpr Expectation kExpectations[] = {
    {{"message", nullptr}, "message TEXT", 2, ExpectMessage},
    {{"no", "message"}, "no message", 2, ExpectNoMessage},
    {{"window", nullptr}, "window WIN", 2, ExpectWindow},
    {{"no", "window"}, "no window WIN", 3, ExpectNoWindow},
    {{"below", nullptr}, "below WIN WIN", 3, ExpectBelow},
    {{"behind", nullptr}, "behind WIN WIN", 3, ExpectBehind},
    {{"inside", nullptr}, "inside WIN", 2, ExpectInside},
    {{"same", nullptr}, "same FILE FILE", 3, ExpectSame},
    {{"absent", nullptr}, "absent FILE", 2, ExpectAbsent},
    {{nullptr, nullptr}, "WIN.CTL VALUE", 2, ExpectControl},
};

bool Begins(Words words, const Expectation& one) {
  return (one.begins[0] == nullptr || one.begins[0] == words[0]) &&
         (one.begins[1] == nullptr || one.begins[1] == words[1]);
}

}  // namespace

void Expect(const ScriptContext& context, ScriptWords words) {
  const auto* found = std::find_if(std::begin(kExpectations), std::end(kExpectations),
                                   [&](const Expectation& one) { return Begins(words, one); });
  if (words.size() != found->words) {
    throw ScriptError(std::string("expect takes ") + found->takes);
  }
  found->check(context, words);
}

}  // namespace ormel::ui
