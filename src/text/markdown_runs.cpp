#include "text/markdown_runs.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace ormel {
namespace {

// Bounds the time that a page of nothing but marks takes.
constexpr std::size_t kFarthestEnd = 400;  // bytes

constexpr auto kNowhere = std::string_view::npos;

bool IsBlank(char letter) { return letter == ' '; }
bool IsWord(char letter) { return std::isalnum(static_cast<unsigned char>(letter)) != 0; }
bool IsSign(char letter) { return std::ispunct(static_cast<unsigned char>(letter)) != 0; }

// How often the letter at `start` follows itself.
std::size_t RunLength(std::string_view text, std::size_t start) {
  const std::size_t end = text.find_first_not_of(text[start], start);
  return (end == kNowhere ? text.size() : end) - start;
}

// The start of the back quotes that end the code begun by `count` of them; kNowhere: none do.
std::size_t EndOfCode(std::string_view text, std::size_t start, std::size_t count) {
  while ((start = text.find('`', start)) != kNowhere) {
    const std::size_t length = RunLength(text, start);
    if (length == count) return start;
    start += length;
  }
  return kNowhere;
}

// The next letter that can be a mark: behind an escaped sign, and behind a whole piece of code.
std::size_t Step(std::string_view text, std::size_t at) {
  if (text[at] == '\\') return at + 2;
  if (text[at] != '`') return at + 1;
  const std::size_t count = RunLength(text, at);
  const std::size_t end = EndOfCode(text, at + count, count);
  return end == kNowhere ? at + count : end + count;
}

// The bracket that closes the one at `open`; kNowhere: none does.
std::size_t EndOfBracket(std::string_view text, std::size_t open, char closing) {
  int depth = 0;
  for (std::size_t at = open; at < text.size(); at = Step(text, at)) {
    if (text[at] == text[open]) ++depth;
    if (text[at] == closing && --depth == 0) return at;
  }
  return kNowhere;
}

struct Link {
  std::string_view text;
  std::string_view target;
  std::size_t end = 0;  // behind its last bracket
};

// The link whose first bracket stands at `open`.
std::optional<Link> ReadLink(std::string_view text, std::size_t open) {
  text = text.substr(0, open + kFarthestEnd);
  const std::size_t middle = EndOfBracket(text, open, ']');
  if (middle == kNowhere || middle + 1 >= text.size() || text[middle + 1] != '(') return {};
  const std::size_t end = EndOfBracket(text, middle + 1, ')');
  if (end == kNowhere) return {};
  std::string_view target = text.substr(middle + 2, end - middle - 2);
  target = target.substr(0, target.find(' '));  // a title behind it is not shown
  return Link{text.substr(open + 1, middle - open - 1), target, end + 1};
}

class RunReader {
 public:
  void Read(std::string_view text, const TextRun& look);
  std::vector<TextRun> Take() { return std::move(runs_); }

 private:
  // Each reads what begins at `at` and returns where it ends; `at` itself when it is no such thing.
  std::size_t ReadEscaped(std::string_view text, std::size_t at, const TextRun& look);
  std::size_t ReadCode(std::string_view text, std::size_t at, const TextRun& look);
  std::size_t ReadEmphasis(std::string_view text, std::size_t at, const TextRun& look);
  std::size_t ReadBrackets(std::string_view text, std::size_t at, const TextRun& look);
  std::size_t ReadMark(std::string_view text, std::size_t at, const TextRun& look);
  void Append(std::string_view text, const TextRun& look);

