#include "ui/headless/headless_desktop.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <tuple>

#include "ui/headless/script_words.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

constexpr std::int64_t kLongestInterval = 1'000'000'000'000;  // 30 years, in milliseconds

constexpr std::array<const char*, 4> kAnswerNames{"ok", "cancel", "yes", "no"};

struct Box {
  const char* name;
  std::vector<Answer> answers;
};

const Box& BoxOf(Buttons buttons) {
  static const std::array<Box, 4> kBoxes{{
      {"ok", {Answer::kOk}},
      {"okcancel", {Answer::kOk, Answer::kCancel}},
      {"yesno", {Answer::kYes, Answer::kNo}},
      {"yesnocancel", {Answer::kYes, Answer::kNo, Answer::kCancel}},
  }};
  return kBoxes[static_cast<std::size_t>(buttons)];
}

template <class T>
T Take(std::deque<T>& queue, const std::string& kind, const std::string& asked) {
  if (queue.empty()) throw ScriptError("no " + kind + " is queued for " + asked);
  T first = std::move(queue.front());
  queue.pop_front();
  return first;
}

std::string Trimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t");
  if (start == std::string_view::npos) return "";
  return std::string(text.substr(start, text.find_last_not_of(" \t") - start + 1));
}

std::vector<std::string> SplitAtCommas(std::string_view text) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t comma = text.find(',');
    parts.push_back(Trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

// Reads "Arial, 12, bold, italic".
std::optional<Font> ReadFont(const std::string& text) {
  const std::vector<std::string> parts = SplitAtCommas(text);
  const std::optional<int> size = parts.size() < 2 ? std::nullopt : WholeNumber(parts[1]);
  if (parts[0].empty() || !size || *size < 1) return std::nullopt;
  Font font{parts[0], *size, false, false};
  for (std::size_t i = 2; i < parts.size(); ++i) {
    if (parts[i] != "bold" && parts[i] != "italic") return std::nullopt;
    (parts[i] == "bold" ? font.bold : font.italic) = true;
  }
  return font;
}

std::optional<int> HexDigit(char letter) {
  const std::size_t value = std::string_view("0123456789abcdefABCDEF").find(letter);
  if (value == std::string_view::npos) return std::nullopt;
  return static_cast<int>(value < 16 ? value : value - 6);
}

// The path of a file: URL, with %20 and its like read.
std::string PathOfUrl(std::string_view url) {
  url.remove_prefix(url.starts_with("file://") ? 7 : 5);
  std::string path;
  for (std::size_t i = 0; i < url.size(); ++i) {
    const auto high = i + 2 < url.size() ? HexDigit(url[i + 1]) : std::nullopt;
    const auto low = high ? HexDigit(url[i + 2]) : std::nullopt;
    if (url[i] == '%' && low) {
      path += static_cast<char>(*high * 16 + *low);
      i += 2;
    } else {
      path += url[i];
    }
  }
  return path;
}

Outcome<std::string> ReadFile(const std::string& path) {
  std::error_code error;
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path, error)) {
    return Failure{FailureKind::kNotFound, path + ": cannot be opened"};
  }
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) return Failure{FailureKind::kDisk, path + ": cannot be read"};
  return bytes;
}

}  // namespace

std::string AnswerName(Answer answer) { return kAnswerNames[static_cast<std::size_t>(answer)]; }

std::optional<Answer> AnswerNamed(const std::string& name) {
  const auto* found = std::find(kAnswerNames.begin(), kAnswerNames.end(), name);
  if (found == kAnswerNames.end()) return std::nullopt;
  return static_cast<Answer>(found - kAnswerNames.begin());
}

HeadlessDesktop::HeadlessDesktop(std::ostream& log, Screen* screen) : Desktop(screen), log_(log) {}

HeadlessDesktop::~HeadlessDesktop() { DestroyWindows(); }

std::string HeadlessDesktop::UnusedAnswers() const {
  std::string list;
  const auto name = [&list](const std::string& one) { list += (list.empty() ? "" : ", ") + one; };
  for (const Answer answer : answers_) name("answer " + AnswerName(answer));
  for (const auto& paths : files_) name(paths ? "file " + Quoted(paths->front()) : "nofile");
  for (const auto& text : prompts_) name(text ? "input " + Quoted(*text) : "noinput");
  for (const auto& colour : colours_)
    name(colour ? "colour " + std::to_string(*colour) : "nocolour");
  return list;
}

std::optional<std::string> HeadlessDesktop::TakeMessage() {
  if (messages_.empty()) return std::nullopt;
  std::string oldest = std::move(messages_.front());
  messages_.pop_front();
  return oldest;
}

