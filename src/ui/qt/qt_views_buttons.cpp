// Buttons, options, check boxes and colour swatches.
#include <QAbstractButton>
#include <QCheckBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QStyleOptionFrame>

#include "ui/buttons.h"
#include "ui/picture.h"
#include "ui/qt/qt_view.h"

namespace ormel::ui {
namespace {

constexpr int kShortCaption = 3;  // letters; "..." beside a text box is no wider than it must be

class PushButtonView final : public ViewOfKind<Button, QPushButton> {
 public:
  PushButtonView(QtWindow& window, Button& control, QWidget* parent)
      : ViewOfKind(window, control, new QPushButton(parent)) {
    The().setAutoDefault(true);  // Return presses the button that has the focus
    connect(&The(), &QPushButton::clicked, this, [this] { Act(&Button::Click); });
  }

 private:
  void Show() override {
    const QString caption = ToQt(TheControl().Caption());
    The().setDefault(TheControl().IsDefault());
    if (The().text() == caption) return;
    The().setText(caption);
    const bool isShort = caption.size() <= kShortCaption;
    const QFontMetrics letters = The().fontMetrics();
    The().setMaximumWidth(isShort ? letters.horizontalAdvance(caption) + 2 * letters.height()
                                  : QWIDGETSIZE_MAX);
  }
};

class CheckBoxView final : public ViewOfKind<CheckBox, QCheckBox> {
 public:
  CheckBoxView(QtWindow& window, CheckBox& control, QWidget* parent)
      : ViewOfKind(window, control, new QCheckBox(parent)) {
    connect(&The(), &QCheckBox::clicked, this, [this] { Act(&CheckBox::Click); });
  }

 private:
  void Show() override {
    The().setText(ToQt(TheControl().Caption()));
    The().setChecked(TheControl().Checked());
  }
};

// Which options exclude each other is the program's to say: the toolkit would take all of one box.
class OptionView final : public ViewOfKind<OptionButton, QRadioButton> {
 public:
  OptionView(QtWindow& window, OptionButton& control, QWidget* parent)
      : ViewOfKind(window, control, new QRadioButton(parent)) {
    The().setAutoExclusive(false);
    connect(&The(), &QRadioButton::clicked, this, [this] { Act(&OptionButton::Click); });
  }

 private:
  void Show() override {
    The().setText(ToQt(TheControl().Caption()));
    The().setChecked(TheControl().Chosen());
  }

  // The arrow keys choose the neighbour in the set.
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && Subject() != nullptr) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
      const bool on = key == Qt::Key_Down || key == Qt::Key_Right;
      if ((back || on) && GoToNeighbour(on)) return true;
    }
    return View::eventFilter(object, event);
  }

  bool GoToNeighbour(bool on) {
    const QWidget* next = &The();
    do {
      next = on ? next->nextInFocusChain() : next->previousInFocusChain();
      auto* neighbour = qobject_cast<QRadioButton*>(const_cast<QWidget*>(next));
      if (neighbour == nullptr || neighbour == &The() || !neighbour->isVisible() ||
          !neighbour->isEnabled()) {
        continue;
      }
      const auto* view = neighbour->findChild<View*>(QString(), Qt::FindDirectChildrenOnly);
      const auto* option = dynamic_cast<const OptionButton*>(view->Subject());
      if (option == nullptr || !option->Excludes(TheControl())) continue;
      neighbour->setFocus(on ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      neighbour->click();
      return true;
    } while (next != &The());
    return false;
  }
};

// A button that is its colour.
class SwatchButton final : public QAbstractButton {
 public:
  using QAbstractButton::QAbstractButton;

  void SetColour(const QColor& colour) {
    colour_ = colour;
    update();
  }
  QSize sizeHint() const override {
    const int line = fontMetrics().height();
    return {3 * line, line + line / 2};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    QColor colour = colour_;
    if (!isEnabled()) colour.setAlpha(80);
    const QRect box = rect().adjusted(3, 3, -4, -4);
    painter.setBrush(isDown() ? colour.darker(120) : colour);
    painter.setPen(palette().color(underMouse() ? QPalette::Text : QPalette::Dark));
    painter.drawRect(box);
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
      click();
    } else {
      QAbstractButton::keyPressEvent(event);
    }
  }

 private:
  QColor colour_;
};

class SwatchView final : public ViewOfKind<ColourSwatch, SwatchButton> {
 public:
  SwatchView(QtWindow& window, ColourSwatch& control, QWidget* parent)
      : ViewOfKind(window, control, new SwatchButton(parent)) {
    The().setFocusPolicy(Qt::StrongFocus);
    The().setAttribute(Qt::WA_Hover);
    The().setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&The(), &SwatchButton::clicked, this, [this] { Act(&ColourSwatch::Click); });
  }

 private:
  void Show() override {
    const Colour colour = TheControl().Value();
    The().SetColour(QColor(Red(colour), Green(colour), Blue(colour)));
  }
};

}  // namespace

View* MakeButtonView(QtWindow& window, Control& control, QWidget* parent) {
  return MakeFirst({TryKind<Button, PushButtonView>, TryKind<CheckBox, CheckBoxView>,
                    TryKind<OptionButton, OptionView>, TryKind<ColourSwatch, SwatchView>},
                   window, control, parent);
}

}  // namespace ormel::ui
