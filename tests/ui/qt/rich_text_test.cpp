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
  // A page of the guide.
  void Show(const std::string& file) {
    w.docPage.SetPage(ReadMarkdown(ReadText(folder / file)), folder);
    Settle();
  }
  QTextBrowser& Browser() { return On<QTextBrowser>(w.docPage); }
  int Top() { return Browser().verticalScrollBar()->value(); }
  // Where the line of a place is on the screen.
  QRect Seen(std::size_t place) {
    QTextDocument again;
    const auto cells = FillDocument(again, w.docPage.Page(), {});
    QTextCursor cursor(Browser().document());
    cursor.setPosition(PositionOf(place, w.docPage.Page(), cells));
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
  Show("viewer.md");
  EXPECT_EQ(Top(), 0);
  EXPECT_FALSE(w.docPage.ScrollToHeading("nowhere"));
  ASSERT_TRUE(w.docPage.ScrollToHeading("measuring"));
  Settle();
  const QRect heading = Seen(w.docPage.Place());
  EXPECT_TRUE(heading.top() >= 0 && heading.top() < 2 * heading.height());
  w.docPage.Mark({"zoom"});
  ASSERT_GT(w.docPage.MarkedCount(), 10);
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
    EXPECT_EQ(mark.cursor.selectedText().toLower(), "zoom");
  }
  EXPECT_NE(marks[0].format.background(), marks[1].format.background());
  EXPECT_TRUE(w.scrolls == 0 && w.links.empty()) << "nobody but the program scrolled";
}

TEST_F(RichTextTest, APersonScrollsAndFollowsLinks) {
  Show("start.md");
  Browser().verticalScrollBar()->setValue(Browser().verticalScrollBar()->maximum());
  Settle();
  EXPECT_EQ(w.scrolls, 1);
  EXPECT_TRUE(InSight(w.docPage.Place()) || Seen(w.docPage.Place()).bottom() > -40);
  const std::size_t place = w.docPage.Place();
  for (const int width : {400, 1200}) {
    TopLevel(w)->resize(width, 400);
    Settle();
    EXPECT_EQ(w.docPage.Place(), place) << "another width is no scrolling";
    EXPECT_LT(std::abs(Seen(place).top()), 2 * Seen(place).height());
  }
  w.docPage.ScrollTo(0);
  Settle();
  Browser().setFocus();
  QTest::keyClick(&Browser(), Qt::Key_Tab);
  QTest::keyClick(&Browser(), Qt::Key_Return);
  EXPECT_EQ(w.links, (Log{"linear-models.md"}));
}

TEST_F(RichTextTest, PicturesAreNoWiderThanThePage) {
  for (const int width : {300, 1300}) {
    Show("linear-models.md");
    TopLevel(w)->resize(width, 400);
    Settle();
    EXPECT_EQ(Browser().horizontalScrollBar()->maximum(), 0) << width;
  }
  const double before = Browser().document()->size().height();
  w.docPage.SetPage(w.docPage.Page(), "/no/pictures");
  Settle();
  EXPECT_LT(Browser().document()->size().height(), before - 600);
}

}  // namespace
}  // namespace ormel::ui
