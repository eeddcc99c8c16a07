#include "viewer/view_region.h"

#include <gtest/gtest.h>

#include <limits>

namespace ormel {
namespace {

constexpr ViewRegion kWhole;

void ExpectView(const ViewRegion& view, double x1, double y1, double ZW, double ZH) {
  EXPECT_DOUBLE_EQ(view.x1, x1);
  EXPECT_DOUBLE_EQ(view.y1, y1);
  EXPECT_DOUBLE_EQ(view.ZW, ZW);
  EXPECT_DOUBLE_EQ(view.ZH, ZH);
}

TEST(ViewRegion, ZoomingKeepsTheMiddle) {
  ViewRegion view = ZoomBy(kWhole, 0.8);
  ExpectView(view, 0.1, 0.1, 0.8, 0.8);
  view = ZoomBy(view, 0.8);
  ExpectView(view, 0.1 + 0.8 * 0.1, 0.18, 0.64, 0.64);
}

TEST(ViewRegion, TheWholeMapIsTheFarthest) {
  EXPECT_EQ(ZoomBy(kWhole, 1.25), kWhole);
  EXPECT_EQ(ZoomBy({0.1, 0.1, 0.9, 0.9}, 1.25), kWhole);  // the factor is cut down to 1 / 0.9
}

TEST(ViewRegion, AtACornerTheEdgeHoldsTheViewBack) {
  // From the lower right corner: the middle would stay at 0.8, but then the view would end at 1.05.
  ExpectView(ZoomBy({0.6, 0.6, 0.4, 0.4}, 1.25), 0.5, 0.5, 0.5, 0.5);
  ExpectView(ZoomBy({0, 0, 0.4, 0.4}, 1.25), 0, 0, 0.5, 0.5);
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

TEST(ViewRegion, AKeyMovesATenthOfTheView) {
  const ViewRegion view{0.5, 0.5, 0.25, 0.25};
  ExpectView(PanBy(view, PanDirection::kLeft, 100, 100), 0.5 - 0.025, 0.5, 0.25, 0.25);
  ExpectView(PanBy(view, PanDirection::kRight, 100, 100), 0.5 + 0.025, 0.5, 0.25, 0.25);
  ExpectView(PanBy(view, PanDirection::kUp, 100, 100), 0.5, 0.5 - 0.025, 0.25, 0.25);
  ExpectView(PanBy(view, PanDirection::kDown, 100, 100), 0.5, 0.5 + 0.025, 0.25, 0.25);
}

TEST(ViewRegion, AKeyMovesAtLeastACell) {
  const ViewRegion view{0.5, 0.5, 0.25, 0.25};
  // 0.1 of the view is less than a cell of ten: 0.1 * 1.5^4 of it is the first that is not.
  const double step = 0.1 * 1.5 * 1.5 * 1.5 * 1.5 * 0.25;
  ExpectView(PanBy(view, PanDirection::kRight, 10, 100), 0.5 + step, 0.5, 0.25, 0.25);
  ExpectView(PanBy(view, PanDirection::kUp, 100, 10), 0.5, 0.5 - step, 0.25, 0.25);
}

TEST(ViewRegion, PanningEndsAtTheEdge) {
  const ViewRegion view{0.01, 0.79, 0.2, 0.2};
  ExpectView(PanBy(view, PanDirection::kLeft, 100, 100), 0, 0.79, 0.2, 0.2);
  ExpectView(PanBy(view, PanDirection::kDown, 100, 100), 0.01, 0.8, 0.2, 0.2);
  EXPECT_EQ(PanBy(kWhole, PanDirection::kRight, 100, 100), kWhole);
}

TEST(ViewRegion, ACentredPlaceStopsAtTheEdge) {
  ExpectView(CentredOn({0, 0, 0.4, 0.4}, {0.5, 0.7}), 0.3, 0.5, 0.4, 0.4);
  ExpectView(CentredOn({0, 0, 0.4, 0.4}, {0.95, 0.05}), 0.6, 0, 0.4, 0.4);
}

TEST(ViewRegion, ABoxMayBeDrawnFromAnyCorner) {
  for (const bool fromRight : {false, true}) {
    for (const bool fromBelow : {false, true}) {
      const MapFraction a{fromRight ? 0.6 : 0.2, fromBelow ? 0.5 : 0.3};
      const MapFraction b{fromRight ? 0.2 : 0.6, fromBelow ? 0.3 : 0.5};
      // 0.4 wide and 0.2 high around (0.4, 0.4): the height grows.
      ExpectView(ZoomedToBox(kWhole, a, b), 0.2, 0.2, 0.4, 0.4);
    }
  }
}

TEST(ViewRegion, ABoxAtTheEdgeIsMovedInside) {
  ExpectView(ZoomedToBox(kWhole, {0.3, 0.9}, {0.8, 1}), 0.3, 0.5, 0.5, 0.5);
}

TEST(ViewRegion, ABoxWithoutASideChangesNothing) {
  const ViewRegion view{0.1, 0.1, 0.5, 0.5};
  EXPECT_EQ(ZoomedToBox(view, {0.3, 0.3}, {0.3, 0.6}), view);
}

TEST(ViewRegion, AnyNumbersMakeAViewInsideTheMap) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kHuge = std::numeric_limits<double>::infinity();
  EXPECT_EQ(InsideMap({kNaN, kNaN, kNaN, kNaN}), kWhole);
  EXPECT_EQ(InsideMap({kHuge, -kHuge, 2, 0}), kWhole);
  EXPECT_EQ(InsideMap({0.9, -1, 0.5, 0.5}), (ViewRegion{0.5, 0, 0.5, 0.5}));
}

}  // namespace
}  // namespace ormel
