// Sliders, scroll bars, spin buttons and progress bars.
#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionSpinBox>
#include <QStylePainter>
#include <cmath>

#include "ui/qt/qt_view.h"
#include "ui/range_controls.h"

namespace ormel::ui {
namespace {

// What sliders and scroll bars share.
template <class C, class W>
class RangeView : public ViewOfKind<C, W> {
 protected:
  RangeView(QtWindow& window, C& control, W* widget) : ViewOfKind<C, W>(window, control, widget) {
    widget->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(widget, &QAbstractSlider::valueChanged, this, [this](int value) {
      this->Act([&](C& range) { return range.MoveTo(value); });
    });
  }

 private:
  void Show() override {
    const C& range = this->TheControl();
    W& widget = this->The();
    widget.setRange(range.Minimum(), range.Maximum());
    widget.setSingleStep(range.SmallStep());
    widget.setPageStep(range.LargeStep());
    widget.setValue(range.Value());
  }
};

class SliderView final : public RangeView<Slider, QSlider> {
 public:
  SliderView(QtWindow& window, Slider& control, QWidget* parent)
      : RangeView(window, control, new QSlider(Qt::Horizontal, parent)) {
    The().setMinimumWidth(The().fontMetrics().averageCharWidth() * 16);
  }
};

class ScrollBarView final : public RangeView<ScrollBar, QScrollBar> {
 public:
  ScrollBarView(QtWindow& window, ScrollBar& control, QWidget* parent)
      : RangeView(window, control,
                  new QScrollBar(control.Vertical() ? Qt::Vertical : Qt::Horizontal, parent)) {
    const int length = The().fontMetrics().height() * 4;
    const bool vertical = control.Vertical();
    if (!vertical) The().setInvertedControls(false);  // else the Right key would go left
    The().setMinimumSize(vertical ? 0 : length, vertical ? length : 0);
    The().setSizePolicy(vertical ? QSizePolicy::Fixed : QSizePolicy::Expanding,
                        vertical ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  }
};

// The arrows of a spin box without its field.
class SpinArrows final : public QAbstractSpinBox {
 public:
  explicit SpinArrows(QWidget* parent) : QAbstractSpinBox(parent) {
    lineEdit()->setReadOnly(true);
    lineEdit()->hide();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }

  std::function<void(int steps)> onStep;

  void SetReach(bool down, bool up) {
    reach_ = (down ? StepDownEnabled : StepNone) | (up ? StepUpEnabled : StepNone);
    update();
  }
  void stepBy(int steps) override { onStep(steps); }
  QSize sizeHint() const override {
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const int height = QAbstractSpinBox::sizeHint().height();
    option.rect.setSize({4 * height, height});
    const QRect arrow =
        style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this);
    return {arrow.width() + 2, height};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  // As the right end of a spin box, whose field lies beyond the left edge.
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    option.rect.setLeft(-height());
    painter.drawComplexControl(QStyle::CC_SpinBox, option);
  }
  StepEnabled stepEnabled() const override { return reach_; }

 private:
  StepEnabled reach_ = StepNone;
};

class SpinView final : public ViewOfKind<SpinButton, SpinArrows> {
 public:
  SpinView(QtWindow& window, SpinButton& control, QWidget* parent)
      : ViewOfKind(window, control, new SpinArrows(parent)) {
    The().onStep = [this](int steps) {
      Act([&](SpinButton& spin) {
        return spin.MoveTo(0LL + spin.Value() + Distance(spin, steps));
      });
    };
  }

 private:
  // The page keys ask for ten steps at once.
  static int Distance(const SpinButton& spin, int steps) {
    const int step = std::abs(steps) > 1 ? spin.LargeStep() : spin.SmallStep();
    return steps > 0 ? step : -step;
  }
  void Show() override {
    const SpinButton& spin = TheControl();
    The().SetReach(spin.Value() > spin.Minimum(), spin.Value() < spin.Maximum());
  }
};

class ProgressView final : public ViewOfKind<ProgressBar, QProgressBar> {
 public:
  ProgressView(QtWindow& window, ProgressBar& control, QWidget* parent)
      : ViewOfKind(window, control, new QProgressBar(parent)) {
    The().setRange(0, 1000);  // finer than percents: a long run is seen to move
  }

 private:
  void Show() override {
    The().setValue(static_cast<int>(std::lround(10 * TheControl().Percent())));
  }
};

}  // namespace

View* MakeRangeView(QtWindow& window, Control& control, QWidget* parent) {
  return MakeFirst({TryKind<Slider, SliderView>, TryKind<ScrollBar, ScrollBarView>,
                    TryKind<SpinButton, SpinView>, TryKind<ProgressBar, ProgressView>},
                   window, control, parent);
}

}  // namespace ormel::ui
