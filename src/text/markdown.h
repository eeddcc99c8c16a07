// Pages in Markdown, as the guide of the program is written: headings, paragraphs, lists within
// lists, tables, code, notes (`>`), pictures, links, bold and italic. What else a page may hold is
// taken as text. Any bytes make a page: a mark that is not closed stands for itself, and nothing is
// fetched or run.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ormel {

// A piece of text in one look.
struct TextRun {
  std::string text;
  bool bold = false;
  bool italic = false;
  bool code = false;
  std::string target;  // of a link: "viewer.md#colours"; else empty
};

// A line of text: a paragraph, a heading, a line of code, a cell of a table, a picture's caption.
struct TextCell {
  std::vector<TextRun> runs;
  std::size_t place = 0;  // of its first byte in the plain text of the page

  std::string Text() const;
};

struct TextBlock {
  enum class Kind { kHeading, kParagraph, kCode, kTable, kPicture };

  Kind kind = Kind::kParagraph;
  int level = 0;        // of a heading: 1 to 6
  int depth = 0;        // how many lists it stands in
  bool quoted = false;  // it stands in a note
  std::string marker;   // before the first paragraph of a list's entry: "•" or "2."
  std::string target;   // of a heading its anchor, of a picture its file
  std::vector<std::vector<TextCell>> rows;  // a table's head first; others have one cell a row
};

struct MarkdownPage {
  std::vector<TextBlock> blocks;
  std::string plain;  // without marks: each row on a line of its own, tabs between cells
};

// Reads a page as CommonMark with tables, and without HTML (https://spec.commonmark.org). The
// address of a link to the web stands behind its text, and is no link.
MarkdownPage ReadMarkdown(std::string_view source);

// The name by which links reach a heading: in small letters, blanks as hyphens, and of all other
// ASCII signs hyphens and underscores alone. Within a page a second one of a name gets "-1" behind
// it, a third one "-2".
std::string AnchorOf(std::string_view heading);

// Calls `act(run, place)` with every run of a page, first to last, and the place of its line.
template <class Page, class Act>
void ForEachRun(Page& page, Act act) {
  for (auto& block : page.blocks) {
    for (auto& row : block.rows) {
      for (auto& cell : row) {
        for (auto& run : cell.runs) act(run, cell.place);
      }
    }
  }
}

}  // namespace ormel
