#include "ui/qt/qt_windows.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/desktop.h"
#include "ui/qt/qt_menus.h"
#include "ui/qt/qt_view.h"

namespace ormel::ui {
namespace {

// The page of a window. It is never smaller than its controls need, but for a screen that is
// smaller still: then it scrolls.
class PageArea final : public QScrollArea {
 public:
  explicit PageArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
  }

  QSize sizeHint() const override { return Bounded(widget()->sizeHint()); }
  QSize minimumSizeHint() const override {
    QSize size = widget()->minimumSizeHint();
    const QLayout* layout = widget()->layout();
    if (layout != nullptr && layout->hasHeightForWidth()) {
      const int width = std::max(size.width(), isVisible() ? this->width() : sizeHint().width());
      size.setHeight(std::max(size.height(), layout->minimumHeightForWidth(width)));
    }
    return Bounded(size);
  }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (object == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(object, event);
  }

 private:
  // What is left of the screen beside title, menus and the desktop's own bars.
  QSize Bounded(QSize size) const {
    const QSize room = screen()->availableSize() * 7 / 8;
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return QSize(size.width() + (size.height() > room.height() ? bar : 0), size.height())
        .boundedTo(room);
  }
};

}  // namespace

QtWindow::QtWindow(Window& window, const std::string& iconFolder)
    : window_(&window),
      area_(new PageArea(this)),
      page_(new QWidget(area_)),
      strip_(new QWidget(this)),
      progress_(new QProgressBar(strip_)) {
  auto* whole = new QWidget(this);
  auto* column = new QVBoxLayout(whole);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  area_->setWidget(page_);
  column->addWidget(area_, 1);
  column->addWidget(strip_);
  MakeStrip();
  setCentralWidget(whole);
  AddMenus(*this, window, iconFolder);
  setAcceptDrops(static_cast<bool>(window.onDrop));
  window.AttachView(this);
  Update();
}

void QtWindow::MakeStrip() {
  auto* row = new QHBoxLayout(strip_);
  const int gap = fontMetrics().height() / 3;
  row->setContentsMargins(2 * gap, gap, 2 * gap, gap);
  auto* stop = new QPushButton(QStringLiteral("Stop"), strip_);
  row->addWidget(progress_, 1);
  row->addWidget(stop);
  progress_->setRange(0, 1000);  // finer than percents: a long run is seen to move
  connect(stop, &QPushButton::clicked, this, [this] {
    if (window_ != nullptr) window_->StopRun();
  });
  strip_->hide();
}

void QtWindow::ShowFirst(QWidget* owner, bool modal, std::optional<WindowSize> remembered,
                         const QtWindow* bar, int number) {
  if (window_->Bare()) setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
  if (modal) {
    setWindowFlag(Qt::Dialog);
    setWindowModality(Qt::ApplicationModal);
  }
  if (owner != nullptr) {
    winId();  // makes the native window, which keeps above its owner's from now on
    windowHandle()->setTransientParent(owner->windowHandle());
  }
  isBar_ = window_->Tools() != nullptr && page_->sizeHint().height() <= 2 * fontMetrics().height();
  growsWithContents_ = !remembered || isBar_;
  Place(FirstSize(remembered), owner, modal, bar, number);
  ownSize_ = size();
  show();
  FocusFirst();
  if (window_->FirstFocus() != nullptr) Focus(*window_->FirstFocus());
}

// A remembered size holds as far as today's controls and screen allow it.
QSize QtWindow::FirstSize(std::optional<WindowSize> remembered) const {
  if (!remembered) return FittingSize();
  return QSize(remembered->width, remembered->height).expandedTo(minimumSizeHint());
}

std::optional<WindowSize> QtWindow::SizeGiven() const {
  if (isBar_ || isMaximized() || isFullScreen() || size() == ownSize_) return std::nullopt;
  return WindowSize{width(), height()};
}

// What the contents ask for, as far as the screen has it beside the title.
QSize QtWindow::FittingSize() const {
  const int title = 2 * fontMetrics().height();
  return sizeHint().boundedTo(screen()->availableSize() - QSize(title, title));
}

void QtWindow::FocusFirst() {
  for (QWidget* widget : built_.order) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0 || widget->isHidden() || !widget->isEnabled()) {
      continue;
    }
    widget->setFocus(Qt::OtherFocusReason);
    return;
  }
}

void QtWindow::Release() {
  window_->AttachView(nullptr);
  for (const auto& [control, view] : views_) view->Release();
  views_.clear();
  window_ = nullptr;
  hide();
  deleteLater();
}

void QtWindow::Refresh() {
  windowChanged_ = true;
  Schedule();
}

void QtWindow::LayoutChanged() {
  layoutChanged_ = true;
  Schedule();
}

void QtWindow::Focus(Control& control) {
  Update();  // it may have become visible just now
  const auto known = views_.find(&control);
  if (known == views_.end() || known->second->Widget() == nullptr) return;
  activateWindow();
  QWidget* widget = known->second->Widget();
  widget->setFocus(Qt::OtherFocusReason);
  if (auto* line = qobject_cast<QLineEdit*>(widget)) line->selectAll();  // typing replaces it
}