Answer HeadlessDesktop::Pose(const Question& question) {
  lastQuestion_ = question;
  const Box& box = BoxOf(question.buttons);
  const std::string asked = "message " + Quoted(question.text) + " title " +
                            Quoted(question.title) + " buttons " + box.name;
  Answer answer = Answer::kOk;
  if (question.buttons != Buttons::kOk) answer = Take(answers_, "answer", asked);
  if (std::find(box.answers.begin(), box.answers.end(), answer) == box.answers.end()) {
    throw ScriptError("the queued answer " + AnswerName(answer) + " is no button of " + asked);
  }
  log_ << asked << " -> " << AnswerName(answer) << '\n';
  messages_.push_back(question.text);
  return answer;
}

std::optional<std::string> HeadlessDesktop::Prompt(const std::string& text,
                                                   const std::string& title,
                                                   const std::string& proposal) {
  const std::string asked =
      "prompt " + Quoted(text) + " title " + Quoted(title) + " default " + Quoted(proposal);
  std::optional<std::string> answer = Take(prompts_, "input", asked);
  log_ << asked << " -> " << (answer ? Quoted(*answer) : "cancel") << '\n';
  return answer;
}

std::optional<FileChoice> HeadlessDesktop::PickFile(const FileDialog& dialog, bool save) {
  const std::string asked = std::string(save ? "save" : "open") + " title " + Quoted(dialog.title) +
                            " filter " + Quoted(dialog.filter);
  auto paths = Take(files_, "file", asked);
  if (!paths) {
    log_ << asked << " -> cancel\n";
    return std::nullopt;
  }
  if (paths->size() > 1 && (save || !dialog.multiple)) {
    throw ScriptError("several files are queued for " + asked);
  }
  log_ << asked << " ->";
  for (const std::string& path : *paths) log_ << ' ' << Quoted(path);
  log_ << '\n';
  const int filterIndex = FilterIndexOf(paths->front(), dialog.filter);
  return FileChoice{std::move(*paths), filterIndex};
}

std::optional<Colour> HeadlessDesktop::PickColour(const std::string& title, Colour /*start*/) {
  const std::string asked = "colour title " + Quoted(title);
  const std::optional<Colour> answer = Take(colours_, "colour", asked);
  log_ << asked << " -> " << (answer ? std::to_string(*answer) : "cancel") << '\n';
  return answer;
}

std::optional<Font> HeadlessDesktop::PickFont(const std::string& title, const Font& /*start*/) {
  const std::string asked = "font title " + Quoted(title);
  const std::optional<std::string> answer = Take(prompts_, "input", asked);
  std::optional<Font> font;
  if (answer) {
    font = ReadFont(*answer);
    if (!font)
      throw ScriptError("the queued input " + Quoted(*answer) + " is no font for " + asked);
  }
  log_ << asked << " -> " << (answer ? Quoted(*answer) : "cancel") << '\n';
  return font;
}

TimerId HeadlessDesktop::StartTimer(std::chrono::milliseconds interval, Handler tick) {
  const std::int64_t length = std::clamp<std::int64_t>(interval.count(), 1, kLongestInterval);
  timers_[++lastTimer_] = {length, now_ + length, ++lastTurn_,
                           std::make_shared<Tick>(Tick{std::move(tick)})};
  return lastTimer_;
}

HeadlessDesktop::RunningTimer* HeadlessDesktop::NextDue(std::int64_t end) {
  const auto next =
      std::min_element(timers_.begin(), timers_.end(), [](const auto& a, const auto& b) {
        return std::tie(a.second.due, a.second.turn) < std::tie(b.second.due, b.second.turn);
      });
  return next == timers_.end() || next->second.due > end ? nullptr : &next->second;
}

void HeadlessDesktop::Advance(std::chrono::milliseconds time) {
  const std::int64_t end = now_ + time.count();
  while (RunningTimer* timer = NextDue(end)) {
    // A modal window that a tick opens may have let more time pass than this.
    now_ = std::max(now_, timer->due);
    timer->due += timer->interval;
    timer->turn = ++lastTurn_;
    const std::shared_ptr<Tick> tick = timer->tick;  // it may stop its own timer
    if (tick->running) continue;                     // it waits in a modal window
    tick->running = true;
    Dispatch(tick->run);
    tick->running = false;
    Sweep();
  }
  now_ = std::max(now_, end);
}

Outcome<std::string> HeadlessDesktop::Fetch(const std::string& url, ProgressSink& progress) {
  if (url.starts_with("file:")) return ReadFile(PathOfUrl(url));
  if (network_) return network_(url, progress);
  return Failure{FailureKind::kNotFound, url + ": there is no network here"};
}

void HeadlessDesktop::RunModal(Window& window) {
  if (!modalLoop_) throw ScriptError(window.Name() + " waits for someone to close it");
  modalLoop_(window);
}

}  // namespace ormel::ui
