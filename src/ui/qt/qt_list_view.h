// A list on the screen: rows of texts, as tall and wide as a few entries ask for.
#pragma once

#include <QListView>

#include "ui/qt/qt_text_model.h"

namespace ormel::ui {

class ListWidget final : public QListView {
 public:
  explicit ListWidget(QWidget* parent) : QListView(parent), entries_(this) {
    setModel(&entries_);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  }

  TextModel& Entries() { return entries_; }

  QSize sizeHint() const override { return Letters(28, 8); }
  QSize minimumSizeHint() const override { return Letters(12, 4); }

 private:
  QSize Letters(int across, int lines) const {
    return {fontMetrics().averageCharWidth() * across, fontMetrics().lineSpacing() * lines};
  }

  TextModel entries_;
};

}  // namespace ormel::ui
