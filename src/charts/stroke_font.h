// The letters of charts, as lines that a pen follows: they look alike in every size, on every
// machine, and need no font of the system. There are the printable letters of ASCII, the letters of
// western Europe with their accents, and a few signs of units (degree, square, micro).
//
// Lengths are in parts of which a capital is kCapitalParts high. x runs to the right from the left
// end of the letter, y down from the top of the capitals; what hangs below the foot of the line
// reaches a third of a capital lower, and accents on capitals stand as much higher.
#pragma once

#include <string_view>
#include <vector>

#include "charts/ink.h"

namespace ormel {

inline constexpr int kCapitalParts = 12;
inline constexpr int kLetterGapParts = 4;  // between a letter and the next
inline constexpr double kLetterPenParts = 1.7;

struct StrokeLetter {
  int width = 0;
  std::vector<std::vector<InkPoint>> lines;  // one point alone is a dot
};

// Takes the first letter off `text`, which is UTF-8 and must not be empty. A letter that is not in
// the font, and each byte that is no part of one, becomes an empty box; a control character becomes
// a blank.
StrokeLetter TakeLetter(std::string_view& text);
// Its width alone.
int TakeLetterWidth(std::string_view& text);

// The first letter of `text` as a code point; U+FFFD for a byte that belongs to none.
char32_t TakeCodePoint(std::string_view& text);

}  // namespace ormel
