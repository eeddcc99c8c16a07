#include "text/markdown.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <span>

#include "text/markdown_runs.h"

namespace ormel {
namespace {

constexpr int kDeepest = 8;             // lists and notes within each other
constexpr std::size_t kCodeIndent = 4;  // blanks before a line of code

constexpr auto kNowhere = std::string::npos;

using Lines = std::span<const std::string>;
using Kind = TextBlock::Kind;

std::size_t Indent(std::string_view line) {
  return std::min(line.find_first_not_of(' '), line.size());
}
bool IsEmpty(std::string_view line) { return Indent(line) == line.size(); }

std::string Trimmed(std::string_view text) {
  const std::size_t start = Indent(text);
  return std::string(text.substr(start, text.find_last_not_of(' ') + 1 - start));
}

std::vector<std::string> SplitLines(std::string_view source) {
  std::vector<std::string> lines(1);
  for (const char letter : source) {
    if (letter == '\n') {
      lines.emplace_back();
    } else if (letter == '\t') {
      lines.back() += "    ";
    } else if (letter != '\r') {
      lines.back() += letter;
    }
  }
  return lines;
}

// ---- What a line begins -------------------------------------------------------------------------

int HeadingLevel(std::string_view line) {
  const std::size_t level = std::min(line.find_first_not_of('#'), line.size());
  const bool isHeading = level >= 1 && level <= 6 && level < line.size() && line[level] == ' ';
  return isHeading ? static_cast<int>(level) : 0;
}

bool IsFence(std::string_view line) { return Trimmed(line).starts_with("```"); }
bool IsQuote(std::string_view line) { return Trimmed(line).starts_with('>'); }

struct Marker {
  std::string shown;
  std::size_t width = 0;  // how far what belongs to the entry is indented; 0: it is no marker
};

Marker MarkerOf(std::string_view line) {
  const std::size_t indent = Indent(line);
  const std::string_view rest = line.substr(indent);
  if (rest.starts_with("- ") || rest.starts_with("* ") || rest.starts_with("+ ")) {
    return {"\u2022", indent + 2};
  }
  std::size_t digits = 0;
  while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') ++digits;
  const bool isNumber = digits >= 1 && digits <= 9 && rest.substr(digits).starts_with(". ");
  if (!isNumber) return {};
  return {std::string(rest.substr(0, digits + 1)), indent + digits + 2};
}

// The line below the head of a table: |---|:---:|.
bool IsTableRule(std::string_view line) {
  const std::string rule = Trimmed(line);
  return rule.starts_with('|') && rule.find('-') != kNowhere &&
         rule.find_first_not_of("|-: ") == kNowhere;
}

bool IsTable(Lines lines) {
  return lines.size() > 1 && Trimmed(lines[0]).starts_with('|') && IsTableRule(lines[1]);
}

// A line across the page: ---.
bool IsRule(std::string_view line) {
  const std::string rule = Trimmed(line);
  return rule.size() >= 3 && rule.find_first_not_of(rule[0]) == kNowhere &&
         (rule[0] == '-' || rule[0] == '*' || rule[0] == '_');
}

bool EndsParagraph(Lines lines) {
  const std::string& line = lines[0];
  return IsEmpty(line) || HeadingLevel(line) > 0 || IsFence(line) || IsQuote(line) ||
         MarkerOf(line).width > 0 || IsRule(line) || IsTable(lines);
}

// The cells of a row of a table; \| is no border.
std::vector<TextCell> ReadTableRow(std::string_view line) {
  std::string row = Trimmed(line).substr(1);
  if (row.ends_with('|') && !row.ends_with("\\|")) row.pop_back();
  std::vector<std::string> texts(1);
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (row[i] == '|') {
      texts.emplace_back();
    } else if (row.compare(i, 2, "\\|") == 0) {
      texts.back() += row[++i];
    } else {
      texts.back() += row[i];
    }
  }
  std::vector<TextCell> cells;
  cells.reserve(texts.size());
  for (const std::string& text : texts) cells.push_back({ReadRuns(Trimmed(text))});
  return cells;
}

// ---- Blocks -------------------------------------------------------------------------------------

// What blocks stand in.
struct Surroundings {
  int depth = 0;
  bool quoted = false;
  int nested = 0;
};

class BlockReader {
 public:
  void Read(Lines lines, const Surroundings& around);
  std::vector<TextBlock> Take() { return std::move(blocks_); }

