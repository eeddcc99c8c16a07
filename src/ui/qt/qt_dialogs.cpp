// Message boxes, prompts and the dialogs for files, colours and fonts.
#include <QApplication>
#include <QBuffer>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "ui/file_controls.h"
#include "ui/qt/qt_desktop.h"
#include "ui/qt/qt_services.h"
#include "ui/qt/qt_text.h"

namespace ormel::ui {
namespace {

// The window that a dialog stands before.
QWidget* InFront() {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::kOk:
      return QMessageBox::Ok;
    case Buttons::kOkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::kYesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Buttons::kYesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(Answer answer) {
  static constexpr QMessageBox::StandardButton kButtons[] = {QMessageBox::Ok, QMessageBox::Cancel,
                                                             QMessageBox::Yes, QMessageBox::No};
  return kButtons[static_cast<std::size_t>(answer)];
}

Answer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Ok:
      return Answer::kOk;
    case QMessageBox::Yes:
      return Answer::kYes;
    case QMessageBox::No:
      return Answer::kNo;
    default:
      return Answer::kCancel;
  }
}

bool IsPattern(const std::string& name) { return name.find_first_of("*?") != std::string::npos; }

QString Words(const std::string& patterns) {
  return ToQt(patterns).replace(';', ' ').replace(',', ' ');
}

// "Bitmap (.bmp)" and "*.bmp" make "Bitmap (.bmp) (*.bmp)"; the last brackets are not shown.
QStringList NameFilters(const std::vector<FilterEntry>& entries) {
  QStringList filters;
  for (const FilterEntry& entry : entries) {
    filters.append(ToQt(entry.name) + " (" + Words(entry.patterns) + ")");
  }
  return filters;
}

// The chosen entry, from 1. Some dialogs name it with its patterns and some without.
int IndexOf(const QString& chosen, const QStringList& filters) {
  for (qsizetype i = 0; i < filters.size(); ++i) {
    const QString name = filters[i].left(filters[i].lastIndexOf('('));
    if (chosen == filters[i] || chosen.trimmed() == name.trimmed()) return static_cast<int>(i) + 1;
  }
  return 1;
}

// The ending that the patterns of an entry name first, "bmp" of "*.bmp;*.dib"; empty: none does.
std::string EndingOf(const std::string& patterns) {
  const std::string first = patterns.substr(0, patterns.find(';'));
  if (first.rfind("*.", 0) != 0 || IsPattern(first.substr(2))) return {};
  return first.substr(2);
}

// A name without an ending gets the default one, or that of the chosen entry when the default does
// not fit it.
std::string WithEnding(const QString& path, const FileDialog& dialog, int filterIndex) {
  const std::string name = FromQt(QFileInfo(path).fileName());
  if (dialog.defaultExtension.empty() || name.find('.') != std::string::npos) return FromQt(path);
  std::string ending = dialog.defaultExtension;
  if (ending.front() == '.') ending.erase(0, 1);
  const std::vector<FilterEntry> entries = ParseFilter(dialog.filter);
  const auto chosen = static_cast<std::size_t>(filterIndex - 1);
  if (chosen < entries.size() && !FitsPattern(name + "." + ending, entries[chosen].patterns)) {
    const std::string other = EndingOf(entries[chosen].patterns);
    if (!other.empty()) ending = other;
  }
  return FromQt(path) + "." + ending;
}

void ProposeName(QFileDialog& box, const FileDialog& dialog, const QStringList& filters) {
  if (dialog.name.empty()) return;
  if (!IsPattern(dialog.name)) {
    box.selectFile(ToQt(dialog.name));
    return;
  }
  const std::vector<FilterEntry> entries = ParseFilter(dialog.filter);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::string patterns = ";" + entries[i].patterns + ";";
    if (patterns.find(";" + dialog.name + ";") == std::string::npos) continue;
    box.selectNameFilter(filters[static_cast<qsizetype>(i)]);
    return;
  }
}

}  // namespace

Answer QtDesktop::Pose(const Question& question) {
  QMessageBox box(InFront());
  box.setWindowTitle(ToQt(question.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(question.text));
  box.setIcon(question.buttons == Buttons::kOk ? QMessageBox::Information : QMessageBox::Question);
  box.setStandardButtons(ButtonsOf(question.buttons));
  box.setDefaultButton(ButtonOf(question.onReturn));
  return AnswerOf(box.exec());
}

std::optional<std::string> QtDesktop::Prompt(const std::string& text, const std::string& title,
                                             const std::string& proposal) {
  QInputDialog box(InFront());
  box.setWindowTitle(ToQt(title));
  box.setLabelText(ToQt(text));
  box.setTextValue(ToQt(proposal));
  if (box.exec() != QDialog::Accepted) return std::nullopt;
  return FromQt(box.textValue());
}

std::optional<FileChoice> QtDesktop::PickFile(const FileDialog& dialog, bool save) {
  QFileDialog box(InFront(), ToQt(dialog.title));
  box.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  box.setFileMode(save              ? QFileDialog::AnyFile
                  : dialog.multiple ? QFileDialog::ExistingFiles
                                    : QFileDialog::ExistingFile);
  box.setOption(QFileDialog::DontConfirmOverwrite);
  box.setOption(QFileDialog::HideNameFilterDetails);
  const QStringList filters = NameFilters(ParseFilter(dialog.filter));
  if (!filters.isEmpty()) box.setNameFilters(filters);
  box.setDirectory(dialog.folder.empty() ? QDir::currentPath() : ToQt(dialog.folder));
  ProposeName(box, dialog, filters);
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;

  FileChoice choice;
  choice.filterIndex = IndexOf(box.selectedNameFilter(), filters);
  for (const QString& path : box.selectedFiles()) {
    choice.paths.push_back(save ? WithEnding(path, dialog, choice.filterIndex) : FromQt(path));
  }
  return choice;
}

std::optional<Colour> QtDesktop::PickColour(const std::string& title, Colour start) {
  const QColor chosen =
      QColorDialog::getColor(QColor(Red(start), Green(start), Blue(start)), InFront(), ToQt(title));
  if (!chosen.isValid()) return std::nullopt;
  return Rgb(chosen.red(), chosen.green(), chosen.blue());
}

std::optional<Font> QtDesktop::PickFont(const std::string& title, const Font& start) {
  QFont font(ToQt(start.family), start.size, start.bold ? QFont::Bold : QFont::Normal,
             start.italic);
  bool accepted = false;
  font = QFontDialog::getFont(&accepted, font, InFront(), ToQt(title));
  if (!accepted) return std::nullopt;
  return Font{FromQt(font.family()), font.pointSize(), font.bold(), font.italic()};
}

std::optional<std::size_t> QtDesktop::PickEntry(const std::string& text, const std::string& title,
                                                const std::vector<std::string>& entries) {
  QStringList items;
  for (const std::string& entry : entries) items << ToQt(entry);
  QInputDialog box(InFront());
  box.setWindowTitle(ToQt(title));
  box.setLabelText(ToQt(text));
  box.setComboBoxItems(items);
  if (box.exec() != QDialog::Accepted) return std::nullopt;
  return static_cast<std::size_t>(std::max<qsizetype>(items.indexOf(box.textValue()), 0));
}

std::optional<std::string> QtDesktop::Jpeg(const Canvas& picture) {
  constexpr int kQuality = 90;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!ViewOf(picture).save(&buffer, "JPG", kQuality)) return std::nullopt;
  return bytes.toStdString();
}

}  // namespace ormel::ui
