// Draws charts. The time goes with the samples and with the pixels: of those that fall into one
// column of pixels no more is drawn than can be seen.
#pragma once

#include "base/canvas.h"
#include "charts/chart_layout.h"

namespace ormel {

// Over the whole canvas, which is taken to be `unitsWide` units wide and as high as its proportions
// say: texts and lines are so large that a chart of 640 units is easily read on half a screen.
// Needs: unitsWide > 0. Nothing is drawn on an empty canvas.
void DrawChart(Canvas& canvas, const Chart& chart, double unitsWide);
// The same when the chart is laid out already, for a picture of the canvas's proportions.
void DrawChart(Canvas& canvas, const ChartLayout& layout);
// Marks a place over a chart that is drawn: lines to the axes, and a dot.
void DrawPointer(Canvas& canvas, const ChartLayout& layout, const ChartPlace& place);

}  // namespace ormel