 private:
  // Each reads the block with which `lines` begin and returns how many of them it takes.
  std::size_t ReadBlock(Lines lines, const Surroundings& around);
  std::size_t ReadHeading(Lines lines, const Surroundings& around);
  std::size_t ReadFenced(Lines lines, const Surroundings& around);
  std::size_t ReadIndented(Lines lines, const Surroundings& around);
  std::size_t ReadTable(Lines lines, const Surroundings& around);
  std::size_t ReadQuote(Lines lines, Surroundings around);
  std::size_t ReadEntry(Lines lines, Surroundings around);
  std::size_t ReadParagraph(Lines lines, const Surroundings& around);
  void AddPictures(const std::vector<TextRun>& pictures, const Surroundings& around);

  TextBlock& Add(Kind kind, const Surroundings& around);
  void AddParagraph(std::vector<TextRun> runs, const Surroundings& around) {
    Add(Kind::kParagraph, around).rows.push_back({{std::move(runs)}});
  }

  std::vector<TextBlock> blocks_;
};

TextBlock& BlockReader::Add(Kind kind, const Surroundings& around) {
  TextBlock& block = blocks_.emplace_back();
  block.kind = kind;
  block.depth = around.depth;
  block.quoted = around.quoted;
  return block;
}

void BlockReader::Read(Lines lines, const Surroundings& around) {
  while (!lines.empty()) lines = lines.subspan(ReadBlock(lines, around));
}

std::size_t BlockReader::ReadBlock(Lines lines, const Surroundings& around) {
  const std::string& line = lines[0];
  if (IsEmpty(line) || IsRule(line)) return 1;
  if (Indent(line) >= kCodeIndent) return ReadIndented(lines, around);
  if (HeadingLevel(line) > 0) return ReadHeading(lines, around);
  if (IsFence(line)) return ReadFenced(lines, around);
  if (IsTable(lines)) return ReadTable(lines, around);
  if (around.nested < kDeepest && IsQuote(line)) return ReadQuote(lines, around);
  if (around.nested < kDeepest && MarkerOf(line).width > 0) return ReadEntry(lines, around);
  return ReadParagraph(lines, around);
}

std::size_t BlockReader::ReadHeading(Lines lines, const Surroundings& around) {
  TextBlock& block = Add(Kind::kHeading, around);
  block.level = HeadingLevel(lines[0]);
  const auto marks = static_cast<std::size_t>(block.level);
  block.rows.push_back({{ReadRuns(Trimmed(std::string_view(lines[0]).substr(marks)))}});
  return 1;
}

TextCell CodeLine(std::string text) {
  TextRun run;
  run.text = std::move(text);
  run.code = true;
  return {{run}};
}

std::size_t BlockReader::ReadFenced(Lines lines, const Surroundings& around) {
  TextBlock& block = Add(Kind::kCode, around);
  const std::size_t indent = Indent(lines[0]);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    if (IsFence(lines[i])) return i + 1;
    block.rows.push_back({CodeLine(lines[i].substr(std::min(indent, Indent(lines[i]))))});
  }
  return lines.size();
}

std::size_t BlockReader::ReadIndented(Lines lines, const Surroundings& around) {
  TextBlock& block = Add(Kind::kCode, around);
  std::size_t end = 1;  // behind the last line that is not empty
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsEmpty(lines[i]) && Indent(lines[i]) < kCodeIndent) break;
    if (!IsEmpty(lines[i])) end = i + 1;
  }
  for (const std::string& line : lines.first(end)) {
    block.rows.push_back({CodeLine(line.substr(std::min(kCodeIndent, line.size())))});
  }
  return end;
}

std::size_t BlockReader::ReadTable(Lines lines, const Surroundings& around) {
  TextBlock& block = Add(Kind::kTable, around);
  std::size_t count = 0;
  for (; count < lines.size() && Trimmed(lines[count]).starts_with('|'); ++count) {
    if (count != 1) block.rows.push_back(ReadTableRow(lines[count]));
  }
  const std::size_t columns = block.rows[0].size();
  for (auto& row : block.rows) row.resize(columns);
  return count;
}

