#include "ui/qt/qt_screen.h"

#include <QApplication>
#include <QBuffer>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <unordered_map>

#include "base/file_writer.h"
#include "ui/qt/qt_text.h"
#include "ui/qt/qt_windows.h"

namespace ormel::ui {

struct QtScreen::Windows {
  QtWindow* Find(const Window* window) const {
    const auto found = open.find(window);
    return found == open.end() ? nullptr : found->second;
  }

  // The strip of the main window; null: there is none.
  const QtWindow* Bar() const {
    for (const auto& [window, shown] : open) {
      if (shown->IsBar()) return shown;
    }
    return nullptr;
  }
  // Tool windows are counted as long as one of them is open.
  int NextNumber() {
    const bool any =
        std::any_of(open.begin(), open.end(), [](const auto& one) { return !one.second->IsBar(); });
    number = any ? number + 1 : 0;
    return number;
  }

  std::string iconFolder;
  std::unordered_map<const Window*, QtWindow*> open;
  int number = 0;  // of the last tool window
};

QtScreen::QtScreen(std::string iconFolder) : windows_(std::make_unique<Windows>()) {
  windows_->iconFolder = std::move(iconFolder);
  QApplication::setWindowIcon(QIcon(ToQt(windows_->iconFolder + "/ormel.svg")));
}

QtScreen::~QtScreen() {
  for (const auto& [window, shown] : windows_->open) shown->Release();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtScreen::Open(Window& window, Window* owner, bool modal, std::optional<WindowSize> size) {
  QWidget* behind = windows_->Find(owner);
  // Whatever opens above a modal window belongs to it: otherwise it could not be used.
  if (behind == nullptr) behind = modal ? QApplication::activeWindow() : nullptr;
  if (QWidget* waiting = QApplication::activeModalWidget()) behind = waiting;
  auto* shown = new QtWindow(window, windows_->iconFolder);
  const int number = modal ? 0 : windows_->NextNumber();
  windows_->open.emplace(&window, shown);
  shown->ShowFirst(behind, modal, size, windows_->Bar(), number);
}

void QtScreen::Show(Window& window, bool visible) {
  if (QtWindow* shown = windows_->Find(&window)) {
    shown->Update();
    shown->setVisible(visible);
    if (!visible) return;
    if (shown->isMinimized()) shown->showNormal();
    shown->raise();
    shown->activateWindow();
  }
}

void QtScreen::BringAbove(Window& window) {
  QtWindow* shown = windows_->Find(&window);
  const QWidget* modal = QApplication::activeModalWidget();
  if (shown != nullptr && modal != nullptr && modal != shown) {
    shown->windowHandle()->setTransientParent(modal->windowHandle());
  }
  Show(window, true);
}

void QtScreen::Close(Window& window) {
  if (QtWindow* shown = windows_->Find(&window)) shown->Release();
  windows_->open.erase(&window);
}

WindowBox QtScreen::Room() const {
  return BoxOfRect(QGuiApplication::primaryScreen()->availableGeometry());
}

WindowBox QtScreen::BoxOf(const Window& window) const {
  const QtWindow* shown = windows_->Find(&window);
  return shown == nullptr ? WindowBox() : BoxOfRect(shown->frameGeometry());
}

std::optional<WindowSize> QtScreen::SizeGiven(const Window& window) const {
  const QtWindow* shown = windows_->Find(&window);
  return shown == nullptr ? std::nullopt : shown->SizeGiven();
}

void QtScreen::Resize(Window& window, WindowSize size) {
  if (QtWindow* shown = windows_->Find(&window)) shown->resize(size.width, size.height);
}

void QtScreen::ProcessEvents() { QCoreApplication::processEvents(); }

bool QtScreen::Snapshot(Window& window, const std::string& file) {
  QtWindow* shown = windows_->Find(&window);
  if (shown == nullptr) return false;
  shown->Update();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  QByteArray png;
  QBuffer buffer(&png);
  return shown->grab().save(&buffer, "PNG") &&
         WriteFile(file, {png.constData(), static_cast<std::size_t>(png.size())}).Ok();
}

}  // namespace ormel::ui
