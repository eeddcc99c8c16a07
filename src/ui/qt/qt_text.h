// Texts, keys and pictures on their way between the program and the toolkit. Texts are UTF-8 in the
// program.
#pragma once

#include <QImage>
#include <QString>
#include <string>

#include "base/canvas.h"

class QKeyEvent;

namespace ormel::ui {

inline QString ToQt(const std::string& text) { return QString::fromStdString(text); }
inline std::string FromQt(const QString& text) { return text.toStdString(); }

// "Home", "Left", "BackSpace", "F12", "=", "Ctrl+A"; empty for a key that means nothing alone.
std::string KeyName(const QKeyEvent& event);

// A view of the canvas, not a copy: valid as long as the canvas is unchanged.
QImage ViewOf(const Canvas& canvas);

}  // namespace ormel::ui
