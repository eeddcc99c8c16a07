// Where windows open: plain geometry, in the pixels of the screen, y downwards. Sizes are those of
// windows with their titles and borders.
#pragma once

#include <vector>

namespace ormel::ui {

struct WindowSize {
  int width = 0;
  int height = 0;

  bool operator==(const WindowSize&) const = default;
};

struct WindowBox {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  int Right() const { return left + width; }
  int Bottom() const { return top + height; }
  bool operator==(const WindowBox&) const = default;
};

// A tool window on the part of the screen that the main window's strip leaves free: as large as it
// wants to be, or as that part allows. Each begins `step` further down and to the right than the
// one before; `number` counts those before. Where there is no room for that they begin again above.
WindowBox PlaceBelow(const WindowBox& free, WindowSize wanted, int step, int number);

// A dialog in the middle of its owner, moved as far as it must be to lie on the screen.
WindowBox PlaceOver(const WindowBox& screen, const WindowBox& owner, WindowSize wanted);

// A window that was to lie there, moved onto the screen, smaller when it is larger than that.
WindowBox OnScreen(const WindowBox& screen, WindowBox window);

// How wide the panels of a strip are that is `room` wide: each as wide as its text, and what is
// left is shared out. When there is not so much room the last panels are cut, the last one first.
std::vector<int> ShareWidth(std::vector<int> wanted, int room);

}  // namespace ormel::ui
