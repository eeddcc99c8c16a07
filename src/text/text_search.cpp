#include "text/text_search.h"

#include <algorithm>

namespace ormel {

std::string InSmallLetters(std::string_view text) {
  std::string small(text);
  for (char& letter : small) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return small;
}

std::vector<std::string> WantedTexts(std::string_view query) {
  std::vector<std::string> wanted;
  std::string text;
  bool quoted = false;
  const auto end = [&] {
    if (!text.empty()) wanted.push_back(text);
    text.clear();
  };
  for (const char letter : query) {
    if (letter == '"') {
      end();
      quoted = !quoted;
    } else if (letter == ' ' && !quoted) {
      end();
    } else {
      text += letter;
    }
  }
  end();
  return wanted;
}

std::vector<TextPlace> FindPlaces(std::string_view text, std::span<const std::string> wanted) {
  const std::string small = InSmallLetters(text);
  std::vector<TextPlace> found;
  for (const std::string& one : wanted) {
    const std::string needle = InSmallLetters(one);
    for (std::size_t at = 0; !needle.empty() && (at = small.find(needle, at)) != std::string::npos;
         at += needle.size()) {
      found.push_back({at, needle.size()});
    }
  }
  std::sort(found.begin(), found.end(),
            [](const TextPlace& a, const TextPlace& b) { return a.start < b.start; });
  std::vector<TextPlace> places;
  for (const TextPlace& place : found) {
    if (places.empty() || place.start > places.back().start + places.back().length) {
      places.push_back(place);
    } else {
      TextPlace& last = places.back();
      last.length = std::max(last.start + last.length, place.start + place.length) - last.start;
    }
  }
  return places;
}

bool HoldsAll(std::string_view text, std::span<const std::string> wanted) {
  const std::string small = InSmallLetters(text);
  return std::all_of(wanted.begin(), wanted.end(), [&](const std::string& one) {
    return small.find(InSmallLetters(one)) != std::string::npos;
  });
}

}  // namespace ormel