std::size_t BlockReader::ReadQuote(Lines lines, Surroundings around) {
  std::vector<std::string> inner;
  while (inner.size() < lines.size()) {
    const Lines rest = lines.subspan(inner.size());
    std::string line = Trimmed(rest[0]);
    if (!line.starts_with('>') && EndsParagraph(rest)) break;
    if (line.starts_with('>')) line.erase(0, line.starts_with("> ") ? 2 : 1);
    inner.push_back(std::move(line));
  }
  around.quoted = true;
  ++around.nested;
  Read(inner, around);
  return inner.size();
}

// An entry goes on as far as lines are indented, and through the lines of its last paragraph.
std::size_t BlockReader::ReadEntry(Lines lines, Surroundings around) {
  const Marker marker = MarkerOf(lines[0]);
  std::vector<std::string> inner{lines[0].substr(marker.width)};
  while (inner.size() < lines.size()) {
    const Lines rest = lines.subspan(inner.size());
    const bool belongs = IsEmpty(rest[0]) || Indent(rest[0]) >= marker.width ||
                         (!EndsParagraph(rest) && !IsEmpty(inner.back()));
    if (!belongs) break;
    inner.push_back(rest[0].substr(std::min(marker.width, Indent(rest[0]))));
  }
  ++around.depth;
  ++around.nested;
  const std::size_t first = blocks_.size();
  if (IsEmpty(inner[0]) || Indent(inner[0]) >= kCodeIndent || IsFence(inner[0])) {
    AddParagraph({}, around);
  }
  Read(inner, around);
  const bool begins = blocks_.size() > first && blocks_[first].kind == Kind::kParagraph;
  if (begins) blocks_[first].marker = marker.shown;
  return inner.size();
}

std::size_t BlockReader::ReadParagraph(Lines lines, const Surroundings& around) {
  std::string text = Trimmed(lines[0]);
  std::size_t count = 1;
  for (; count < lines.size() && !EndsParagraph(lines.subspan(count)); ++count) {
    text += ' ' + Trimmed(lines[count]);
  }
  const std::vector<TextRun> pictures = ReadPictures(text);
  if (pictures.empty()) {
    AddParagraph(ReadRuns(text), around);
  } else {
    AddPictures(pictures, around);
  }
  return count;
}

void BlockReader::AddPictures(const std::vector<TextRun>& pictures, const Surroundings& around) {
  for (const TextRun& picture : pictures) {
    TextBlock& block = Add(Kind::kPicture, around);
    block.target = picture.target;
    TextRun caption;
    caption.text = picture.text;
    block.rows.push_back({{{caption}}});
  }
}

// ---- The page -----------------------------------------------------------------------------------

void SetAnchors(std::vector<TextBlock>& blocks) {
  std::map<std::string, int> seen;
  for (TextBlock& block : blocks) {
    if (block.kind != Kind::kHeading) continue;
    block.target = AnchorOf(block.rows[0][0].Text());
    const int before = seen[block.target]++;
    if (before > 0) block.target += "-" + std::to_string(before);
  }
}

void SetPlain(MarkdownPage& page) {
  for (TextBlock& block : page.blocks) {
    for (auto& row : block.rows) {
      if (!block.marker.empty()) page.plain += block.marker + ' ';
      for (TextCell& cell : row) {
        if (&cell != row.data()) page.plain += '\t';
        cell.place = page.plain.size();
        page.plain += cell.Text();
      }
      page.plain += '\n';
    }
  }
  if (!page.plain.empty()) page.plain.pop_back();
}

}  // namespace

std::string TextCell::Text() const {
  std::string text;
  for (const TextRun& run : runs) text += run.text;
  return text;
}

MarkdownPage ReadMarkdown(std::string_view source) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (source.starts_with(kByteOrderMark)) source.remove_prefix(kByteOrderMark.size());
  BlockReader reader;
  reader.Read(SplitLines(source), {});
  MarkdownPage page;
  page.blocks = reader.Take();
  SetAnchors(page.blocks);
  SetPlain(page);
  return page;
}

std::string AnchorOf(std::string_view heading) {
  std::string anchor;
  for (const char letter : heading) {
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == ' ') {
      anchor += '-';
    } else if (byte >= 0x80 || std::isalnum(byte) != 0 || letter == '-' || letter == '_') {
      anchor += static_cast<char>(std::tolower(byte));
    }
  }
  return anchor;
}

}  // namespace ormel
