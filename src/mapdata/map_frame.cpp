#include "mapdata/map_frame.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "mapdata/map_header.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kLargestSide = 32767;

// A text from a file as a message can show it: short, and without bytes that are no letters.
std::string Excerpt(const std::string& text) {
  constexpr std::size_t kLongest = 20;
  std::string shown = text.substr(0, kLongest);
  std::replace_if(
      shown.begin(), shown.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
  return shown + (text.size() > kLongest ? "..." : "");
}

// A side of a map: a whole number of cells from 1 to 32767.
Outcome<int> SideFrom(const std::string& path, const std::string& text, const char* what) {
  const double side = HalfEvenRound(TextToNumber(text));
  if (side >= 1 && side <= kLargestSide) return static_cast<int>(side);
  return Failure{FailureKind::kDamaged, path + ": the header gives \"" + Excerpt(text) + "\" " +
                                            what + "; a map has 1 to " +
                                            std::to_string(kLargestSide)};
}

}  // namespace

MapPlace CentreOf(const MapFrame& frame, int column, int row) {
  const double half = frame.cellsize / 2;
  return {frame.xllcorner + frame.cellsize * column - half,
          frame.yllcorner + frame.cellsize * (frame.nrows - row) + half};
}

Outcome<MapFrame> ReadMapFrame(const std::string& path) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  if (!header.Ok()) return header.Stop();
  const std::vector<std::string>& texts = header.Value().values;
  const Outcome<int> ncols = SideFrom(path, texts[0], "columns");
  if (!ncols.Ok()) return ncols.Stop();
  const Outcome<int> nrows = SideFrom(path, texts[1], "rows");
  if (!nrows.Ok()) return nrows.Stop();
  if (ClaimsTooMuch(path, ncols.Value(), nrows.Value())) {
    return Failure{FailureKind::kDamaged, path + ": is too short for " +
                                              std::to_string(ncols.Value()) + " columns and " +
                                              std::to_string(nrows.Value()) + " rows"};
  }
  MapFrame frame;
  frame.ncols = ncols.Value();
  frame.nrows = nrows.Value();
  frame.xllcorner = TextToNumber(texts[2]);
  frame.yllcorner = TextToNumber(texts[3]);
  frame.cellsize = TextToNumber(texts[4]);
  frame.texts = {texts[0], texts[1],    NumberText(frame.xllcorner), NumberText(frame.yllcorner),
                 texts[4], std::nullopt};
  return frame;
}

}  // namespace ormel
