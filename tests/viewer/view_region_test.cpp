#include "viewer/view_region.h"

#include <gtest/gtest.h>

#include <limits>

namespace ormel {
namespace {

constexpr ViewRegion kWhole;
constexpr ViewRegion kQuarter{0.5, 0.5, 0.25, 0.25};
// At most a tenth of the view; a cell of ten columns is more: 0.1 * 1.5^4 of it is the first step
// that is not less.
constexpr double kTenth = 0.1 * 0.25;
constexpr double kCell = 0.1 * 1.5 * 1.5 * 1.5 * 1.5 * 0.25;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kHuge = std::numeric_limits<double>::infinity();

TEST(ViewRegion, ZoomsAndPansWithinTheMap) {
  using enum PanDirection;
  const struct {
    const char* why;
    ViewRegion view, wanted;
  } cases[] = {
      {"zooming keeps the middle", ZoomBy(kWhole, 0.8), {0.1, 0.1, 0.8, 0.8}},
      {"and again", ZoomBy({0.1, 0.1, 0.8, 0.8}, 0.8), {0.1 + 0.8 * 0.1, 0.18, 0.64, 0.64}},
      {"the whole map is the farthest", ZoomBy(kWhole, 1.25), kWhole},
      {"the factor is cut down to 1 / 0.9", ZoomBy({0.1, 0.1, 0.9, 0.9}, 1.25), kWhole},
      {"the lower right corner holds the view back: it would end at 1.05",
       ZoomBy({0.6, 0.6, 0.4, 0.4}, 1.25),
       {0.5, 0.5, 0.5, 0.5}},
      {"and the upper left one", ZoomBy({0, 0, 0.4, 0.4}, 1.25), {0, 0, 0.5, 0.5}},
      {"a tenth", PanBy(kQuarter, kLeft, 100, 100), {0.5 - kTenth, 0.5, 0.25, 0.25}},
      {"a tenth", PanBy(kQuarter, kRight, 100, 100), {0.5 + kTenth, 0.5, 0.25, 0.25}},
      {"a tenth", PanBy(kQuarter, kUp, 100, 100), {0.5, 0.5 - kTenth, 0.25, 0.25}},
      {"a tenth", PanBy(kQuarter, kDown, 100, 100), {0.5, 0.5 + kTenth, 0.25, 0.25}},
      {"at least a column", PanBy(kQuarter, kRight, 10, 100), {0.5 + kCell, 0.5, 0.25, 0.25}},
      {"at least a row", PanBy(kQuarter, kUp, 100, 10), {0.5, 0.5 - kCell, 0.25, 0.25}},
      {"to the left edge", PanBy({0.01, 0.7, 0.2, 0.2}, kLeft, 100, 100), {0, 0.7, 0.2, 0.2}},
      {"to the lower edge", PanBy({0, 0.79, 0.2, 0.2}, kDown, 100, 100), {0, 0.8, 0.2, 0.2}},
      {"nowhere to go", PanBy(kWhole, kRight, 100, 100), kWhole},
      {"a centred place", CentredOn({0, 0, 0.4, 0.4}, {0.5, 0.7}), {0.3, 0.5, 0.4, 0.4}},
      {"stops at the edge", CentredOn({0, 0, 0.4, 0.4}, {0.95, 0.05}), {0.6, 0, 0.4, 0.4}},
      // 0.4 wide and 0.2 high around (0.4, 0.4): the height grows.
      {"from corner", ZoomedToBox(kWhole, {0.2, 0.3}, {0.6, 0.5}), {0.2, 0.2, 0.4, 0.4}},
      {"to any corner", ZoomedToBox(kWhole, {0.6, 0.3}, {0.2, 0.5}), {0.2, 0.2, 0.4, 0.4}},
      {"a box at the edge", ZoomedToBox(kWhole, {0.3, 0.9}, {0.8, 1}), {0.3, 0.5, 0.5, 0.5}},
      {"a box without a side", ZoomedToBox(kQuarter, {0.3, 0.3}, {0.3, 0.6}), kQuarter},
      {"no numbers", InsideMap({kNaN, kNaN, kNaN, kNaN}), kWhole},
      {"no sizes", InsideMap({kHuge, -kHuge, 2, 0}), kWhole},
      {"outside", InsideMap({0.9, -1, 0.5, 0.5}), {0.5, 0, 0.5, 0.5}},
  };
  for (const auto& [why, view, wanted] : cases) {
    SCOPED_TRACE(why);
    EXPECT_DOUBLE_EQ(view.x1, wanted.x1);
    EXPECT_DOUBLE_EQ(view.y1, wanted.y1);
    EXPECT_DOUBLE_EQ(view.ZW, wanted.ZW);
    EXPECT_DOUBLE_EQ(view.ZH, wanted.ZH);
  }
}

// However the way in and out was rounded, an export of the whole map must have all its columns.
TEST(ViewRegion, OutAgainIsExactlyTheWholeMap) {
  for (int steps = 1; steps <= 80; ++steps) {
    ViewRegion view;
    for (int i = 0; i < steps; ++i) view = ZoomBy(view, kZoomInFactor);
    for (int i = 0; i < steps + 1; ++i) view = ZoomBy(view, kZoomOutFactor);
    EXPECT_EQ(view, kWhole) << steps << " steps";
  }
}

TEST(ViewRegion, ZoomingInEndsBeforePlacesBecomeEqual) {
  ViewRegion view;
  for (int i = 0; i < 5000; ++i) view = ZoomBy(view, kZoomInFactor);
  EXPECT_GE(view.ZW, 1e-9);
  EXPECT_LT(view.ZW, 2e-9);
  EXPECT_NE(PanBy(view, PanDirection::kRight, 10, 10).x1, view.x1);
}

TEST(ViewRegion, TheWheelKeepsThePlaceUnderIt) {
  const ViewRegion view{0.2, 0.3, 0.5, 0.5};
  const MapFraction mouse{0.9, 0.25};
  for (const double factor : {0.8, 0.512, 1.25}) {
    const MapFraction before = PlaceOnMap(view, mouse);
    const MapFraction after = PlaceOnMap(ZoomAt(view, factor, mouse), mouse);
    EXPECT_NEAR(after.x, before.x, 1e-12) << factor;
    EXPECT_NEAR(after.y, before.y, 1e-12) << factor;
  }
}

}  // namespace
}  // namespace ormel
