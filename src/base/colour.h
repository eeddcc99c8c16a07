// A colour as maps, palettes and settings hold it: one integer, red + 256 * green + 65536 * blue.
#pragma once

#include <cstdint>

namespace ormel {

using Colour = std::uint32_t;

inline constexpr Colour kBlack = 0;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kLargestColour = 0xFFFFFF;

constexpr Colour Rgb(int red, int green, int blue) {
  return static_cast<Colour>(red) | static_cast<Colour>(green) << 8 |
         static_cast<Colour>(blue) << 16;
}
constexpr std::uint8_t Red(Colour colour) { return static_cast<std::uint8_t>(colour); }
constexpr std::uint8_t Green(Colour colour) { return static_cast<std::uint8_t>(colour >> 8); }
constexpr std::uint8_t Blue(Colour colour) { return static_cast<std::uint8_t>(colour >> 16); }

}  // namespace ormel
