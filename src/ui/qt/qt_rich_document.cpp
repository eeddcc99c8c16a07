#include "ui/qt/qt_rich_document.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPalette>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>
#include <algorithm>

#include "ui/qt/qt_text.h"

namespace ormel::ui {
namespace {

constexpr double kMarkerRoom = 1.4;  // what lists are indented by, in lines

static_assert(kPictureFile == QTextFormat::UserProperty + 1);
static_assert(kPictureObject == QTextFormat::UserObject + 1);

// The document has signs of its own for the ends of lines, tables and frames, and for pictures.
bool IsOwnSign(QChar letter) {
  const char16_t code = letter.unicode();
  return code < 0x20 || code == 0x2028 || code == 0x2029 || code == 0xFFFC ||
         (code >= 0xFDD0 && code <= 0xFDEF);
}

QString Shown(const std::string& text) {
  QString shown = ToQt(text);
  std::replace_if(shown.begin(), shown.end(), IsOwnSign, QChar(QChar::ReplacementCharacter));
  return shown;
}

// `share` of the first colour over the second.
QColor Mixed(const QColor& first, const QColor& second, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(share * a + (1 - share) * b); };
  return {mix(first.red(), second.red()), mix(first.green(), second.green()),
          mix(first.blue(), second.blue())};
}

class DocumentWriter {
 public:
  DocumentWriter(QTextDocument& document, const QPalette& colours)
      : cursor_(&document),
        line_(QFontMetricsF(document.defaultFont()).lineSpacing()),
        codeFamily_(QFontDatabase::systemFont(QFontDatabase::FixedFont).family()),
        colours_(colours) {}

  void Write(const std::vector<TextBlock>& blocks);
  std::vector<PlacedCell> Take() { return std::move(cells_); }

 private:
  void WriteHeading(const TextBlock& block);
  void WriteParagraph(const TextBlock& block);
  void WriteCode(const TextBlock& block);
  void WriteTable(const TextBlock& block);
  void WritePicture(const TextBlock& block);
  void WriteCell(const TextCell& cell, const QTextCharFormat& look);
  QTextCharFormat LookOf(const TextRun& run, QTextCharFormat look) const;

  void BeginLine(const QTextBlockFormat& format);
  QTextFrame* BeginBox(double left, const QColor& ground);
  void EndFrame(const QTextFrame& frame);
  QTextBlockFormat Margins(double above, double below) const;
  double Left(const TextBlock& block) const { return kMarkerRoom * line_ * block.depth; }
  QColor Ink(double share) const {
    return Mixed(colours_.color(QPalette::Text), colours_.color(QPalette::Base), share);
  }

  QTextCursor cursor_;
  const double line_;  // everything is spaced by the height of a line: it fits any font
  const QString codeFamily_;
  const QPalette& colours_;
  std::vector<PlacedCell> cells_;
  bool fresh_ = true;  // the cursor stands on an empty line, which takes the next text
};

QTextBlockFormat DocumentWriter::Margins(double above, double below) const {
  QTextBlockFormat format;
  format.setTopMargin(above * line_);
  format.setBottomMargin(below * line_);
  format.setLineHeight(115, QTextBlockFormat::ProportionalHeight);
  return format;
}

void DocumentWriter::BeginLine(const QTextBlockFormat& format) {
  if (std::exchange(fresh_, false)) {
    cursor_.setBlockFormat(format);
  } else {
    cursor_.insertBlock(format, QTextCharFormat());
  }
}

QTextFrame* DocumentWriter::BeginBox(double left, const QColor& ground) {
  QTextFrameFormat format;
  format.setBackground(ground);
  format.setPadding(0.5 * line_);
  format.setLeftMargin(left);
  format.setTopMargin(0.3 * line_);
  format.setBottomMargin(0.6 * line_);
  QTextFrame* box = cursor_.insertFrame(format);
  fresh_ = true;
  return box;
}

// A frame is always followed by an empty line.
void DocumentWriter::EndFrame(const QTextFrame& frame) {
  cursor_.setPosition(frame.lastPosition() + 1);
  cursor_.setBlockCharFormat(QTextCharFormat());
  cursor_.setBlockFormat(QTextBlockFormat());
  fresh_ = true;
}

QTextCharFormat DocumentWriter::LookOf(const TextRun& run, QTextCharFormat look) const {
  if (run.bold) look.setFontWeight(QFont::Bold);
  if (run.italic) look.setFontItalic(true);
  if (run.code) look.setFontFamilies({codeFamily_});
  if (run.code) look.setFontFixedPitch(true);
  if (run.target.empty()) return look;
  look.setAnchor(true);
  look.setAnchorHref(Shown(run.target));
  look.setForeground(colours_.brush(QPalette::Link));
  look.setFontUnderline(true);
  return look;
}

void DocumentWriter::WriteCell(const TextCell& cell, const QTextCharFormat& look) {
  const int start = cursor_.position();
  for (const TextRun& run : cell.runs) cursor_.insertText(Shown(run.text), LookOf(run, look));
  cells_.push_back({cell.place, cell.Text().size(), start, start});
}

void DocumentWriter::WriteHeading(const TextBlock& block) {
  const int level = std::min(block.level, 3);
  QTextCharFormat look;
  look.setFontWeight(QFont::Bold);
  look.setProperty(QTextFormat::FontSizeAdjustment, 3 - level);
  QTextBlockFormat format = Margins(level == 1 ? 0.2 : 1.2, 0.3);
  format.setLeftMargin(Left(block));
  BeginLine(format);
  WriteCell(block.rows[0][0], look);
}

void DocumentWriter::WriteParagraph(const TextBlock& block) {
  QTextBlockFormat format = Margins(0, block.depth > 0 ? 0.3 : 0.6);
  format.setLeftMargin(Left(block));
  if (!block.marker.empty()) {
    format.setTextIndent(-kMarkerRoom * line_);
    format.setTabPositions({QTextOption::Tab(kMarkerRoom * line_, QTextOption::LeftTab)});
  }
  BeginLine(format);
  if (!block.marker.empty()) cursor_.insertText(Shown(block.marker) + '\t', QTextCharFormat());
  WriteCell(block.rows[0][0], QTextCharFormat());
}

void DocumentWriter::WriteCode(const TextBlock& block) {
  if (block.rows.empty()) return;
  const QTextFrame* box = BeginBox(Left(block), Ink(0.07));
  for (const auto& row : block.rows) {
    BeginLine(QTextBlockFormat());
    WriteCell(row[0], QTextCharFormat());
  }
  EndFrame(*box);
}

void DocumentWriter::WriteTable(const TextBlock& block) {
  QTextTableFormat format;
  format.setBorder(1);
  format.setBorderCollapse(true);
  format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
  format.setBorderBrush(Ink(0.3));
  format.setCellSpacing(0);
  format.setCellPadding(0.25 * line_);
  format.setLeftMargin(Left(block));
  format.setTopMargin(0.3 * line_);
  format.setBottomMargin(0.6 * line_);
  format.setHeaderRowCount(1);
  QTextTable* table = cursor_.insertTable(static_cast<int>(block.rows.size()),
                                          static_cast<int>(block.rows[0].size()), format);
  for (int row = 0; row < table->rows(); ++row) {
    for (int column = 0; column < table->columns(); ++column) {
      QTextTableCell cell = table->cellAt(row, column);
      QTextCharFormat look;
      if (row == 0) {
        QTextTableCellFormat head;
        head.setBackground(Ink(0.07));
        cell.setFormat(head);
        look.setFontWeight(QFont::Bold);
      }
      cursor_ = cell.firstCursorPosition();
      WriteCell(block.rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)], look);
    }
  }
  EndFrame(*table);
}

