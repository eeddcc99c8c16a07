// Labels, frames and text boxes.
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTextCursor>

#include "ui/qt/qt_view.h"
#include "ui/text_controls.h"

namespace ormel::ui {
namespace {

constexpr int kWrapFrom = 60;    // letters; a longer label is broken into lines
constexpr int kShortText = 12;   // letters
constexpr int kNoLimit = 32767;  // the toolkit's own default

class LabelView final : public ViewOfKind<Label, QLabel> {
 public:
  LabelView(QtWindow& window, Label& control, QWidget* parent)
      : ViewOfKind(window, control, new QLabel(parent)) {
    The().setTextFormat(Qt::PlainText);
    The().setTextInteractionFlags(Qt::NoTextInteraction);
  }

 private:
  void Show() override {
    const std::string& caption = TheControl().Caption();
    The().setText(ToQt(The().buddy() == nullptr ? PlainCaption(caption) : caption));
    The().setWordWrap(caption.size() > kWrapFrom);
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::MouseButtonRelease) {
      Act([](Label& label) { return label.Click(); });
    }
    return View::eventFilter(object, event);
  }
};

class FrameView final : public ViewOfKind<FrameControl, QGroupBox> {
 public:
  FrameView(QtWindow& window, FrameControl& control, QWidget* parent)
      : ViewOfKind(window, control, new QGroupBox(parent)) {}

 private:
  void Show() override { The().setTitle(ToQt(TheControl().Caption())); }
};

class LineView final : public ViewOfKind<TextBox, QLineEdit> {
 public:
  LineView(QtWindow& window, TextBox& control, QWidget* parent)
      : ViewOfKind(window, control, new QLineEdit(parent)) {
    The().setAcceptDrops(false);  // a dropped file goes to the window
    connect(&The(), &QLineEdit::textEdited, this, [this](const QString& text) {
      Act([&](TextBox& box) { return box.Type(FromQt(text)); });
    });
  }

 private:
  // The cursor stays where a person types.
  void Show() override {
    const TextBox& box = TheControl();
    ShowReadOnly(box.ReadOnly());
    ShowLength(box.MaximumLength());
    const QString text = ToQt(box.Text());
    if (The().text() == text) return;
    const int cursor = The().cursorPosition();
    The().setText(text);
    if (The().hasFocus()) The().setCursorPosition(cursor);
  }

  // What cannot be typed into looks like the window around it, and the Tab key passes it by.
  void ShowReadOnly(bool readOnly) {
    if (The().isReadOnly() == readOnly) return;
    The().setReadOnly(readOnly);
    The().setFocusPolicy(readOnly ? Qt::ClickFocus : Qt::StrongFocus);
    QPalette colours;
    if (readOnly) colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    The().setPalette(colours);
  }

  // A box for a short figure is as wide as the figure, every other one takes the width of its row.
  void ShowLength(int length) {
    The().setMaxLength(length > 0 ? length : kNoLimit);
    const bool isShort = length > 0 && length <= kShortText;
    const QFontMetrics letters = The().fontMetrics();
    const int width = letters.horizontalAdvance('0') * (isShort ? std::max(length, 3) : 10);
    The().setMinimumWidth(width + letters.height());
    The().setMaximumWidth(isShort ? width + letters.height() : QWIDGETSIZE_MAX);
  }

  void Entered() override { TheControl().Enter(); }
  void Left() override { TheControl().Leave(); }
};

class PageView final : public ViewOfKind<TextBox, QPlainTextEdit> {
 public:
  PageView(QtWindow& window, TextBox& control, QWidget* parent)
      : ViewOfKind(window, control, new QPlainTextEdit(parent)) {
    The().setAcceptDrops(false);
    The().setTabChangesFocus(true);
    const QFontMetrics letters = The().fontMetrics();
    The().setMinimumSize(letters.averageCharWidth() * 16, letters.height() * 4);
    connect(&The(), &QPlainTextEdit::textChanged, this,
            [this] { Act([&](TextBox& box) { return box.Type(FromQt(The().toPlainText())); }); });
  }

 private:
  void Show() override {
    const TextBox& box = TheControl();
    The().setReadOnly(box.ReadOnly());
    const QString text = ToQt(box.Text());
    if (The().toPlainText() == text) return;
    const int position = The().textCursor().position();
    The().setPlainText(text);
    QTextCursor cursor = The().textCursor();
    cursor.setPosition(std::min(position, static_cast<int>(The().toPlainText().size())));
    The().setTextCursor(cursor);
  }
  void Entered() override { TheControl().Enter(); }
  void Left() override { TheControl().Leave(); }
};

// Whether a text box has one line or many is settled before its window is shown.
View* MakeTextBoxView(QtWindow& window, Control& control, QWidget* parent) {
  const auto* box = dynamic_cast<TextBox*>(&control);
  if (box == nullptr) return nullptr;
  return box->MultiLine() ? TryKind<TextBox, PageView>(window, control, parent)
                          : TryKind<TextBox, LineView>(window, control, parent);
}

}  // namespace

View* MakeTextView(QtWindow& window, Control& control, QWidget* parent) {
  return MakeFirst({TryKind<Label, LabelView>, TryKind<FrameControl, FrameView>, MakeTextBoxView},
                   window, control, parent);
}

}  // namespace ormel::ui