  std::vector<TextRun> runs_;
};

void RunReader::Append(std::string_view text, const TextRun& look) {
  const bool goesOn = !runs_.empty() && runs_.back().bold == look.bold &&
                      runs_.back().italic == look.italic && runs_.back().code == look.code &&
                      runs_.back().target == look.target;
  if (!goesOn) {
    runs_.push_back(look);
    runs_.back().text.clear();
  }
  runs_.back().text += text;
}

std::size_t RunReader::ReadEscaped(std::string_view text, std::size_t at, const TextRun& look) {
  if (at + 1 >= text.size() || !IsSign(text[at + 1])) return at;
  Append(text.substr(at + 1, 1), look);
  return at + 2;
}

std::size_t RunReader::ReadCode(std::string_view text, std::size_t at, const TextRun& look) {
  const std::size_t count = RunLength(text, at);
  const std::size_t end = EndOfCode(text.substr(0, at + count + kFarthestEnd), at + count, count);
  if (end == kNowhere) {
    Append(text.substr(at, count), look);
    return at + count;
  }
  std::string_view code = text.substr(at + count, end - at - count);
  // Blanks inside let code begin with a back quote.
  const bool padded = code.size() > 2 && IsBlank(code.front()) && IsBlank(code.back());
  if (padded) code = code.substr(1, code.size() - 2);
  TextRun inner = look;
  inner.code = true;
  Append(code, inner);
  return end + count;
}

// The start of the marks that end what `count` of them at `at` begin; kNowhere: they begin nothing.
std::size_t EndOfEmphasis(std::string_view text, std::size_t at, std::size_t count) {
  const char mark = text[at];
  const bool isWordMark = mark == '_';  // names_with_underscores are not italic
  text = text.substr(0, at + kFarthestEnd);
  const std::size_t start = at + count;
  if (start >= text.size() || IsBlank(text[start])) return kNowhere;
  if (isWordMark && at > 0 && IsWord(text[at - 1])) return kNowhere;
  for (std::size_t end = start; end < text.size();) {
    if (text[end] != mark) {
      end = Step(text, end);
      continue;
    }
    const std::size_t length = RunLength(text, end);
    const std::size_t behind = end + length;
    const bool fits = count == 1 ? length != 2 : length >= 2;  // bold within italic is its own
    const bool closes = end > start && fits && !IsBlank(text[end - 1]) &&
                        !(isWordMark && behind < text.size() && IsWord(text[behind]));
    if (closes) return behind - count;
    end = behind;
  }
  return kNowhere;
}

std::size_t RunReader::ReadEmphasis(std::string_view text, std::size_t at, const TextRun& look) {
  const std::size_t length = RunLength(text, at);
  const std::size_t count = length >= 2 ? 2 : 1;
  const std::size_t end = EndOfEmphasis(text, at, count);
  if (end == kNowhere) {
    Append(text.substr(at, length), look);
    return at + length;
  }
  TextRun inner = look;
  (count == 2 ? inner.bold : inner.italic) = true;
  Read(text.substr(at + count, end - at - count), inner);
  return end + count;
}

std::size_t RunReader::ReadBrackets(std::string_view text, std::size_t at, const TextRun& look) {
  const bool isPicture = text[at] == '!';
  if (isPicture && (at + 1 >= text.size() || text[at + 1] != '[')) return at;
  const std::optional<Link> link = ReadLink(text, at + (isPicture ? 1 : 0));
  if (!link) return at;
  TextRun inner = look;
  const bool isWeb = link->target.starts_with("http:") || link->target.starts_with("https:");
  if (!isPicture && !isWeb) inner.target = link->target;
  Read(link->text, inner);
  if (isWeb && link->text != link->target) {
    Append(" (" + std::string(link->target) + ")", look);
  }
  return link->end;
}

std::size_t RunReader::ReadMark(std::string_view text, std::size_t at, const TextRun& look) {
  switch (text[at]) {
    case '\\':
      return ReadEscaped(text, at, look);
    case '`':
      return ReadCode(text, at, look);
    case '*':
    case '_':
      return ReadEmphasis(text, at, look);
    case '[':
    case '!':
      return ReadBrackets(text, at, look);
    default:
      return at;
  }
}

void RunReader::Read(std::string_view text, const TextRun& look) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = ReadMark(text, at, look);
    if (end != at) {
      at = end;
      continue;
    }
    const std::size_t next = std::min(text.find_first_of("\\`*_[!", at + 1), text.size());
    Append(text.substr(at, next - at), look);
    at = next;
  }
}

}  // namespace

std::vector<TextRun> ReadRuns(std::string_view text) {
  RunReader reader;
  reader.Read(text, {});
  return reader.Take();
}

std::vector<TextRun> ReadPictures(std::string_view text) {
  std::vector<TextRun> pictures;
  for (std::size_t at = 0; at < text.size();) {
    if (!text.substr(at).starts_with("![")) return {};
    const std::optional<Link> link = ReadLink(text, at + 1);
    if (!link) return {};
    TextRun& picture = pictures.emplace_back();
    for (const TextRun& run : ReadRuns(link->text)) picture.text += run.text;
    picture.target = link->target;
    at = std::min(text.find_first_not_of(' ', link->end), text.size());
  }
  return pictures;
}

}  // namespace ormel
