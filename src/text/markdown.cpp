#include "text/markdown.h"

#include <md4c.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <utility>

namespace ormel {
namespace {

constexpr int kDeepest = 8;  // lists within each other that are told apart

using Kind = TextBlock::Kind;

std::string TextOf(const MD_ATTRIBUTE& attribute) { return {attribute.text, attribute.size}; }

// Builds the page out of what the reader of Markdown meets, first to last.
class PageBuilder {
 public:
  void Enter(MD_BLOCKTYPE type, const void* detail);
  void Leave(MD_BLOCKTYPE type);
  void Enter(MD_SPANTYPE type, const void* detail);
  void Leave(MD_SPANTYPE type);
  void Add(MD_TEXTTYPE type, std::string_view text);
  std::vector<TextBlock> Take() { return std::move(blocks_); }

 private:
  struct List {
    bool ordered = false;
    unsigned next = 0;
    char delimiter = '.';
  };

  TextBlock& Open(Kind kind);
  void Close();
  void CloseParagraph();
  void CloseCode();
  void SpendMarker();
  void EnterEntry();
  void EnterLink(std::string target);
  void LeaveLink();
  void Append(std::string_view text);

  std::vector<TextBlock> blocks_;
  bool isOpen_ = false;  // the last block takes text
  std::vector<List> lists_;
  std::optional<std::string> marker_;  // of an entry that has no block yet
  int quotes_ = 0;
  TextRun look_;  // of the text that comes next
  int bold_ = 0;
  int italic_ = 0;
  std::string web_;      // the address of the link to the web that is read
  std::string webText_;  // what stands for it
  int pictureDepth_ = 0;
  std::vector<TextRun> pictures_;  // of the paragraph that is read
  bool onlyPictures_ = true;
};

TextBlock& PageBuilder::Open(Kind kind) {
  Close();
  if (kind != Kind::kParagraph) SpendMarker();
  TextBlock& block = blocks_.emplace_back();
  block.kind = kind;
  block.depth = std::min(static_cast<int>(lists_.size()), kDeepest);
  block.quoted = quotes_ > 0;
  block.marker = marker_.value_or("");
  marker_.reset();
  isOpen_ = true;
  pictures_.clear();
  onlyPictures_ = true;
  if (kind != Kind::kTable) block.rows.emplace_back(1);
  return block;
}

// An entry that does not begin with a paragraph shows its marker on a line of its own.
void PageBuilder::SpendMarker() {
  if (!marker_) return;
  Open(Kind::kParagraph);
  Close();
}

void PageBuilder::Close() {
  if (!isOpen_) return;
  isOpen_ = false;
  if (blocks_.back().kind == Kind::kParagraph) CloseParagraph();
  if (blocks_.back().kind == Kind::kCode) CloseCode();
}

// A paragraph of nothing but pictures shows them one below the other.
void PageBuilder::CloseParagraph() {
  if (!pictures_.empty() && onlyPictures_) {
    TextBlock like = std::move(blocks_.back());
    blocks_.pop_back();
    like.kind = Kind::kPicture;
    for (TextRun& picture : pictures_) {
      like.target = std::exchange(picture.target, {});
      like.rows = {{{{picture}}}};
      blocks_.push_back(like);
    }
  }
}

// Code comes in one piece with its line ends, the last line's included.
void PageBuilder::CloseCode() {
  TextBlock& block = blocks_.back();
  const std::string text = block.rows[0][0].Text();
  block.rows.clear();
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    TextRun line;
    line.text = text.substr(start, end - start);
    line.code = true;
    block.rows.push_back({{{std::move(line)}}});
    start = end + 1;
  }
}

void PageBuilder::Enter(MD_BLOCKTYPE type, const void* detail) {
  switch (type) {
    case MD_BLOCK_QUOTE:
      Close();
      SpendMarker();
      ++quotes_;
      break;
    case MD_BLOCK_UL:
      lists_.push_back({});
      break;
    case MD_BLOCK_OL: {
      const auto& list = *static_cast<const MD_BLOCK_OL_DETAIL*>(detail);
      lists_.push_back({true, list.start, list.mark_delimiter});
      break;
    }
    case MD_BLOCK_LI:
      EnterEntry();
      break;
    case MD_BLOCK_H:
      Open(Kind::kHeading).level =
          static_cast<int>(static_cast<const MD_BLOCK_H_DETAIL*>(detail)->level);
      break;
    case MD_BLOCK_CODE:
      Open(Kind::kCode);
      break;
    case MD_BLOCK_P:
      Open(Kind::kParagraph);
      break;
    case MD_BLOCK_TABLE:
      Open(Kind::kTable);
      break;
    case MD_BLOCK_TR:
      blocks_.back().rows.emplace_back();
      break;
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
      blocks_.back().rows.back().emplace_back();
      break;
    default:
      break;
  }
}

void PageBuilder::EnterEntry() {
  Close();
  SpendMarker();
  List& list = lists_.back();
  marker_ = list.ordered ? std::to_string(list.next++) + list.delimiter : "\u2022";
}

void PageBuilder::Leave(MD_BLOCKTYPE type) {
  switch (type) {
    case MD_BLOCK_QUOTE:
      Close();
      --quotes_;
      break;
    case MD_BLOCK_UL:
    case MD_BLOCK_OL:
      lists_.pop_back();
      break;
    case MD_BLOCK_LI:
      Close();
      SpendMarker();
      break;
    case MD_BLOCK_H:
    case MD_BLOCK_CODE:
    case MD_BLOCK_P:
    case MD_BLOCK_TABLE:
      Close();
      break;
    default:
      break;
  }
}

void PageBuilder::Enter(MD_SPANTYPE type, const void* detail) {
  if (type == MD_SPAN_EM) ++italic_;
  if (type == MD_SPAN_STRONG) ++bold_;
  if (type == MD_SPAN_CODE) look_.code = true;
  if (type == MD_SPAN_A) EnterLink(TextOf(static_cast<const MD_SPAN_A_DETAIL*>(detail)->href));
  if (type != MD_SPAN_IMG || pictureDepth_++ > 0) return;
  TextRun& picture = pictures_.emplace_back();
  picture.target = TextOf(static_cast<const MD_SPAN_IMG_DETAIL*>(detail)->src);
}

void PageBuilder::Leave(MD_SPANTYPE type) {
  if (type == MD_SPAN_EM) --italic_;
  if (type == MD_SPAN_STRONG) --bold_;
  if (type == MD_SPAN_CODE) look_.code = false;
  if (type == MD_SPAN_IMG) --pictureDepth_;
  if (type == MD_SPAN_A) LeaveLink();
}

// Nothing is fetched: the address of a link to the web stands behind its text, and is no link.
void PageBuilder::EnterLink(std::string target) {
  const bool isWeb = target.starts_with("http:") || target.starts_with("https:");
  (isWeb ? web_ : look_.target) = std::move(target);
}

void PageBuilder::LeaveLink() {
  look_.target.clear();
  const std::string web = std::exchange(web_, {});
  const std::string text = std::exchange(webText_, {});
  if (text != web) Append(" (" + web + ")");
}

void PageBuilder::Append(std::string_view text) {
  if (!isOpen_) Open(Kind::kParagraph);  // of a list whose entries stand close together
  look_.bold = bold_ > 0;
  look_.italic = italic_ > 0;
  std::vector<TextRun>& runs = blocks_.back().rows.back().back().runs;
  const auto looksAlike = [this](const TextRun& run) {
    return run.bold == look_.bold && run.italic == look_.italic && run.code == look_.code &&
           run.target == look_.target;
  };
  if (runs.empty() || !looksAlike(runs.back())) runs.push_back(look_);
  runs.back().text += text;
}

void PageBuilder::Add(MD_TEXTTYPE type, std::string_view text) {
  if (type == MD_TEXT_BR || type == MD_TEXT_SOFTBR) text = " ";
  if (type == MD_TEXT_NULLCHAR) text = "\uFFFD";
  Append(text);
  if (!web_.empty()) webText_ += text;
  if (pictureDepth_ > 0) {
    pictures_.back().text += text;
  } else if (text != " ") {
    onlyPictures_ = false;
  }
}

// Reads the source and calls the builder; what stops it, as a lack of memory, ends the page there.
void Read(std::string_view source, PageBuilder& builder) {
  MD_PARSER parser{};
  parser.flags = MD_FLAG_TABLES | MD_FLAG_NOHTML;
  parser.enter_block = [](MD_BLOCKTYPE type, void* detail, void* page) {
    static_cast<PageBuilder*>(page)->Enter(type, detail);
    return 0;
  };
  parser.leave_block = [](MD_BLOCKTYPE type, void*, void* page) {
    static_cast<PageBuilder*>(page)->Leave(type);
    return 0;
  };
  parser.enter_span = [](MD_SPANTYPE type, void* detail, void* page) {
    static_cast<PageBuilder*>(page)->Enter(type, detail);
    return 0;
  };
  parser.leave_span = [](MD_SPANTYPE type, void*, void* page) {
    static_cast<PageBuilder*>(page)->Leave(type);
    return 0;
  };
  parser.text = [](MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* page) {
    static_cast<PageBuilder*>(page)->Add(type, {text, size});
    return 0;
  };
  md_parse(source.data(), static_cast<MD_SIZE>(source.size()), &parser, &builder);
}

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
  PageBuilder builder;
  Read(source, builder);
  MarkdownPage page;
  page.blocks = builder.Take();
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
