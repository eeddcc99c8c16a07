// A window on the screen: its title, menus and page of controls, and the strip of a long command
// along its lower edge.
#pragma once

#include <QMainWindow>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "ui/qt/qt_layout.h"
#include "ui/window.h"
#include "ui/window_place.h"

class QProgressBar;
class QScrollArea;

namespace ormel::ui {

class View;

WindowBox BoxOfRect(const QRect& rect);

class QtWindow final : public QMainWindow, public WindowView {
 public:
  QtWindow(Window& window, const std::string& iconFolder);

  // Shows it for the first time, in the `remembered` size, else as large as its controls ask for,
  // as far as the screen has it. `owner` and `bar`, the main window's strip, may be null. Tool
  // windows are numbered from 0; each lies a little further down and to the right than the one
  // before.
  void ShowFirst(QWidget* owner, bool modal, std::optional<WindowSize> remembered,
                 const QtWindow* bar, int number);
  // The size that a person gave it; none: it has the one that it gave itself.
  std::optional<WindowSize> SizeGiven() const;
  // Lets go of the window and takes itself off the screen; it is deleted when its events are over.
  void Release();

  // WindowView.
  void Refresh() override;
  void LayoutChanged() override;
  void Focus(Control& control) override;

  // What has changed since is brought to the screen. Runs by itself before the next event.
  void Update();
  void Know(const Control& control, View* view) { views_[&control] = view; }
  void Mark(View* view);
  void Forget(const Control& control) { views_.erase(&control); }
  // A window of nothing but menus and tools lies along the upper edge of the screen.
  bool IsBar() const { return isBar_; }
  // Controls are being moved: that they lose the focus means nothing.
  bool IsRebuilding() const { return rebuilding_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void Schedule();
  QWidget* WidgetOf(Control& control);
  void MakeStrip();
  void Rebuild();
  void SyncViews();
  void TakeLayoutDown();
  void SyncWindow();
  void FitContents();
  QSize FittingSize() const;
  QSize FirstSize(std::optional<WindowSize> remembered) const;
  void Place(QSize wanted, const QWidget* owner, bool modal, const QtWindow* bar, int number);
  QRect RoomBelow(const QtWindow* bar) const;
  void KeepInView(const QtWindow* bar);
  void LetUse(bool enabled);
  void FocusFirst();

  Window* window_;  // null when it is closed
  QScrollArea* area_;
  QWidget* page_;
  QWidget* strip_;
  QProgressBar* progress_;
  std::unordered_map<const Control*, View*> views_;
  std::vector<QPointer<View>> marked_;
  BuiltLayout built_;
  QPointer<QWidget> focusBefore_;  // a command disables the window: who had the focus
  QSize ownSize_;                  // the size that the window gave itself
  bool isBar_ = false;
  bool growsWithContents_ = true;
  bool scheduled_ = false;
  bool windowChanged_ = true;
  bool layoutChanged_ = true;
  bool rebuilding_ = false;
};

}  // namespace ormel::ui
