#include "ui/qt/qt_picture.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "ui/qt/qt_text.h"

namespace ormel::ui {
namespace {

// The pixels from `first` up to, not including, `end` that pixel `i` of `count` stands for: at
// least one.
struct Stretch1 {
  int first;
  int end;
};
Stretch1 PixelsBehind(int i, int count, int source) {
  const auto at = [&](int k) {
    return static_cast<int>(static_cast<std::int64_t>(k) * source / count);
  };
  const int first = at(i);
  return {first, std::max(at(i + 1), first + 1)};
}

// The sums of red, green and blue of one row of the result.
void AddRows(const Canvas& source, Stretch1 rows, const std::vector<Stretch1>& columns,
             std::vector<std::uint32_t>& sums) {
  std::fill(sums.begin(), sums.end(), 0U);
  for (int y = rows.first; y < rows.end; ++y) {
    const std::uint8_t* row = source.Bytes().data() + 3 * static_cast<std::size_t>(y) *
                                                          static_cast<std::size_t>(source.Width());
    std::uint32_t* sum = sums.data();
    for (const Stretch1& column : columns) {
      for (const std::uint8_t* pixel = row + 3 * column.first; pixel < row + 3 * column.end;
           pixel += 3) {
        sum[0] += pixel[0];
        sum[1] += pixel[1];
        sum[2] += pixel[2];
      }
      sum += 3;
    }
  }
}

}  // namespace

QImage ScalePicture(const Canvas& source, QSize size) {
  if (source.Empty() || size.isEmpty()) return {};
  std::vector<Stretch1> columns;
  columns.reserve(static_cast<std::size_t>(size.width()));
  for (int x = 0; x < size.width(); ++x) {
    columns.push_back(PixelsBehind(x, size.width(), source.Width()));
  }
  std::vector<std::uint32_t> sums(3 * columns.size());
  QImage scaled(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    const Stretch1 rows = PixelsBehind(y, size.height(), source.Height());
    AddRows(source, rows, columns, sums);
    auto* line = reinterpret_cast<QRgb*>(scaled.scanLine(y));
    for (std::size_t x = 0; x < columns.size(); ++x) {
      const auto count =
          static_cast<std::uint32_t>((rows.end - rows.first) * (columns[x].end - columns[x].first));
      const auto mean = [&](std::size_t part) {
        return static_cast<int>((sums[3 * x + part] + count / 2) / count);
      };
      line[x] = qRgb(mean(0), mean(1), mean(2));
    }
  }
  return scaled;
}

PictureWidget::PictureWidget(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  SetStripHeight(0);
}

void PictureWidget::SetCanvas(const Canvas* canvas, Picture::Painter paint) {
  canvas_ = canvas;
  paint_ = std::move(paint);
  scaled_ = {};
  if (sizeHint() != lastHint_) updateGeometry();
  lastHint_ = sizeHint();
  update();
}

void PictureWidget::SetStripHeight(int height) {
  stripHeight_ = height;
  setSizePolicy(QSizePolicy::Expanding, height > 0 ? QSizePolicy::Fixed : QSizePolicy::Expanding);
  update();
}

QRectF PictureWidget::Covered() const {
  if (canvas_ == nullptr || canvas_->Empty()) return {};
  if (stripHeight_ > 0) return rect();
  QSizeF size(canvas_->Width(), canvas_->Height());
  size.scale(QSizeF(this->size()), Qt::KeepAspectRatio);
  // Whole device pixels, so that the squares of a map are all equally sharp.
  const double ratio = devicePixelRatioF();
  const double width = std::max(1.0, std::floor(size.width() * ratio)) / ratio;
  const double height = std::max(1.0, std::floor(size.height() * ratio)) / ratio;
  return {std::floor((this->width() - width) / 2 * ratio) / ratio,
          std::floor((this->height() - height) / 2 * ratio) / ratio, width, height};
}

QPointF PictureWidget::ToCanvas(QPointF place) const {
  const QRectF covered = Covered();
  if (covered.isEmpty()) return {};
  return {(place.x() - covered.x()) * canvas_->Width() / covered.width(),
          (place.y() - covered.y()) * canvas_->Height() / covered.height()};
}

QSize PictureWidget::sizeHint() const {
  const int line = fontMetrics().height();
  if (stripHeight_ > 0) return {8 * line, stripHeight_};
  if (canvas_ == nullptr || canvas_->Empty()) return {12 * line, 9 * line};
  QSize size(canvas_->Width(), canvas_->Height());
  size.scale(38 * line, 32 * line, Qt::KeepAspectRatio);
  return size.expandedTo(minimumSizeHint());
}

QSize PictureWidget::minimumSizeHint() const {
  const int line = fontMetrics().height();
  return stripHeight_ > 0 ? QSize(4 * line, stripHeight_) : QSize(3 * line, 3 * line);
}

const QImage& PictureWidget::Scaled(QSize size) {
  if (scaled_.size() != size) scaled_ = paint_ ? Painted(size) : ScalePicture(*canvas_, size);
  return scaled_;
}

QImage PictureWidget::Painted(QSize size) const {
  Canvas canvas(size.width(), size.height());
  paint_(canvas);
  return ViewOf(canvas).convertToFormat(QImage::Format_RGB32);
}

void PictureWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRectF covered = Covered();
  if (covered.isEmpty()) {
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  } else {
    const double ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::lround(covered.width() * ratio)),
                       static_cast<int>(std::lround(covered.height() * ratio)));
    painter.drawImage(covered, Scaled(pixels));
    if (!isEnabled()) {
      QColor veil = palette().color(QPalette::Window);
      veil.setAlpha(110);
      painter.fillRect(covered, veil);
    }
  }
  if (!hasFocus()) return;
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace ormel::ui
