#include "text/markdown.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temporary_folder.h"
#include "text/text_search.h"

namespace ormel {
namespace {

using Texts = std::vector<std::string>;

// The looks and targets of a page's text: [b:bold] [i:italic] [c:code] [target:link].
std::string LooksOf(const MarkdownPage& page) {
  std::string looks;
  ForEachRun(page, [&](const TextRun& run, std::size_t) {
    const std::string look = std::string(run.bold ? "b" : "") + (run.italic ? "i" : "") +
                             (run.code ? "c" : "") + run.target;
    looks += look.empty() ? run.text : "[" + look + ":" + run.text + "]";
  });
  return looks;
}

// The kinds of a page's blocks with what they have beside text: "h2#colours", "p1 2.", "q",
// "!a.png".
std::string BlocksOf(const MarkdownPage& page) {
  std::string kinds;
  for (const TextBlock& block : page.blocks) {
    if (block.quoted) kinds += "q";
    kinds += "hpct!"[static_cast<int>(block.kind)];
    if (block.level > 0) kinds += std::to_string(block.level) + "#";
    if (block.depth > 0) kinds += std::to_string(block.depth);
    kinds += block.target + block.marker + " ";
  }
  return kinds;
}

TEST(Markdown, MarksWithinALineGiveLooks) {
  const std::pair<std::string, std::string> cases[] = {
      {"a **b** *c* `d*e*` _f_", "a [b:b] [i:c] [c:d*e*] [i:f]"},
      {"**a *b* c** ***d***", "[b:a ][bi:b][b: c] [bi:d]"},
      {"[a `b`](c.md#d \"title\") (e)", "[c.md#d:a ][cc.md#d:b] (e)"},
      {"2*s*\xC2\xB2 + 2 * 3 * 4", "2[i:s]\xC2\xB2 + 2 * 3 * 4"},
      {"names_with_lines **not closed", "names_with_lines **not closed"},
      {"\\*a\\* \\[b\\](c) \\d `` a`b ``", "*a* [b](c) \\d [c:a`b]"},
      {"[a](b [c] ![d](e.png) f", "[a](b [c] d f"},
      {"[a](http://b.org/c_d_e) <b>&amp;", "a (http://b.org/c_d_e) <b>&amp;"},
      {"**[Save](a.md)**: `[b](c)`", "[ba.md:Save]: [c:[b](c)]"}};
  for (const auto& [source, looks] : cases) EXPECT_EQ(LooksOf(ReadMarkdown(source)), looks);
}

TEST(Markdown, LinesMakeBlocks) {
  const MarkdownPage page = ReadMarkdown(
      "\xEF\xBB\xBF# From A to `b`\r\n\r\nfirst\nline\n![A "
      "map](p/a.png)\n\n![One](1.png)\n![Two](2.png)\n"
      "## Points\n1. one\n   goes on\n   - inner\n\n   more\n2. two\nlazily\n\n- three\n***\n"
      "> note\n> goes on\n\n    code *a*\n\n      b\ntext\n```sh\nc\n\n# d\n```\n"
      "| a | b \\| c |\n|---|:-:|\n| d |\n| e | f | g |\n\n![Three](3.png)\n\nend\n## Points\n#no "
      "heading");
  EXPECT_EQ(
      BlocksOf(page),
      "h1#from-a-to-b p !1.png !2.png h2#points p11. p2\u2022 p1 p12. p1\u2022 qp c p c t !3.png p "
      "h2#points-1 p ");
  EXPECT_EQ(page.plain,
            "From A to b\nfirst line A map\nOne\nTwo\nPoints\n1. one goes on\n\u2022 inner\nmore\n"
            "2. two lazily\n\u2022 three\nnote goes on\ncode *a*\n\n  b\ntext\nc\n\n# d\n"
            "a\tb | c\nd\t\ne\tf\nThree\nend\nPoints\n#no heading");
  for (const TextBlock& block : page.blocks) {
    for (const auto& row : block.rows) {
      for (const TextCell& cell : row) {
        EXPECT_EQ(page.plain.substr(cell.place, cell.Text().size()), cell.Text());
      }
    }
  }
}

TEST(Markdown, AnchorsAreThoseOfTheWeb) {
  const std::pair<std::string, std::string> cases[] = {
      {"ASCII raster: .asc, .grd, .txt", "ascii-raster-asc-grd-txt"},
      {"Saving, and running as a batch", "saving-and-running-as-a-batch"},
      {"Non-linear_model (2)", "non-linear_model-2"},
      {"Fl\xC3\xA4"
       "che",
       "fl\xC3\xA4"
       "che"},
      {"", ""}};
  for (const auto& [heading, anchor] : cases) EXPECT_EQ(AnchorOf(heading), anchor);
}

TEST(Markdown, AnyBytesMakeAPage) {
  const std::string source = testing::ReadText(ORMEL_SOURCE_DIR "/docs/main-job.md");
  ReadMarkdown("");
  for (std::size_t cut = 0; cut < source.size(); cut += 7) ReadMarkdown(source.substr(0, cut));
  const char signs[] = {'\0', '\n', '|', '`', '*', '[', '!', '(', '>', '#', '-', '\\', '\xFF'};
  for (std::size_t at = 0; at < source.size(); at += 5) {
    std::string broken = source;
    broken[at] = signs[at % sizeof signs];
    ReadMarkdown(broken);
  }
  for (const char* piece :
       {"> ", "- ", "*", "[", "![a](", "`", "| ", "  - a\n", "\\", "**a ", "# "}) {
    std::string page;
    while (page.size() < 100'000) page += piece;
    ReadMarkdown(page);
    EXPECT_TRUE(ReadMarkdown("x " + page).plain.starts_with('x')) << piece;
  }
}

TEST(TextSearch, WordsAndPhrasesAreFoundInAnyCase) {
  EXPECT_EQ(WantedTexts("  map \"weight graph\"cell \"\" "),
            (Texts{"map", "weight graph", "cell"}));
  EXPECT_EQ(WantedTexts("a \"b c"), (Texts{"a", "b c"}));
  const std::string text = "Maps: a MAP of bitmaps";
  std::string found;
  for (const TextPlace& place : FindPlaces(text, Texts{"map", "maps", "", "of"})) {
    found += text.substr(place.start, place.length) + "@" + std::to_string(place.start) + " ";
  }
  EXPECT_EQ(found, "Maps@0 MAP@8 of@12 maps@18 ");
  EXPECT_TRUE(HoldsAll(text, Texts{"BIT", "a m"}));
  EXPECT_FALSE(HoldsAll(text, Texts{"map", "cell"}));
}

}  // namespace
}  // namespace ormel
