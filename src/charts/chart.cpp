#include "charts/chart.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace ormel {
namespace {

constexpr Colour kReferenceColour = Rgb(120, 128, 140);

constexpr Colour kColours[] = {Rgb(24, 90, 168),   Rgb(213, 94, 0),   Rgb(0, 158, 115),
                               Rgb(204, 121, 167), Rgb(86, 180, 233), Rgb(120, 72, 20),
                               Rgb(230, 159, 0),   Rgb(50, 54, 60)};

// How many series before this one have no colour of their own.
std::size_t TurnOf(const Chart& chart, std::size_t series) {
  const auto end = chart.series.begin() + static_cast<std::ptrdiff_t>(series);
  return static_cast<std::size_t>(std::count_if(
      chart.series.begin(), end, [](const Series& one) { return !one.colour.has_value(); }));
}

}  // namespace

std::size_t Series::Size() const { return x.empty() ? y.size() : std::min(x.size(), y.size()); }

bool Series::Holds(std::size_t sample) const {
  if (sample >= Size() || (!floor.empty() && sample >= floor.size())) return false;
  return std::isfinite(X(sample)) && std::isfinite(y[sample]) && std::isfinite(Floor(sample));
}

Series Bars(std::string name, std::vector<double> y) {
  return {SeriesKind::kBars, std::move(name), std::move(y)};
}

Series Line(std::string name, std::vector<double> x, std::vector<double> y) {
  return {SeriesKind::kLine, std::move(name), std::move(y), std::move(x)};
}

Series Band(std::string name, std::vector<double> x, std::vector<double> low,
            std::vector<double> high) {
  Series band{SeriesKind::kArea, std::move(name), std::move(high), std::move(x)};
  band.floor = std::move(low);
  return band;
}

Series ReferenceLine(std::string name, ChartPlace from, ChartPlace to) {
  Series line{SeriesKind::kLine, std::move(name), {from.y, to.y}, {from.x, to.x}};
  line.dashed = true;
  line.pen = 1.4;
  line.colour = kReferenceColour;
  return line;
}

Colour DefaultColour(std::size_t number) { return kColours[number % std::size(kColours)]; }

Colour ColourOf(const Chart& chart, std::size_t series) {
  const std::optional<Colour>& own = chart.series[series].colour;
  return own ? *own : DefaultColour(TurnOf(chart, series));
}

bool IsDashed(const Chart& chart, std::size_t series) {
  const Series& one = chart.series[series];
  return one.dashed || (!one.colour && TurnOf(chart, series) >= std::size(kColours));
}

Colour Paler(Colour colour, double part) {
  const auto mix = [part](std::uint8_t value) {
    return static_cast<int>(std::lround(255 + part * (value - 255)));
  };
  return Rgb(mix(Red(colour)), mix(Green(colour)), mix(Blue(colour)));
}

const Axis& AxisOf(const Chart& chart, const Series& series) {
  return series.onRight && chart.right ? *chart.right : chart.y;
}

}  // namespace ormel
