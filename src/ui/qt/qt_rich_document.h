// A page of rich text as the toolkit's document, in the fonts and colours of the desktop. The
// page's text is shown as it stands: the toolkit reads no marks in it and fetches nothing.
#pragma once

#include <cstddef>
#include <vector>

#include "text/markdown.h"

class QPalette;
class QTextDocument;

namespace ormel::ui {

// The property of a picture's format that holds its file.
inline constexpr int kPictureFile = 0x100000 + 1;
// The kind of its object in the document.
inline constexpr int kPictureObject = 0x1000 + 1;

// Where the lines of the page stand in the document, in the order of the page.
struct PlacedCell {
  std::size_t place = 0;  // of its first byte in the plain text
  std::size_t size = 0;   // in bytes
  int position = 0;       // of its first letter in the document
  int begin = 0;          // of what belongs to it: the picture above its caption
};

// Fills the empty document. Its pictures are objects of the kind kPictureObject, for which the
// document needs a handler (qt_rich_pictures.h).
std::vector<PlacedCell> FillDocument(QTextDocument& document, const MarkdownPage& page,
                                     const QPalette& colours);

// The position of a place in the document.
int PositionOf(std::size_t place, const MarkdownPage& page, const std::vector<PlacedCell>& cells);
// The line in which a place or a position lies; null before the first one.
const PlacedCell* CellOfPlace(std::size_t place, const std::vector<PlacedCell>& cells);
const PlacedCell* CellOfPosition(int position, const std::vector<PlacedCell>& cells);

}  // namespace ormel::ui
