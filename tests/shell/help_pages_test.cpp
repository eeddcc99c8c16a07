#include "shell/help_pages.h"

#include <gtest/gtest.h>

#include <set>

#include "shell/help_topics.h"
#include "shell/help_window.h"
#include "shell/program_folder.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

// A guide of three pages that is put together in each test's folder.
class Help : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.Write("guide.md", "# Guide\n\n- [Maps](maps.md)\n- [A](a.md#two)\n");
    folder.Write("a.md", "# Apples\n\n## One\n\nA red **Scale Weights**.\n\n## Two\n\ngreen\n");
    folder.Write(
        "maps.md",
        "# Maps\n\nA map is red.\n\n## Red maps\n\n| A | B |\n|---|---|\n| green | **Save** |\n\n"
        "Leads [on](a.md#one), [nowhere](a.md#three), [out](../out.md), [up](#maps).\n");
  }
  HelpPages Read() const {
    Outcome<HelpPages> read = HelpPages::Read(folder.Path());
    EXPECT_TRUE(read.Ok()) << read.Text();
    return read.Ok() ? std::move(read.Value()) : HelpPages();
  }
  // The pages in their order.
  static std::string Titles(const HelpPages& help) {
    std::string titles;
    for (const HelpPage& page : help.Pages()) titles += page.title + "; ";
    return titles;
  }
  // What a search finds: "page/heading/places/context;".
  static std::string Found(const HelpPages& help, const std::string& query) {
    std::string all;
    for (const HelpFound& one : help.Search(query).found) {
      all +=
          one.page + "/" + one.heading + "/" + std::to_string(one.places) + "/" + one.context + ";";
    }
    return all;
  }

  TemporaryFolder folder;
};

TEST_F(Help, PagesFollowTheLinksOfTheStartPage) {
  folder.Write("Z.md", "no heading");
  folder.Write("notes.txt", "# no page");
  EXPECT_EQ(Titles(Read()), "Guide; Maps; Apples; Z.md; ");
  fs::remove(folder / "guide.md");
  EXPECT_EQ(Titles(Read()), "Z.md; Apples; Maps; ");
}

TEST_F(Help, LinksLeadToHeadingsAndDeadOnesAreText) {
  const HelpPages help = Read();
  const std::string& apples = help.Pages()[2].text.plain;
  EXPECT_EQ(help.Follow(1, "a.md#two"), (HelpPlace{2, apples.find("Two")}));
  EXPECT_EQ(help.Follow(1, "#red-maps"),
            (HelpPlace{1, help.Pages()[1].text.plain.find("Red maps")}));
  for (const char* target : {"", "b.md", "a.md#three", "../a.md", "#"}) {
    EXPECT_EQ(help.Follow(2, target).has_value(), *target == '#') << target;
  }
  std::string links;
  ForEachRun(help.Pages()[1].text, [&](const TextRun& run, std::size_t) {
    if (!run.target.empty()) links += run.text + " " + run.target + ";";
  });
  EXPECT_EQ(links, "on a.md#one;up #maps;");
}

TEST_F(Help, TheSearchFindsSectionsThatHoldAllWords) {
  const HelpPages help = Read();
  EXPECT_EQ(Found(help, "RED map"), "Maps/Red maps/2/A B;Maps/Maps/3/A map is red.;");
  EXPECT_EQ(Found(help, "\"is red\""), "Maps/Maps/1/A map is red.;");
  EXPECT_EQ(Found(help, "red green"),
            "Maps/Red maps/2/green Save;Apples/Apples/2/A red Scale Weights.;")
      << "on the second page they stand in different sections";
  EXPECT_EQ(Found(help, "save"), "Maps/Red maps/1/green Save;");
  for (const char* nothing : {"", "e", "\"red is\"", "blue"}) EXPECT_EQ(Found(help, nothing), "");
  const HelpSearch search = help.Search("a");
  EXPECT_TRUE(search.wanted.empty());
  EXPECT_EQ(help.Search("red map").places, 5);
}

