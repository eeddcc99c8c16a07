#include "ui/qt/qt_text.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <array>

namespace ormel::ui {
namespace {

struct NamedKey {
  int key;
  const char* name;
};

constexpr std::array kNamedKeys{NamedKey{Qt::Key_Home, "Home"},
                                NamedKey{Qt::Key_End, "End"},
                                NamedKey{Qt::Key_Left, "Left"},
                                NamedKey{Qt::Key_Right, "Right"},
                                NamedKey{Qt::Key_Up, "Up"},
                                NamedKey{Qt::Key_Down, "Down"},
                                NamedKey{Qt::Key_PageUp, "PageUp"},
                                NamedKey{Qt::Key_PageDown, "PageDown"},
                                NamedKey{Qt::Key_Insert, "Insert"},
                                NamedKey{Qt::Key_Delete, "Delete"},
                                NamedKey{Qt::Key_Backspace, "BackSpace"},
                                NamedKey{Qt::Key_Return, "Return"},
                                NamedKey{Qt::Key_Enter, "Return"},
                                NamedKey{Qt::Key_Escape, "Escape"},
                                NamedKey{Qt::Key_Tab, "Tab"},
                                NamedKey{Qt::Key_Backtab, "Tab"}};

}  // namespace

std::string KeyName(const QKeyEvent& event) {
  const int key = event.key();
  const bool isTab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
  const bool isControl = event.modifiers().testFlag(Qt::ControlModifier);
  if (isTab && isControl) return key == Qt::Key_Backtab ? "Ctrl+Shift+Tab" : "Ctrl+Tab";
  for (const NamedKey& named : kNamedKeys) {
    if (named.key == key) return named.name;
  }
  if (key >= Qt::Key_F1 && key <= Qt::Key_F35) return "F" + std::to_string(key - Qt::Key_F1 + 1);
  const QString text = event.text();
  const bool isTyped = !isControl || event.modifiers().testFlag(Qt::AltModifier);  // AltGr is both
  if (isTyped && !text.isEmpty() && text[0].isPrint()) return FromQt(text);
  const bool isLetter = key >= Qt::Key_Space && key < Qt::Key_Escape;
  return isLetter ? FromQt(QKeySequence(event.keyCombination()).toString()) : std::string();
}

QImage ViewOf(const Canvas& canvas) {
  if (canvas.Empty()) return {};
  return QImage(canvas.Bytes().data(), canvas.Width(), canvas.Height(), 3 * canvas.Width(),
                QImage::Format_RGB888);
}

}  // namespace ormel::ui
