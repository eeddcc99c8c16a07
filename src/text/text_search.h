// Finding words in a text. Letters count alike in both cases, as far as they are ASCII.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ormel {

struct TextPlace {
  std::size_t start = 0;  // in bytes
  std::size_t length = 0;
};

// What a person looks for: the words of `query`; words between double quotes are one. A quote that
// is not closed reaches to the end.
std::vector<std::string> WantedTexts(std::string_view query);

// All places of all the wanted texts, first to last. Those that touch or overlap are one place.
// An empty text is nowhere.
std::vector<TextPlace> FindPlaces(std::string_view text, std::span<const std::string> wanted);

// Whether each of them occurs.
bool HoldsAll(std::string_view text, std::span<const std::string> wanted);

// ASCII letters in small, all other bytes as they are.
std::string InSmallLetters(std::string_view text);

}  // namespace ormel