TEST_F(Help, TheContextOfAFindIsShort) {
  const std::string words = "one two three four five six seven eight nine ten ";
  folder.Write("maps.md", "# Maps\n\n" + words + words + "needle " + words + words);
  EXPECT_EQ(
      Found(Read(), "needle"),
      "Maps/Maps/1/\u2026 seven eight nine ten needle one two three four five six seven eight "
      "\u2026;");
  folder.Write("maps.md", "# Maps\n\n" + std::string(200, 'x') + "needle" + std::string(200, 'y'));
  EXPECT_EQ(Found(Read(), "needle"), "Maps/Maps/1/\u2026 needle \u2026;");
}

TEST_F(Help, TheIndexHoldsListedWordsAndWhatButtonsSay) {
  folder.Write("index.md",
               "# Index\n\n- save: [a](a.md#two), [b](b.md)\n- Cell: [m](maps.md), [a](a.md)\n");
  const HelpPages help = Read();
  std::string terms;
  for (const HelpTerm& term : help.Index()) {
    const HelpPage& page = help.Pages()[term.place.page];
    terms += term.text + " -> " + page.HeadingAt(term.place.start)->text + "; ";
  }
  EXPECT_EQ(terms,
            "Cell: Maps -> Maps; Cell: Apples -> Apples; Save: Maps -> Red maps; "
            "save: Apples -> Two; Scale Weights -> One; ");
  EXPECT_EQ(Titles(help), "Guide; Maps; Apples; ");
}

TEST_F(Help, DamagedPagesSayWhatIsWrongAndAMissingGuideToo) {
  fs::create_directory(folder / "folder.md");
  folder.Write("large.md", std::string(1024 * 1024 + 1, 'x'));
  folder.Write("a.md", std::string("\0\xFF\xC3# \x80\n[a](\xFF", 12));
  const HelpPages help = Read();
  EXPECT_EQ(Titles(help), "Guide; Maps; a.md; folder.md; large.md; ");
  EXPECT_EQ(help.Pages()[3].text.plain,
            "folder.md\nThis page cannot be read: the file cannot be opened.");
  EXPECT_EQ(help.Pages()[4].text.plain,
            "large.md\nThis page cannot be read: the file is larger than 1 MiB.");
  std::ostringstream log;
  ui::HeadlessDesktop desktop(log);
  auto& window = desktop.Show(std::make_unique<FrmHelp>(desktop, "/no/guide"));
  window.ShowContents();
  window.ShowAbout("frmView");
  EXPECT_EQ(window.docPage.Printed(), "Help\n/no/guide: the guide is not there");
  EXPECT_FALSE(window.txtSearch.Set("map").Ok());
  EXPECT_TRUE(window.PressKey("Escape"));
  EXPECT_FALSE(desktop.IsOpen(window));
}

// The guide itself.
TEST(Guide, EveryTopicAndEveryLinkLeadsSomewhere) {
  const fs::path folder = GuideFolder();
  const Outcome<HelpPages> read = HelpPages::Read(folder);
  ASSERT_TRUE(read.Ok());
  const HelpPages& help = read.Value();
  for (const HelpTopic& topic : HelpTopics()) {
    EXPECT_TRUE(help.Find(topic.file, topic.anchor)) << topic.window;
  }
  EXPECT_EQ(help.Pages()[0].file, "guide.md");
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".md") continue;
    const std::string file = entry.path().filename();
    const auto page = help.Find(file);
    EXPECT_EQ(page.has_value(), file != "index.md") << file;
    const MarkdownPage text = ReadMarkdown(testing::ReadText(entry.path()));
    for (const TextBlock& block : text.blocks) {
      const bool isPicture = block.kind == TextBlock::Kind::kPicture;
      EXPECT_TRUE(!isPicture || fs::exists(folder / block.target)) << file << ": " << block.target;
    }
    ForEachRun(text, [&](const TextRun& run, std::size_t) {
      const bool leads = help.Follow(page ? page->page : 0, run.target).has_value();
      EXPECT_TRUE(run.target.empty() || leads || fs::exists(folder / run.target))
          << file << ": " << run.target;
    });
  }
}

TEST(Guide, TheStartPageLeadsToAllPages) {
  const HelpPages help = std::move(HelpPages::Read(GuideFolder()).Value());
  std::set<std::string> linked{"guide.md"};
  ForEachRun(help.Pages()[0].text,
             [&](const TextRun& run, std::size_t) { linked.insert(run.target); });
  for (const HelpPage& page : help.Pages()) EXPECT_EQ(linked.count(page.file), 1U) << page.file;
}

}  // namespace
}  // namespace ormel
