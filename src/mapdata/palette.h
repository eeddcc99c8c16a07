// Palettes: how a cell's value becomes a colour. A palette has 256 colours, numbered 0 to 255 like
// the values of a scaled map. Its file (.ptf) is a text of 256 whole numbers, one a line, colour 0
// first; a number is red + 256 * green + 65536 * blue.
//
// A cell without a colour number (NODATA, masked, outside an unscaled map's 0 to 255) is drawn in
// the constraint colour, which is no part of the palette.
#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/canvas.h"
#include "base/colour.h"
#include "base/outcome.h"
#include "mapdata/raster.h"
#include "text/numbers.h"

namespace ormel {

inline constexpr int kPaletteColours = 256;
inline constexpr int kColourScaleHeight = 18;  // pixels

struct Palette {
  std::array<Colour, kPaletteColours> colours{};

  // `number` from 0 to 255, as the routines below return it.
  Colour operator[](int number) const { return colours[static_cast<std::size_t>(number)]; }
};

// "GOOD" when the file is there and holds exactly 256 numbers from 0 to 16777215, else "BAD". A
// word counts as the number 0.
std::string CheckPaletteFile(const std::filesystem::path& path);

// Reads numbers into the colours from 0 upward, at most 256, and returns how many there were.
// Fewer leave the other colours as they were, so that a damaged file can still be looked at. A
// number is rounded half to even and limited to 32 bits; its low 24 bits are the colour. Fails when
// the file cannot be opened or read; the colours read up to there stay.
[[nodiscard]] Outcome<int> ReadPalette(const std::filesystem::path& path, Palette& palette);

// The grey palette in which a map is shown when the default palette cannot be read.
Palette GreyPalette();

// The folder that palette dialogs offer, with a separator at its end.
std::string PaletteFolder(std::string_view programFolder);

// Whether a model's word for its palette means that of the settings: "default", in letters of any
// size.
bool MeansDefaultPalette(std::string_view word);

// The path of a model's palette, of which the model holds a path or the name alone: then it is
// looked for among the program's own. Empty: that of the settings.
std::string FindPalette(const std::string& word, std::string_view programFolder);

// Draws the colours 1 to 255 side by side over the whole height, on a scale 256 units wide: colour
// i from i - 1 to i, and as far beyond as its pen reaches. Colour 0 has no stroke.
void DrawColourScale(Canvas& canvas, const Palette& palette);
// The same on a canvas of its own, two pixels wide for each colour.
Canvas ColourScale(const Palette& palette);

// The colour number of a value of a scaled map: the nearest whole number, ties to even (126.5 is
// 126, 127.5 is 128). Values outside 0 to 255 take the nearer end.
inline int ColourNumber(double value) {
  constexpr double kLast = kPaletteColours - 1;
  if (!(value > 0)) return 0;  // what is not a number, too
  return static_cast<int>(RoundSmall(value < kLast ? value : kLast));
}

// Whether a value of an unscaled map that is viewed as it stands has a colour number: from 0 to
// 255.
inline bool HasColourNumber(double value) { return value >= 0 && value <= kPaletteColours - 1; }

// The colour numbers of an unscaled map that is viewed in a scaled version: its smallest value has
// 0, its largest 255. A map with a single value has 0 everywhere.
class UnscaledColours {
 public:
  explicit UnscaledColours(const RasterRange& range);

  // `value` is a value of that map, not its NODATA.
  int Number(double value) const {
    return ColourNumber((kPaletteColours - 1) * (value - min_) / range_);
  }

 private:
  double min_;
  double range_;
};

}  // namespace ormel
