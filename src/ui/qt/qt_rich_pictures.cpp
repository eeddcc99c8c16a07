#include "ui/qt/qt_rich_pictures.h"

#include <QDir>
#include <QPainter>
#include <cstring>

#include "ui/qt/qt_rich_document.h"

namespace ormel::ui {

void RichPictures::SetFolder(const QString& folder) {
  folder_ = folder;
  sources_.clear();
  scaled_.clear();
}

// One that cannot be read has no size.
const QImage& RichPictures::Source(const QString& file) {
  const auto known = sources_.constFind(file);
  if (known != sources_.constEnd()) return *known;
  return *sources_.insert(file, QImage(QDir(folder_).filePath(file)));
}

QSizeF RichPictures::intrinsicSize(QTextDocument* /*document*/, int /*position*/,
                                   const QTextFormat& format) {
  const QSizeF size = Source(format.property(kPictureFile).toString()).size();
  if (size.width() <= room_ || room_ <= 0) return size;
  return {room_, size.height() * room_ / size.width()};
}

void RichPictures::drawObject(QPainter* painter, const QRectF& rect, QTextDocument* /*document*/,
                              int /*position*/, const QTextFormat& format) {
  const QString file = format.property(kPictureFile).toString();
  const QImage& source = Source(file);
  if (source.isNull()) return;
  const double pixels = painter->device()->devicePixelRatioF();
  const QSize size = (rect.size() * pixels).toSize();
  QImage& scaled = scaled_[file];
  if (scaled.size() != size) {
    scaled = source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  scaled.setDevicePixelRatio(pixels);
  painter->drawImage(rect.topLeft(), scaled);
}

void* RichPictures::qt_metacast(const char* name) {
  if (std::strcmp(name, qobject_interface_iid<QTextObjectInterface*>()) == 0) {
    return static_cast<QTextObjectInterface*>(this);
  }
  return QObject::qt_metacast(name);
}

}  // namespace ormel::ui
