// A picture on the screen: fits its room in its own proportions, shows the pixels of a map as
// squares when it is enlarged and their mean when it is reduced.
#pragma once

#include <QImage>
#include <QWidget>

#include "base/canvas.h"
#include "ui/picture.h"

namespace ormel::ui {

class PictureWidget final : public QWidget {
 public:
  explicit PictureWidget(QWidget* parent);

  // `canvas` outlives the widget, or the next call. Null: nothing to show. With `paint` the picture
  // is painted in the widget's own pixels instead; the canvas gives its proportions.
  void SetCanvas(const Canvas* canvas, Picture::Painter paint = {});
  // 0: in its own proportions; else across the whole width, that many pixels high.
  void SetStripHeight(int height);

  // The part of the widget that the picture covers.
  QRectF Covered() const;
  // From a place on the widget to pixels of the canvas, beyond its edges as well.
  QPointF ToCanvas(QPointF place) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QImage& Scaled(QSize size);
  QImage Painted(QSize size) const;

  const Canvas* canvas_ = nullptr;
  Picture::Painter paint_;
  int stripHeight_ = 0;
  QImage scaled_;  // as it was last painted
  QSize lastHint_;
};

// `source` in `size` pixels. Each pixel is the mean of those it covers, or a copy of the one in
// which it lies.
QImage ScalePicture(const Canvas& source, QSize size);

}  // namespace ormel::ui
