#include "ui/window_place.h"

#include <gtest/gtest.h>

namespace ormel::ui {
namespace {

// A screen of 1000 x 700 of which a strip takes the upper 100.
constexpr WindowBox kScreen{0, 0, 1000, 700};
constexpr WindowBox kFree{0, 100, 1000, 600};

TEST(WindowPlaces, GoDownInStepsBelowTheStripAndBeginAgain) {
  const std::tuple<int, WindowSize, WindowBox> cases[] = {
      {0, {400, 300}, {0, 100, 400, 300}},
      {1, {400, 300}, {30, 130, 400, 300}},
      {10, {400, 300}, {300, 400, 400, 300}},  // its foot on that of the screen
      {11, {400, 300}, {0, 100, 400, 300}},
      {5, {400, 600}, {0, 100, 400, 600}},   // no step has room
      {3, {900, 300}, {90, 190, 900, 300}},  // three steps to the right edge
      {4, {900, 300}, {0, 100, 900, 300}},
      {7, {2000, 2000}, {0, 100, 1000, 600}}};
  for (const auto& [number, wanted, box] : cases) {
    EXPECT_EQ(PlaceBelow(kFree, wanted, 30, number), box) << number << " " << wanted.width;
  }
}

TEST(WindowPlaces, OfDialogsLieOverTheirOwnerAndOnTheScreen) {
  EXPECT_EQ(PlaceOver(kScreen, {200, 200, 400, 300}, {200, 100}), (WindowBox{300, 300, 200, 100}));
  EXPECT_EQ(PlaceOver(kScreen, {900, 650, 80, 40}, {300, 200}), (WindowBox{700, 500, 300, 200}));
  EXPECT_EQ(PlaceOver(kScreen, {-50, 0, 100, 100}, {300, 200}), (WindowBox{0, 0, 300, 200}));
  EXPECT_EQ(OnScreen(kScreen, {5000, -20, 1200, 100}), (WindowBox{0, 0, 1000, 100}));
}

TEST(StripPanels, AreCutFromTheLastAndShareWhatIsLeft) {
  using Widths = std::vector<int>;
  EXPECT_EQ(ShareWidth({50, 60, 70}, 180), (Widths{50, 60, 70}));
  EXPECT_EQ(ShareWidth({50, 60, 70}, 191), (Widths{53, 64, 74}));
  EXPECT_EQ(ShareWidth({50, 60, 300}, 200), (Widths{50, 60, 90}));
  EXPECT_EQ(ShareWidth({50, 60, 70}, 80), (Widths{50, 30, 0}));
  EXPECT_EQ(ShareWidth({}, 80), Widths{});
}

}  // namespace
}  // namespace ormel::ui
