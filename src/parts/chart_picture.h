// The part of a window that shows a chart: the picture, a read-out of the sample under the pointer,
// and the ways out, a copy in the clipboard and a file. A person reads samples with the mouse or
// with the arrow keys, and picks bars and handles with a click or with Return.
//
//   ChartPicture chart{*this, app, "picHist"};
//   SetLayout(ui::Row{lstBins, ui::Share(1, chart.Area())});
//   chart.Show(HistogramChart(counts));
//   chart.onPick = [this](const ChartHit& bar) { Select(bar.sample); };
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "charts/chart_layout.h"
#include "parts/app_context.h"
#include "parts/picture_output.h"
#include "ui/window.h"

namespace ormel {

// Axes whose numbers and dates are written as everywhere in the program.
Axis NumberAxis(std::string title);
Axis DateAxis(std::string title);

class ChartPicture {
 public:
  // `name` is that of the picture in scripts, "picHist"; the other controls have it in theirs.
  // Mouse events are told in units of the picture, which is `width` by `height`: the smaller it is,
  // the larger are its texts on the screen. Window and program outlive the part.
  ChartPicture(ui::Window& window, AppContext& app, const std::string& name, int width = 640,
               int height = 420);
  ChartPicture(const ChartPicture&) = delete;
  ChartPicture& operator=(const ChartPicture&) = delete;

  // Shows another chart. What was read out is no longer marked.
  void Show(Chart chart);
  const Chart& Shown() const { return chart_; }
  // Puts bars or handles of a series of the chart into its other colour, and no others.
  void Select(std::size_t series, std::vector<std::size_t> samples);

  // The sample that is read out.
  const std::optional<ChartHit>& Read() const { return read_; }

  std::function<void(const ChartHit&)> onRead;  // another sample is read out
  std::function<void(const ChartHit&)> onPick;  // a person picked a bar or a handle

  // The picture, with the read-out and the buttons in a row beneath.
  ui::LayoutItem Area();

  // The chart without marks of the pointer, twice as many pixels wide as it has units.
  Canvas Print() const;

  // A window that has another use for mouse and keys in the picture sets its own handlers.
  ui::Picture picture;
  ui::Label lblRead;
  PictureOutput output;
  PictureButtons buttons;

 private:
  void Paint(Canvas& canvas);
  void UseMouse(const ui::MouseEvent& event);
  void UseKey(const std::string& key);
  void ReadSample(const std::optional<ChartHit>& hit);
  void StepBy(std::ptrdiff_t samples);
  void GoToEnd(bool last);
  void ChangeSeries(std::ptrdiff_t by);

  const int width_;
  const int height_;
  Chart chart_;
  std::optional<ChartLayout> layout_;  // of the chart; always there
  std::optional<ChartHit> read_;
  std::vector<Canvas> painted_;  // in each size that is on show, without marks of the pointer
};

}  // namespace ormel
