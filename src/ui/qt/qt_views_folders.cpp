// Folder and drive lists.
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>
#include <filesystem>

#include "ui/file_controls.h"
#include "ui/qt/qt_list_view.h"
#include "ui/qt/qt_view.h"

namespace ormel::ui {
namespace {

namespace fs = std::filesystem;

// The folder's path above a list of "..", the way up, and the folders inside.
class FolderWidget final : public QWidget {
 public:
  explicit FolderWidget(QWidget* parent)
      : QWidget(parent), path_(new QLineEdit(this)), list_(new ListWidget(this)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(path_);
    column->addWidget(list_);
    path_->setReadOnly(true);
    path_->setFocusPolicy(Qt::NoFocus);
    path_->setFrame(false);
    path_->setAcceptDrops(false);
    QPalette flat = palette();
    flat.setColor(QPalette::Base, flat.color(QPalette::Window));
    path_->setPalette(flat);
    list_->Entries().SetIcon(style()->standardIcon(QStyle::SP_DirIcon));
    setFocusProxy(list_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }

  QLineEdit& Path() { return *path_; }
  ListWidget& List() { return *list_; }

 private:
  QLineEdit* path_;
  ListWidget* list_;
};

class FolderView final : public ViewOfKind<FolderList, FolderWidget> {
 public:
  FolderView(QtWindow& window, FolderList& control, QWidget* parent)
      : ViewOfKind(window, control, new FolderWidget(parent)) {
    Watch(&The().List());
    connect(&The().List(), &QListView::doubleClicked, this,
            [this](const QModelIndex& index) { Enter(index); });
  }

 private:
  void Show() override {
    const std::string& folder = TheControl().Folder();
    if (folder == shown_ && !entries_.empty()) return;
    shown_ = folder;
    entries_ = TheControl().Inside();
    entries_.insert(entries_.begin(), "..");
    The().Path().setText(ToQt(folder));
    The().Path().setToolTip(ToQt(folder));
    ListWidget& list = The().List();
    list.Entries().Show(entries_);
    list.setCurrentIndex(list.Entries().index(0));
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && Subject() != nullptr &&
        KeyName(static_cast<const QKeyEvent&>(*event)) == "Return") {
      Enter(The().List().currentIndex());
      return true;
    }
    return View::eventFilter(object, event);
  }

  void Enter(const QModelIndex& index) {
    if (!index.isValid()) return;
    Act([&](FolderList& list) {
      std::error_code error;
      const fs::path here = fs::absolute(list.Folder().empty() ? "." : list.Folder(), error);
      const fs::path there = index.row() == 0
                                 ? (here / "").lexically_normal().parent_path().parent_path()
                                 : here / entries_[static_cast<std::size_t>(index.row())];
      return list.GoTo(there.generic_string());
    });
  }

  std::string shown_;
  std::vector<std::string> entries_;
};

class DriveView final : public ViewOfKind<DriveList, QComboBox> {
 public:
  DriveView(QtWindow& window, DriveList& control, QWidget* parent)
      : ViewOfKind(window, control, new QComboBox(parent)) {
    The().setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    The().setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    for (const std::string& drive : DriveList::Drives()) {
      The().addItem(The().style()->standardIcon(QStyle::SP_DriveHDIcon), ToQt(drive));
    }
    connect(&The(), &QComboBox::activated, this, [this](int index) {
      Act([&](DriveList& list) { return list.GoTo(FromQt(The().itemText(index))); });
    });
  }

 private:
  void Show() override {
    const QString drive = ToQt(TheControl().Drive());
    The().setPlaceholderText(drive);  // shown when it is none of the places
    The().setCurrentIndex(The().findText(drive));
  }
};

}  // namespace

View* MakeFolderView(QtWindow& window, Control& control, QWidget* parent) {
  return MakeFirst({TryKind<FolderList, FolderView>, TryKind<DriveList, DriveView>}, window,
                   control, parent);
}

}  // namespace ormel::ui
