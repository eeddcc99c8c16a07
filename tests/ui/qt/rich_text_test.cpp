// Rich text: the document stands where the plain text says, in both directions.
#include "ui/rich_text.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <filesystem>

#include "support/temporary_folder.h"
#include "ui/qt/qt_rich_document.h"
#include "ui/qt/screen_fixture.h"

namespace ormel::ui {
namespace {

namespace fs = std::filesystem;
using ormel::testing::ReadText;

class FrmPage final : public Window {
 public:
  FrmPage() : Window("frmPage", "Page") {
    SetLayout(Column{txtNote, docPage});
    docPage.onLink = [this](const std::string& target) { links.push_back(target); };
    docPage.onChange = [this] { ++scrolls; };
  }
  TextBox txtNote{*this, "txtNote"};
  RichText docPage{*this, "docPage"};
  Log links;
  int scrolls = 0;
};

class RichTextTest : public ScreenTest {
 protected:
  void Show(const std::string& source) {
    w.docPage.SetPage(ReadMarkdown(source), folder);
    Settle();
  }
  // A link, forty sections with a table each, and a picture at the end.
  static std::string LongPage() {
    std::string page = "# Long\n\nBegins [here](a.md#b).\n\n";
    for (int i = 1; i <= 40; ++i) {
      page += "## Part " + std::to_string(i) + "\n\n- a *Needle*\n- **needles** " +
              std::string(200, 'x') + " end\n\n| A | B |\n|---|---|\n| c | needle |\n\n";
    }
    return page + "![A wide picture](pictures/generator.png)\n";
  }
  QTextBrowser& Browser() { return On<QTextBrowser>(w.docPage); }
  int Top() { return Browser().verticalScrollBar()->value(); }
  // Where the line of a place is on the screen.
  QRect Seen(std::size_t place) {
    QTextDocument again;
    const auto cells = FillDocument(again, w.docPage.Page(), {});
    QTextCursor cursor(Browser().document());
    cursor.setPosition(CellOfPlace(place, cells)->begin);
    return Browser().cursorRect(cursor);
  }
  bool InSight(std::size_t place) {
    return Browser().viewport()->rect().contains(Seen(place).center());
  }

  const fs::path folder = ORMEL_SOURCE_DIR "/docs";
  FrmPage& w = Shown<FrmPage>();
};

TEST_F(RichTextTest, EveryLineOfTheGuideStandsWhereItsPlaceSays) {
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() != ".md") continue;
    const MarkdownPage page = ReadMarkdown(ReadText(entry.path()));
    QTextDocument document;
    for (const PlacedCell& cell : FillDocument(document, page, {})) {
      QTextCursor cursor(&document);
      cursor.setPosition(PositionOf(cell.place, page, {cell}));
      cursor.setPosition(PositionOf(cell.place + cell.size, page, {cell}), QTextCursor::KeepAnchor);
      EXPECT_EQ(cursor.selectedText().toStdString(), page.plain.substr(cell.place, cell.size));
    }
  }
}

TEST_F(RichTextTest, BrokenPagesAreShown) {
  const std::string source = ReadText(folder / "nonlinear-models.md");
  const std::string signs[] = {"\xFF",         std::string(1, '\0'), "\xE2\x80\xA9",
                               "\xEF\xB7\x90", "\xEF\xBF\xBC",       "|",
                               "\n> - ```"};
  for (std::size_t at = 0; at < source.size(); at += 397) {
    std::string broken = source;
    broken.replace(at, 1, signs[at % std::size(signs)]);
    w.docPage.SetPage(ReadMarkdown(broken), "/no/pictures");
    w.docPage.Mark({"e"});
    Settle();
    EXPECT_EQ(Browser().extraSelections().size(), w.docPage.MarkedCount());
  }
}

TEST_F(RichTextTest, HeadingsAndMarksComeIntoSight) {
  Show(LongPage());
  EXPECT_EQ(Top(), 0);
  EXPECT_FALSE(w.docPage.ScrollToHeading("nowhere"));
  ASSERT_TRUE(w.docPage.ScrollToHeading("part-30"));
  Settle();
  const QRect heading = Seen(w.docPage.Place());
  EXPECT_TRUE(heading.top() >= 0 && heading.top() < 2 * heading.height());
  w.docPage.Mark({"needle"});
  ASSERT_EQ(w.docPage.MarkedCount(), 3 * 40);
  w.docPage.ShowMark(w.docPage.MarkedCount());
  Settle();
  EXPECT_TRUE(InSight(w.docPage.Marks().back().start));
  const int before = Top();
  w.docPage.ShowMark(1);
  Settle();
  EXPECT_TRUE(InSight(w.docPage.Marks().front().start) && Top() < before);
  const QList<QTextEdit::ExtraSelection> marks = Browser().extraSelections();
  ASSERT_EQ(marks.size(), w.docPage.MarkedCount());
  for (const QTextEdit::ExtraSelection& mark : marks) {
    EXPECT_EQ(mark.cursor.selectedText().toLower(), "needle");
  }
  EXPECT_NE(marks[0].format.background(), marks[1].format.background());
  EXPECT_TRUE(w.scrolls == 0 && w.links.empty()) << "nobody but the program scrolled";
}

TEST_F(RichTextTest, APersonScrollsAndFollowsLinks) {
  TopLevel(w)->resize(600, 400);
  Show(LongPage());
  Browser().verticalScrollBar()->setValue(Browser().verticalScrollBar()->maximum());
  Settle();
  EXPECT_EQ(w.scrolls, 1);
  const std::size_t place = w.docPage.Place();
  EXPECT_TRUE(Seen(place).top() <= 2 && Seen(place).bottom() >= 0);
  for (const int width : {400, 780}) {
    TopLevel(w)->resize(width, 400);
    Settle();
    EXPECT_EQ(w.docPage.Place(), place) << "another width is no scrolling";
    EXPECT_TRUE(InSight(place)) << width;
  }
  w.docPage.ScrollTo(0);
  Settle();
  Browser().setFocus();
  QTest::keyClick(&Browser(), Qt::Key_Tab);
  QTest::keyClick(&Browser(), Qt::Key_Return);
  EXPECT_EQ(w.links, (Log{"a.md#b"}));
}

TEST_F(RichTextTest, PicturesAreNoWiderThanThePage) {
  for (const int width : {780, 300}) {
    Show(LongPage());
    TopLevel(w)->resize(width, 400);
    Settle();
    EXPECT_EQ(Browser().horizontalScrollBar()->maximum(), 0) << width;
  }
  const double before = Browser().document()->size().height();
  w.docPage.SetPage(w.docPage.Page(), "/no/pictures");
  Settle();
  EXPECT_LT(Browser().document()->size().height(), before - 100);
}

}  // namespace
}  // namespace ormel::ui