void QtWindow::Mark(View* view) {
  marked_.emplace_back(view);
  Schedule();
}

void QtWindow::Schedule() {
  if (std::exchange(scheduled_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { Update(); }, Qt::QueuedConnection);
}

void QtWindow::Update() {
  scheduled_ = false;
  if (window_ == nullptr) return;
  if (std::exchange(layoutChanged_, false)) {
    Rebuild();
  } else {
    SyncViews();
  }
  if (std::exchange(windowChanged_, false)) SyncWindow();
  // A bar whose controls are all hidden ends below its tools.
  area_->setVisible(window_->Tools() == nullptr ||
                    std::any_of(built_.order.begin(), built_.order.end(),
                                [](const QWidget* widget) { return !widget->isHidden(); }));
  if (isVisible() && strip_->isHidden()) FitContents();
}

// A window fills up after it has opened: rows are added, a map is loaded. It grows with them until
// a person gives it another size. A strip is always as low as it can be.
void QtWindow::FitContents() {
  if (!growsWithContents_ || (size() != ownSize_ && !isBar_) || isMaximized()) return;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  page_->layout()->activate();
  area_->updateGeometry();
  centralWidget()->layout()->activate();
  layout()->activate();
  const QSize wanted =
      isBar_ ? QSize(width(), sizeHint().height()) : size().expandedTo(FittingSize());
  if (wanted != size()) resize(wanted);
  ownSize_ = size();
}

void QtWindow::SyncViews() {
  for (const QPointer<View>& view : std::exchange(marked_, {})) {
    if (view != nullptr) view->Sync();
  }
  ShowTexts(built_.texts);
}

// Called for every control of a layout that is being built.
QWidget* QtWindow::WidgetOf(Control& control) {
  const auto known = views_.find(&control);
  View* view = known != views_.end() ? known->second : MakeView(*this, control, page_);
  view->SetPlaced(true);
  if (known == views_.end()) view->Sync();  // the layout goes by its size and its wishes
  return view->Widget();
}

void QtWindow::Rebuild() {
  rebuilding_ = true;
  setUpdatesEnabled(false);
  const QPointer<QWidget> focus = focusWidget();
  TakeLayoutDown();
  built_ = BuildLayout(window_->Layout(), page_, [this](Control& c) { return WidgetOf(c); });
  for (std::size_t i = 1; i < built_.order.size(); ++i) {
    setTabOrder(built_.order[i - 1], built_.order[i]);
  }
  for (const QPointer<QWidget>& widget : built_.made) widget->show();
  SyncViews();
  if (focus != nullptr && !focus->isHidden()) focus->setFocus(Qt::OtherFocusReason);
  setUpdatesEnabled(true);
  rebuilding_ = false;
}

// The widgets of controls stay; they wait on the page for their new places.
void QtWindow::TakeLayoutDown() {
  for (const auto& [control, view] : views_) {
    QWidget* widget = view->Widget();
    if (widget == nullptr || !page_->isAncestorOf(widget)) continue;
    if (qobject_cast<QGroupBox*>(widget) != nullptr) delete widget->layout();
    if (widget->parentWidget() != page_) widget->setParent(page_);
    view->SetPlaced(false);
  }
  delete page_->layout();
  for (const QPointer<QWidget>& widget : built_.made) {
    if (widget == nullptr) continue;
    widget->hide();
    widget->deleteLater();
  }
}

void QtWindow::SyncWindow() {
  setWindowTitle(ToQt(window_->Caption()));
  LetUse(window_->Enabled());
  progress_->setValue(static_cast<int>(std::lround(10 * window_->StripPercent())));
  strip_->setVisible(window_->StripShown());
}

// Everything but the strip.
void QtWindow::LetUse(bool enabled) {
  if (area_->isEnabled() == enabled) return;
  if (!enabled) focusBefore_ = focusWidget();
  area_->setEnabled(enabled);
  if (window_->Menu() != nullptr) menuBar()->setEnabled(enabled);
  for (QToolBar* bar : findChildren<QToolBar*>()) bar->setEnabled(enabled);
  if (enabled && focusBefore_ != nullptr) focusBefore_->setFocus(Qt::OtherFocusReason);
}

void QtWindow::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program closes its windows itself, when nothing is left to ask
  if (window_ != nullptr) window_->OnDesktop()->CloseByFrame(*window_);
}

void QtWindow::keyPressEvent(QKeyEvent* event) {
  if (window_ == nullptr) return;
  const std::string key = KeyName(*event);
  if (window_->Running() && key == "Escape") {
    window_->StopRun();
  } else if (!window_->PressKey(key)) {
    QMainWindow::keyPressEvent(event);
  }
}

void QtWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && !isActiveWindow() && window_ != nullptr) {
    window_->Dispatch([window = window_] { window->OnDeactivated(); });
  }
  if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
    LayoutChanged();
  }
}

void QtWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void QtWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  for (const QUrl& url : event->mimeData()->urls()) {
    if (window_ == nullptr || !url.isLocalFile() || !window_->Enabled()) continue;
    window_->Dispatch([&] { window_->onDrop(FromQt(url.toLocalFile())); });
  }
}

}  // namespace ormel::ui
