#include "mapdata/palette.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "text/numbers.h"
#include "text/paths.h"
#include "text/text_search.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr int kLastColour = kPaletteColours - 1;

bool HoldsGoodPalette(TokenReader& reader) {
  int count = 0;
  std::string_view token;
  while (reader.Next(token)) {
    const double number = TextToNumber(token);
    if (number < 0 || number > kLargestColour || ++count > kPaletteColours) return false;
  }
  return count == kPaletteColours && reader.Error().empty();
}

Colour ColourOfNumber(double number) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  const auto whole =
      static_cast<std::int32_t>(std::clamp(HalfEvenRound(number), kLowest, kHighest));
  return static_cast<Colour>(whole) & kLargestColour;
}

}  // namespace

std::string CheckPaletteFile(const std::filesystem::path& path) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  return reader.Ok() && HoldsGoodPalette(reader.Value()) ? "GOOD" : "BAD";
}

Outcome<int> ReadPalette(const std::filesystem::path& path, Palette& palette) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (!reader.Ok()) return reader.Stop();
  int count = 0;
  std::string_view token;
  while (count < kPaletteColours && reader.Value().Next(token)) {
    palette.colours[static_cast<std::size_t>(count++)] = ColourOfNumber(TextToNumber(token));
  }
  if (!reader.Value().Error().empty()) return Failure{FailureKind::kDisk, reader.Value().Error()};
  return count;
}

Palette GreyPalette() {
  Palette palette;
  for (int i = 0; i < kPaletteColours; ++i) {
    palette.colours[static_cast<std::size_t>(i)] = Rgb(i, i, i);
  }
  return palette;
}

std::string PaletteFolder(std::string_view programFolder) {
  std::string folder = std::string(programFolder) + "/Palettes/";
  RepairPath(folder);
  return folder;
}

bool MeansDefaultPalette(std::string_view word) { return InSmallLetters(word) == "default"; }

std::string FindPalette(const std::string& word, std::string_view programFolder) {
  if (word.empty() || MeansDefaultPalette(word)) return {};
  std::error_code error;
  const std::string own = PaletteFolder(programFolder) + word;
  const bool isOwn = !std::filesystem::exists(word, error) && std::filesystem::exists(own, error);
  return isOwn ? own : word;
}

void DrawColourScale(Canvas& canvas, const Palette& palette) {
  const int pen = canvas.Width() / kLastColour + 1;
  const int before = (pen - 1) / 2;
  const auto pixelOf = [&](int unit) {
    return static_cast<int>(static_cast<long long>(unit) * canvas.Width() / kPaletteColours);
  };
  for (int i = 1; i <= kLastColour; ++i) {
    canvas.FillPixels(pixelOf(i - 1) - before, 0, pixelOf(i) - before + pen, canvas.Height(),
                      palette[i]);
  }
}

Canvas ColourScale(const Palette& palette) {
  Canvas scale(2 * kPaletteColours, kColourScaleHeight);
  DrawColourScale(scale, palette);
  return scale;
}

UnscaledColours::UnscaledColours(const RasterRange& range)
    : min_(range.min), range_((range.max == range.min ? range.max + 1 : range.max) - range.min) {}

}  // namespace ormel
