#include "charts/stroke_font.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace ormel {
namespace {

// The lines of a letter are separated by "|", their corners are pairs of digits, x and y. A digit
// is 0 to 9 or A to G, which are 10 to 16.
struct Shape {
  int width;
  std::string_view lines;
};

constexpr char32_t kFirstShape = U' ';
constexpr Shape kShapes[] = {
    {4, ""},                                                              // blank
    {0, "00 08|0C"},                                                      // !
    {3, "00 03|30 33"},                                                   // "
    {8, "30 1C|70 5C|04 84|08 88"},                                       // #
    {8, "83 61 21 03 04 26 66 88 89 6B 2B 09|40 4D"},                     // $
    {10, "A0 0C|10 30 41 43 34 14 03 01 10|78 98 A9 AB 9C 7C 6B 69 78"},  // %
    {9, "9C 13 11 20 40 51 53 07 0A 2C 5C 97"},                           // &
    {0, "00 03"},                                                         // '
    {3, "30 12 05 09 1C 3E"},                                             // (
    {3, "00 22 35 39 2C 0E"},                                             // )
    {6, "31 37|02 66|62 06"},                                             // *
    {8, "06 86|42 4A"},                                                   // +
    {1, "1B 1C 0E"},                                                      // ,
    {6, "06 66"},                                                         // -
    {0, "0C"},                                                            // .
    {8, "0C 80"},                                                         // /
    {8, "20 60 82 8A 6C 2C 0A 02 20"},                                    // 0
    {8, "22 40 4C"},                                                      // 1
    {8, "02 20 60 82 84 0C 8C"},                                          // 2
    {8, "02 20 60 82 84 66 26|66 88 8A 6C 2C 0A"},                        // 3
    {8, "6C 60 08 88"},                                                   // 4
    {8, "80 00 04 64 86 8A 6C 2C 0A"},                                    // 5
    {8, "82 60 20 02 0A 2C 6C 8A 88 66 26 08"},                           // 6
    {8, "00 80 2C"},                                                      // 7
    {8, "26 04 02 20 60 82 84 66 26 08 0A 2C 6C 8A 88 66"},               // 8
    {8, "84 66 26 04 02 20 60 82 8A 6C 2C 0A"},                           // 9
    {0, "04|0A"},                                                         // :
    {1, "14|1B 1C 0E"},                                                   // ;
    {8, "82 07 8C"},                                                      // <
    {8, "05 85|09 89"},                                                   // =
    {8, "02 87 0C"},                                                      // >
    {7, "02 20 50 72 73 36 38|3C"},                                       // ?
    {12, "AC 3C 09 03 30 90 C3 C8 B9 99 84|84 64 45 48 59 69 87"},        // @
    {8, "0C 40 8C|18 78"},                                                // A
    {8, "06 56 74 72 50 00 0C 6C 8A 88 66 56"},                           // B
    {9, "93 60 30 03 09 3C 6C 99"},                                       // C
    {9, "00 0C 6C 99 93 60 00"},                                          // D
    {8, "80 00 0C 8C|06 66"},                                             // E
    {8, "80 00 0C|06 66"},                                                // F
    {9, "93 60 30 03 09 3C 6C 99 97 57"},                                 // G
    {8, "00 0C|80 8C|06 86"},                                             // H
    {0, "00 0C"},                                                         // I
    {6, "60 6A 4C 2C 0A"},                                                // J
    {8, "00 0C|80 08|35 8C"},                                             // K
    {7, "00 0C 7C"},                                                      // L
    {10, "0C 00 58 A0 AC"},                                               // M
    {8, "0C 00 8C 80"},                                                   // N
    {10, "30 70 A3 A9 7C 3C 09 03 30"},                                   // O
    {8, "0C 00 60 82 85 67 07"},                                          // P
    {10, "30 70 A3 A9 7C 3C 09 03 30|69 AE"},                             // Q
    {8, "0C 00 60 82 84 66 06|46 8C"},                                    // R
    {8, "82 60 20 02 04 26 66 88 8A 6C 2C 0A"},                           // S
    {8, "00 80|40 4C"},                                                   // T
    {8, "00 0A 2C 6C 8A 80"},                                             // U
    {8, "00 4C 80"},                                                      // V
    {12, "00 3C 62 9C C0"},                                               // W
    {8, "00 8C|80 0C"},                                                   // X
    {8, "00 46 80|46 4C"},                                                // Y
    {8, "00 80 0C 8C"},                                                   // Z
    {3, "30 00 0E 3E"},                                                   // [
    {8, "00 8C"},                                                         // backslash
    {3, "00 30 3E 0E"},                                                   // ]
    {6, "04 30 64"},                                                      // ^
    {8, "0E 8E"},                                                         // _
    {2, "00 23"},                                                         // `
    {7, "15 24 54 76 7C|78 28 09 0B 1C 4C 7A"},                           // a
    {7, "00 0C|0A 2C 5C 7A 76 54 24 06"},                                 // b
    {6, "66 54 24 06 0A 2C 5C 6A"},                                       // c
    {7, "70 7C|7A 5C 2C 0A 06 24 54 76"},                                 // d
    {7, "08 78 76 54 24 06 0A 2C 5C 7A"},                                 // e
    {5, "50 40 22 2C|04 54"},                                             // f
    {7, "76 54 24 06 0A 2C 5C 7A|74 7E 5G 2G 0F"},                        // g
    {7, "00 0C|06 24 54 76 7C"},                                          // h
    {0, "04 0C|00"},                                                      // i
    {2, "24 2E 0G|20"},                                                   // j
    {6, "00 0C|64 0A|28 6C"},                                             // k
    {2, "00 0A 2C"},                                                      // l
    {10, "04 0C|06 24 34 56 5C|56 74 84 A6 AC"},                          // m
    {7, "04 0C|06 24 54 76 7C"},                                          // n
    {7, "24 54 76 7A 5C 2C 0A 06 24"},                                    // o
    {7, "04 0G|06 24 54 76 7A 5C 2C 0A"},                                 // p
    {7, "74 7G|76 54 24 06 0A 2C 5C 7A"},                                 // q
    {4, "04 0C|06 24 44"},                                                // r
    {6, "65 54 14 05 07 18 58 69 6B 5C 1C 0B"},                           // s
    {5, "20 2A 4C 5C|04 54"},                                             // t
    {7, "04 0A 2C 5C 7A|74 7C"},                                          // u
    {6, "04 3C 64"},                                                      // v
    {10, "04 2C 55 8C A4"},                                               // w
    {6, "04 6C|64 0C"},                                                   // x
    {6, "04 3C|64 3C 2F 1G 0G"},                                          // y
    {6, "04 64 0C 6C"},                                                   // z
    {4, "40 30 22 25 07 29 2C 3E 4E"},                                    // {
    {0, "00 0E"},                                                         // |
    {4, "00 10 22 25 47 29 2C 1E 0E"},                                    // }
    {8, "08 26 36 58 68 86"},                                             // ~
};

struct Sign {
  char32_t code;
  Shape shape;
};
constexpr Sign kSigns[] = {
    {U'\u00B0', {4, "10 30 41 43 34 14 03 01 10"}},           // degree
    {U'\u00B1', {8, "05 85|41 49|0C 8C"}},                    // plus or minus
    {U'\u00B2', {4, "01 10 30 41 42 06 46"}},                 // squared
    {U'\u00B3', {4, "00 40 22 32 43 45 36 16 05"}},           // cubed
    {U'\u00B5', {7, "04 0G|0A 2C 5C 7A|74 7C"}},              // micro
    {U'\u03BC', {7, "04 0G|0A 2C 5C 7A|74 7C"}},              // mu
    {U'\u00D7', {6, "04 6A|64 0A"}},                          // times
    {U'\u00B7', {0, "07"}},                                   // middle dot
    {U'\u2212', {8, "06 86"}},                                // minus
    {U'\u2013', {8, "07 87"}},                                // dash
    {U'\u2019', {0, "00 03"}},                                // apostrophe
    {U'\u00D8', {10, "30 70 A3 A9 7C 3C 09 03 30|0C A0"}},    // O with a stroke
    {U'\u00F8', {7, "24 54 76 7A 5C 2C 0A 06 24|0D 73"}},     // o with a stroke
    {U'\u00DF', {7, "0C 02 20 40 62 63 45 46 68 6A 5C 3C"}},  // sharp s
    {U'\u00C6', {12, "0C 50 C0|60 6C CC|28 68|66 B6"}},       // AE
    {U'\u00E6', {12, "15 24 44 66 6C|68 28 09 0B 1C 4C 6A 8C AC CA|68 C8 C6 A4 84 66"}},  // ae
};

constexpr Shape kBox{6, "00 60 6C 0C 00"};
// Under an accent.
constexpr Shape kDotlessI{4, "24 2C"};
constexpr Shape kWideI{4, "20 2C"};

// Letters that are another one with an accent, and the accents: kAccents by their letter.
constexpr std::u32string_view kAccented = U"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÑÒÓÔÕÖÙÚÛÜÝàáâãäåçèéêëìíîïñòóôõöùúûüýÿ";
constexpr std::string_view kBases = "AAAAAACEEEEIIIINOOOOOUUUUYaaaaaaceeeeiiiinooooouuuuyy";
constexpr std::string_view kAccentOf = "`'^~:o,`'^:`'^:~`'^~:`'^:'`'^~:o,`'^:`'^:~`'^~:`'^:':";
static_assert(kAccented.size() == kBases.size() && kAccented.size() == kAccentOf.size());

struct Accent {
  std::string_view lines;  // over, or under, a small letter that is kAccentWidth parts wide
  char letter;
  bool isBelow = false;
};
constexpr int kAccentWidth = 6;
constexpr int kRiseOnCapitals = 4;
constexpr Accent kAccents[] = {
    {"10 42", '`'},
    {"50 22", '\''},
    {"02 30 62", '^'},
    {"02 20 42 60", '~'},
    {"11|51", ':'},
    {"20 40 51 42 22 11 20", 'o'},
    {"3C 4E 2G 1G", ',', true},
};

int Digit(char c) { return c <= '9' ? c - '0' : c - 'A' + 10; }

void AddLines(std::string_view lines, double right, double down, StrokeLetter& letter) {
  bool begins = true;
  for (std::size_t i = 0; i + 1 < lines.size(); i += 3) {
    if (begins) letter.lines.emplace_back();
    letter.lines.back().push_back({right + Digit(lines[i]), down + Digit(lines[i + 1])});
    begins = i + 2 < lines.size() && lines[i + 2] == '|';
  }
}

// A letter as the font holds it: a shape, and an accent that stands so many parts higher than over
// a small letter.
struct Entry {
  Shape shape;
  std::string_view accent;
  int rise = 0;
};

Shape ShapeOf(char32_t code) { return kShapes[code - kFirstShape]; }

Entry AccentedEntry(std::size_t place) {
  const char base = kBases[place];
  const Accent& accent =
      *std::find_if(std::begin(kAccents), std::end(kAccents),
                    [&](const Accent& one) { return one.letter == kAccentOf[place]; });
  const Shape shape = base == 'i'   ? kDotlessI
                      : base == 'I' ? kWideI
                                    : ShapeOf(static_cast<unsigned char>(base));
  return {shape, accent.lines, base < 'a' && !accent.isBelow ? kRiseOnCapitals : 0};
}

Entry EntryOf(char32_t code) {
  if (code < kFirstShape) return {ShapeOf(kFirstShape), {}};
  if (code < kFirstShape + std::size(kShapes)) return {ShapeOf(code), {}};
  const auto* sign = std::find_if(std::begin(kSigns), std::end(kSigns),
                                  [code](const Sign& one) { return one.code == code; });
  if (sign != std::end(kSigns)) return {sign->shape, {}};
  const std::size_t place = kAccented.find(code);
  return place == std::u32string_view::npos ? Entry{kBox, {}} : AccentedEntry(place);
}

}  // namespace

