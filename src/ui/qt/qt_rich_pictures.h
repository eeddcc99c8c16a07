// Draws the pictures of a rich text's document: no wider than the text, and as sharp as the screen.
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QTextObjectInterface>

namespace ormel::ui {

class RichPictures final : public QObject, public QTextObjectInterface {
 public:
  // Pictures lie relative to `folder`, and are read when they are first needed.
  void SetFolder(const QString& folder);
  // The widest that a picture may be, in the document's units.
  void SetRoom(double width) { room_ = width; }

  QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
  void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                  const QTextFormat& format) override;

  // How the toolkit asks whether this can draw.
  void* qt_metacast(const char* name) override;

 private:
  const QImage& Source(const QString& file);

  QString folder_;
  double room_ = 0;
  QHash<QString, QImage> sources_;
  QHash<QString, QImage> scaled_;  // as they were last drawn
};

}  // namespace ormel::ui
