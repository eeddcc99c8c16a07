#include "ui/qt/qt_menus.h"

#include <QAction>
#include <QFileInfo>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <utility>
#include <vector>

#include "ui/qt/qt_view.h"
#include "ui/qt/qt_windows.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

using Items = std::vector<std::unique_ptr<MenuItem>>;

// `bar` is a menu bar or a menu.
template <class Bar>
void AddItems(QtWindow& window, Bar& bar, const Items& items);

// An entry that runs a command, opens a submenu (its action is the submenu's) or separates.
class MenuItemView final : public ViewOfKind<MenuItem, QAction> {
 public:
  MenuItemView(QtWindow& window, MenuItem& control, QAction* action)
      : ViewOfKind(window, control, action), version_(control.ChildrenVersion()) {
    action->setSeparator(control.IsSeparator());
    connect(action, &QAction::triggered, this, [this] { Act(&MenuItem::Click); });
    const QMenu* below = action->menu();
    if (below == nullptr || !control.onClick) return;
    connect(below, &QMenu::aboutToShow, this, [this] {
      Tell(&MenuItem::Click);
      Owner().Update();  // it shows at once
    });
  }

 private:
  void Show() override {
    const MenuItem& item = TheControl();
    if (std::exchange(version_, item.ChildrenVersion()) != item.ChildrenVersion()) {
      AddItems(Owner(), *The().menu(), item.Children());  // the old ones go by themselves
    }
    if (!item.IsSeparator()) The().setText(ToQt(item.Caption()));
    The().setToolTip(ToQt(item.ToolTip()));
    The().setShortcut(QKeySequence::fromString(ToQt(item.Shortcut()), QKeySequence::PortableText));
    The().setEnabled(item.Enabled());
    The().setVisible(item.Visible());
    if (item.Checked()) The().setCheckable(true);
    The().setChecked(item.Checked());
  }

  void Parted() override { The().setVisible(false); }

  int version_;  // of the entries below
};

template <class Bar>
void AddItems(QtWindow& window, Bar& bar, const Items& items) {
  for (const auto& item : items) {
    if (item->Children().empty()) {
      (new MenuItemView(window, *item, bar.addAction(QString())))->Sync();
    } else {
      QMenu* menu = bar.addMenu(QString());
      menu->setToolTipsVisible(true);
      AddItems(window, *menu, item->Children());
      (new MenuItemView(window, *item, menu->menuAction()))->Sync();
    }
  }
}

class ToolView final : public ViewOfKind<ToolButton, QToolButton> {
 public:
  ToolView(QtWindow& window, ToolButton& control, QToolBar& bar, const std::string& iconFolder)
      : ViewOfKind(window, control, new QToolButton(&bar)), place_(bar.addWidget(&The())) {
    The().setAutoRaise(true);
    const QString icon = ToQt(iconFolder + "/" + control.Icon());
    if (!control.Icon().empty() && QFileInfo(icon).isFile()) The().setIcon(QIcon(icon));
    connect(&The(), &QToolButton::clicked, this, [this] { Act(&ToolButton::Click); });
    if (control.Menu().empty()) return;
    auto* menu = new QMenu(&The());
    AddItems(window, *menu, control.Menu());
    The().setMenu(menu);
    The().setPopupMode(control.onClick ? QToolButton::MenuButtonPopup : QToolButton::InstantPopup);
  }

 private:
  void Show() override {
    The().setText(ToQt(TheControl().Caption()));
    The().setToolButtonStyle(The().icon().isNull() ? Qt::ToolButtonTextOnly
                                                   : Qt::ToolButtonTextBesideIcon);
    place_->setVisible(TheControl().Visible());  // in a toolbar the action decides
  }

  QAction* place_;
};

// The panels side by side. Each is as wide as the widest text that it has had, so that the figures
// under a moving pointer stay where they are. Where there is no room for all of them the last ones
// are cut, and have their whole text in a tool tip.
class StatusPanels final : public QWidget {
 public:
  StatusPanels(int count, QWidget* parent) : QWidget(parent), gap_(fontMetrics().height() / 2) {
    for (int i = 0; i < count; ++i) {
      auto* panel = new QLabel(this);
      panel->setTextFormat(Qt::PlainText);
      panel->setIndent(gap_);
      panels_.push_back({panel, {}, 0});
    }
  }

  // A long text does not widen the window.
  QSize sizeHint() const override { return QSize(1, fontMetrics().height()); }

  void SetTexts(const StatusStrip& strip) {
    for (int i = 0; i < strip.Count(); ++i) {
      Panel& panel = panels_[static_cast<std::size_t>(i)];
      panel.text = ToQt(strip.Text(i + 1));
      panel.widest = std::max(panel.widest, fontMetrics().horizontalAdvance(panel.text) + 2 * gap_);
    }
    Arrange();
  }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { Arrange(); }

 private:
  struct Panel {
    QLabel* label;
    QString text;
    int widest;
  };

  void Arrange() {
    std::vector<int> widths;
    for (const Panel& panel : panels_) widths.push_back(panel.widest);
    widths = ShareWidth(std::move(widths), width());
    int left = 0;
    for (std::size_t i = 0; i < panels_.size(); ++i) {
      const Panel& panel = panels_[i];
      const QString shown =
          fontMetrics().elidedText(panel.text, Qt::ElideRight, std::max(widths[i] - gap_, 0));
      panel.label->setText(shown);
      panel.label->setToolTip(shown == panel.text ? QString() : panel.text);
      panel.label->setGeometry(left, 0, widths[i], height());
      left += widths[i];
    }
  }

  const int gap_;
  std::vector<Panel> panels_;
};

class StatusView final : public ViewOfKind<StatusStrip, QStatusBar> {
 public:
  StatusView(QtWindow& window, StatusStrip& control, QStatusBar* bar)
      : ViewOfKind(window, control, bar), panels_(new StatusPanels(control.Count(), bar)) {
    bar->addWidget(panels_, 1);
    SetPlaced(true);
  }

 private:
  void Show() override { panels_->SetTexts(TheControl()); }

  StatusPanels* panels_;
};

}  // namespace

void AddMenus(QtWindow& screen, Window& window, const std::string& iconFolder) {
  if (window.Menu() != nullptr) AddItems(screen, *screen.menuBar(), window.Menu()->Menus());
  if (const ToolBar* tools = window.Tools()) {
    QToolBar* bar = screen.addToolBar(QString());
    bar->setMovable(false);
    bar->setIconSize(QSize(1, 1) * (2 * bar->fontMetrics().height()));
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const auto& button : tools->Buttons()) new ToolView(screen, *button, *bar, iconFolder);
  }
  if (window.Status() != nullptr) new StatusView(screen, *window.Status(), screen.statusBar());
}

}  // namespace ormel::ui