char32_t TakeCodePoint(std::string_view& text) {
  constexpr char32_t kBroken = 0xFFFD;
  constexpr struct {
    unsigned char mask, head;
    char32_t least;
  } kForms[] = {{0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};
  const auto head = static_cast<unsigned char>(text[0]);
  std::size_t length = 0;
  while (length < std::size(kForms) && (head & kForms[length].mask) != kForms[length].head)
    ++length;
  char32_t code = length < std::size(kForms) ? head & ~kForms[length].mask : 0U;
  bool whole = length < std::size(kForms) && length < text.size();
  for (std::size_t i = 1; whole && i <= length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    whole = (next & 0xC0U) == 0x80U;
    code = code << 6U | (next & 0x3FU);
  }
  whole = whole && code >= kForms[length].least && code <= 0x10FFFF;
  text.remove_prefix(whole ? length + 1 : 1);
  return whole ? code : kBroken;
}

StrokeLetter TakeLetter(std::string_view& text) {
  const Entry entry = EntryOf(TakeCodePoint(text));
  StrokeLetter letter{entry.shape.width, {}};
  AddLines(entry.shape.lines, 0, 0, letter);
  AddLines(entry.accent, (entry.shape.width - kAccentWidth) / 2.0, -entry.rise, letter);
  return letter;
}

int TakeLetterWidth(std::string_view& text) { return EntryOf(TakeCodePoint(text)).shape.width; }

}  // namespace ormel
