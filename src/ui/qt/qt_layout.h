// Lays the controls of a window out as its LayoutItems say.
#pragma once

#include <QPointer>
#include <functional>
#include <vector>

#include "ui/layout.h"

class QLabel;
class QWidget;

namespace ormel::ui {

// A text of the layout. It leads to the controls behind it and is shown while one of them is.
struct LayoutText {
  QPointer<QLabel> label;
  std::vector<QPointer<QWidget>> behind;
};

struct BuiltLayout {
  std::vector<QWidget*> order;  // the controls, as the Tab key goes through them
  std::vector<LayoutText> texts;
  std::vector<QPointer<QWidget>> made;  // labels and boxes without a control; the next build
                                        // deletes them
};

// Fills `page`, which has no layout. `widgetOf` gives the widget of a control; one that shows a
// frame is a group box without a layout.
BuiltLayout BuildLayout(const LayoutItem& layout, QWidget* page,
                        const std::function<QWidget*(Control&)>& widgetOf);

// Shows or hides the texts whose controls came or went.
void ShowTexts(const std::vector<LayoutText>& texts);

}  // namespace ormel::ui
