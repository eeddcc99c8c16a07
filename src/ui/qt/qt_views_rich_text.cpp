// Rich text: the page as a document, its marks, and what is in sight of it.
#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextFrame>
#include <functional>
#include <utility>

#include "ui/qt/qt_rich_document.h"
#include "ui/qt/qt_rich_pictures.h"
#include "ui/qt/qt_view.h"
#include "ui/rich_text.h"

namespace ormel::ui {
namespace {

// The page on the screen. Lines are no longer than can be read; the room beside them stays empty.
class PageBrowser final : public QTextBrowser {
 public:
  explicit PageBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setAcceptDrops(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // the lines stay as wide on every page
    document()->documentLayout()->registerHandler(kPictureObject, &pictures_);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
      if (!steered_ && onScrolled) onScrolled();
    });
  }

  std::function<void()> onScrolled;  // by a person
  std::function<void()> onResized;
  std::function<void()> onRestyled;  // other fonts or colours

  // Scrolls that `act` brings about are not a person's.
  template <class Act>
  void Steer(Act act) {
    const bool before = std::exchange(steered_, true);
    act();
    steered_ = before;
  }

  RichPictures& Pictures() { return pictures_; }

  // The margins that leave the text its width.
  void FitText() {
    const double em = QFontMetricsF(font()).averageCharWidth();
    const double margin = std::max(2 * em, (viewport()->width() - kLetters * em) / 2);
    pictures_.SetRoom(viewport()->width() - 2 * margin - em);
    QTextFrame* root = document()->rootFrame();
    QTextFrameFormat format = root->frameFormat();
    format.setMargin(0);
    format.setLeftMargin(margin);
    format.setRightMargin(margin);
    format.setTopMargin(1.5 * em);
    format.setBottomMargin(3 * em);
    root->setFrameFormat(format);
    document()->markContentsDirty(0, document()->characterCount());  // pictures are measured anew
  }

  QSize sizeHint() const override { return Letters(kLetters + 8, 44); }
  QSize minimumSizeHint() const override { return Letters(36, 10); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    Steer([&] {
      QTextBrowser::resizeEvent(event);
      FitText();
    });
    if (onResized) onResized();
  }

  void changeEvent(QEvent* event) override {
    QTextBrowser::changeEvent(event);
    const bool restyled =
        event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange;
    if (restyled && onRestyled) onRestyled();
  }

 private:
  static constexpr int kLetters = 92;  // to a line

  QSize Letters(int across, int lines) const {
    return {fontMetrics().averageCharWidth() * across, fontMetrics().lineSpacing() * lines};
  }

  RichPictures pictures_;
  bool steered_ = false;
};

class RichTextView final : public ViewOfKind<RichText, PageBrowser> {
 public:
  RichTextView(QtWindow& window, RichText& control, QWidget* parent)
      : ViewOfKind(window, control, new PageBrowser(parent)) {
    The().onResized = [this] {
      if (Subject() != nullptr && shown_.page == TheControl().Changes().page) BringIntoSight();
    };
    The().onRestyled = [this] {
      shown_.page = -1;
      Refresh();
    };
    connect(&The(), &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
      Tell([&](RichText& text) { return text.Follow(FromQt(link.toString())); });
    });
    The().onScrolled = [this] {
      const int position = The().cursorForPosition({The().viewport()->width() / 2, 2}).position();
      const PlacedCell* cell = CellOfPosition(position, cells_);
      Tell([&](RichText& text) { return text.Scroll(cell == nullptr ? 0 : cell->place); });
    };
  }

 private:
  void Show() override {
    const RichText::Versions wanted = TheControl().Changes();
    const RichText::Versions before = shown_;
    if (before.page != wanted.page) The().Steer([&] { ShowPage(); });
    shown_ = wanted;
    if (before.page != wanted.page || before.marks != wanted.marks) ShowMarks();
    if (before.page != wanted.page || before.place != wanted.place) BringIntoSight();
  }

  void ShowPage() {
    The().Pictures().SetFolder(ToQt(TheControl().Folder()));
    The().document()->clear();
    The().document()->setDefaultFont(The().font());
    The().FitText();
    cells_ = FillDocument(*The().document(), TheControl().Page(), The().palette());
  }

  int PositionInDocument(std::size_t place) const {
    return PositionOf(place, TheControl().Page(), cells_);
  }

  void ShowMarks() {
    const RichText& text = TheControl();
    QList<QTextEdit::ExtraSelection> marks;
    for (const TextPlace& place : text.Marks()) {
      const bool isCurrent = static_cast<int>(marks.size()) + 1 == text.CurrentMark();
      QTextEdit::ExtraSelection mark;
      mark.cursor = QTextCursor(The().document());
      mark.cursor.setPosition(PositionInDocument(place.start));
      mark.cursor.setPosition(PositionInDocument(place.start + place.length),
                              QTextCursor::KeepAnchor);
      mark.format.setBackground(isCurrent ? QColor(255, 150, 50) : QColor(255, 235, 120));
      mark.format.setForeground(Qt::black);
      marks.append(mark);
    }
    The().setExtraSelections(marks);
  }

  // A mark comes into the upper third unless it is seen already; any other line to the top.
  void BringIntoSight() {
    const RichText& text = TheControl();
    const auto current = static_cast<std::size_t>(text.CurrentMark());
    const bool isMark = current > 0 && text.Marks()[current - 1].start == text.Place();
    const PlacedCell* cell = CellOfPlace(text.Place(), cells_);
    QTextCursor cursor(The().document());
    if (cell != nullptr)
      cursor.setPosition(isMark ? PositionInDocument(text.Place()) : cell->begin);
    const QRect line = The().cursorRect(cursor);
    const int height = The().viewport()->height();
    if (isMark && line.top() >= 0 && line.bottom() < height) return;
    const int above = isMark ? height / 3 : The().fontMetrics().lineSpacing() / 2;
    QScrollBar& bar = *The().verticalScrollBar();
    The().Steer([&] { bar.setValue(text.Place() == 0 ? 0 : bar.value() + line.top() - above); });
  }

  std::vector<PlacedCell> cells_;
  RichText::Versions shown_{-1, -1, -1};
};

}  // namespace

View* MakeRichTextView(QtWindow& window, Control& control, QWidget* parent) {
  return TryKind<RichText, RichTextView>(window, control, parent);
}

}  // namespace ormel::ui
