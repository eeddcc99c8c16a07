#include "ui/window_place.h"

#include <algorithm>
#include <numeric>

namespace ormel::ui {

WindowBox OnScreen(const WindowBox& screen, WindowBox window) {
  window.width = std::min(window.width, screen.width);
  window.height = std::min(window.height, screen.height);
  window.left = std::clamp(window.left, screen.left, screen.Right() - window.width);
  window.top = std::clamp(window.top, screen.top, screen.Bottom() - window.height);
  return window;
}

WindowBox PlaceBelow(const WindowBox& free, WindowSize wanted, int step, int number) {
  WindowBox window = OnScreen(free, {free.left, free.top, wanted.width, wanted.height});
  // As many steps as there is room for both ways; a window that is as high as the screen has none.
  const int room = std::min(free.width - window.width, free.height - window.height);
  const int places = room / std::max(step, 1) + 1;
  window.left += number % places * step;
  window.top += number % places * step;
  return window;
}

WindowBox PlaceOver(const WindowBox& screen, const WindowBox& owner, WindowSize wanted) {
  return OnScreen(screen,
                  {owner.left + (owner.width - wanted.width) / 2,
                   owner.top + (owner.height - wanted.height) / 2, wanted.width, wanted.height});
}

std::vector<int> ShareWidth(std::vector<int> wanted, int room) {
  int left = room - std::accumulate(wanted.begin(), wanted.end(), 0);
  for (auto panel = wanted.rbegin(); panel != wanted.rend() && left < 0; ++panel) {
    const int cut = std::min(*panel, -left);
    *panel -= cut;
    left += cut;
  }
  for (std::size_t i = 0; i < wanted.size() && left > 0; ++i) {
    const int share = left / static_cast<int>(wanted.size() - i);
    wanted[i] += share;
    left -= share;
  }
  return wanted;
}

}  // namespace ormel::ui