// The picture with its caption below.
void DocumentWriter::WritePicture(const TextBlock& block) {
  QTextCharFormat picture;
  picture.setObjectType(kPictureObject);
  picture.setProperty(kPictureFile, ToQt(block.target));
  QTextBlockFormat format = Margins(0.3, 0);
  format.setLeftMargin(Left(block));
  format.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
  BeginLine(format);
  const int begin = cursor_.position();
  cursor_.insertText(QString(QChar::ObjectReplacementCharacter), picture);
  QTextBlockFormat below = Margins(0.1, 0.8);
  below.setLeftMargin(Left(block));
  BeginLine(below);
  QTextCharFormat look;
  look.setFontItalic(true);
  look.setForeground(Ink(0.7));
  WriteCell(block.rows[0][0], look);
  cells_.back().begin = begin;
}

void DocumentWriter::Write(const std::vector<TextBlock>& blocks) {
  using Writing = void (DocumentWriter::*)(const TextBlock&);
  static constexpr Writing kWritings[] = {
      &DocumentWriter::WriteHeading, &DocumentWriter::WriteParagraph, &DocumentWriter::WriteCode,
      &DocumentWriter::WriteTable, &DocumentWriter::WritePicture};
  const QTextFrame* note = nullptr;
  for (const TextBlock& block : blocks) {
    if (!block.quoted && note != nullptr) EndFrame(*std::exchange(note, nullptr));
    if (block.quoted && note == nullptr) {
      note = BeginBox(Left(block), Mixed(colours_.color(QPalette::Highlight),
                                         colours_.color(QPalette::Base), 0.12));
    }
    (this->*kWritings[static_cast<std::size_t>(block.kind)])(block);
  }
}

template <class Value>
const PlacedCell* LastUpTo(Value wanted, Value PlacedCell::*part,
                           const std::vector<PlacedCell>& cells) {
  const auto behind =
      std::upper_bound(cells.begin(), cells.end(), wanted,
                       [part](Value one, const PlacedCell& cell) { return one < cell.*part; });
  return behind == cells.begin() ? nullptr : &*std::prev(behind);
}

}  // namespace

std::vector<PlacedCell> FillDocument(QTextDocument& document, const MarkdownPage& page,
                                     const QPalette& colours) {
  DocumentWriter writer(document, colours);
  writer.Write(page.blocks);
  return writer.Take();
}

int PositionOf(std::size_t place, const MarkdownPage& page, const std::vector<PlacedCell>& cells) {
  const PlacedCell* cell = CellOfPlace(place, cells);
  if (cell == nullptr) return 0;
  const std::size_t bytes = std::min(place - cell->place, cell->size);
  return cell->position + static_cast<int>(ToQt(page.plain.substr(cell->place, bytes)).size());
}

const PlacedCell* CellOfPlace(std::size_t place, const std::vector<PlacedCell>& cells) {
  return LastUpTo(place, &PlacedCell::place, cells);
}

const PlacedCell* CellOfPosition(int position, const std::vector<PlacedCell>& cells) {
  return LastUpTo(position, &PlacedCell::begin, cells);
}

}  // namespace ormel::ui
