#include "parts/chart_picture.h"

#include <algorithm>
#include <utility>

#include "charts/chart_drawing.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr char kHint[] = "Read values with the mouse or the arrow keys.";
constexpr std::size_t kMostSizes = 2;  // on the screen, and as mouse events are told
constexpr std::ptrdiff_t kPage = 10;   // samples

}  // namespace

Axis NumberAxis(std::string title) {
  Axis axis;
  axis.title = std::move(title);
  axis.numberText = [](double number) { return NumberText(number); };
  return axis;
}

Axis DateAxis(std::string title) {
  Axis axis;
  axis.title = std::move(title);
  axis.dateText = FormatDate;
  return axis;
}

ChartPicture::ChartPicture(ui::Window& window, AppContext& app, const std::string& name, int width,
                           int height)
    : picture(window, name),
      lblRead(window, name + "Read"),
      output(window, app, [this] { return Print(); }),
      buttons(window, output, name + "Copy", name + "Save"),
      width_(width),
      height_(height) {
  buttons.cmdCopy.SetToolTip("Put the picture into the clipboard; in the chart: Ctrl+C");
  output.onDone = [this](const std::string& text) { lblRead.SetCaption(text); };
  picture.onMouse = [this](const ui::MouseEvent& event) { UseMouse(event); };
  picture.onKey = [this](const std::string& key) { UseKey(key); };
  Show({});
  picture.SetPainter(width_, height_, [this](Canvas& canvas) { Paint(canvas); });
}

ui::LayoutItem ChartPicture::Area() {
  return ui::Column{ui::Share(1, picture),
                    ui::Row{ui::Share(1, lblRead), buttons.cmdCopy, buttons.cmdSave}};
}

void ChartPicture::Show(Chart chart) {
  chart_ = std::move(chart);
  layout_.emplace(chart_, width_, height_);
  painted_.clear();
  read_.reset();
  lblRead.SetCaption(chart_.series.empty() ? "" : kHint);
  picture.Repaint();
}

void ChartPicture::Select(std::size_t series, std::vector<std::size_t> samples) {
  chart_.series[series].selected = std::move(samples);
  painted_.clear();
  picture.Repaint();
}

// ---- The picture --------------------------------------------------------------------------------

// A chart of many samples is not drawn anew for each step of the pointer.
void ChartPicture::Paint(Canvas& canvas) {
  const auto fits = [&](const Canvas& one) {
    return one.Width() == canvas.Width() && one.Height() == canvas.Height();
  };
  const auto found = std::find_if(painted_.begin(), painted_.end(), fits);
  if (found != painted_.end()) {
    canvas = *found;
  } else {
    DrawChart(canvas, *layout_);
    if (painted_.size() == kMostSizes) painted_.erase(painted_.begin());
    painted_.push_back(canvas);
  }
  if (read_) DrawPointer(canvas, *layout_, read_->place);
}

Canvas ChartPicture::Print() const {
  Chart bare = chart_;
  bare.pointer.reset();
  Canvas canvas(2 * width_, 2 * height_);
  DrawChart(canvas, bare, width_);
  return canvas;
}

// ---- Reading and picking ------------------------------------------------------------------------

void ChartPicture::ReadSample(const std::optional<ChartHit>& hit) {
  if (!hit || (read_ && *read_ == *hit)) return;
  read_ = hit;
  lblRead.SetCaption(PlaceText(chart_, *hit) + "    " + ValueText(chart_, *hit));
  picture.Repaint();
  if (onRead) onRead(*hit);
}

void ChartPicture::UseMouse(const ui::MouseEvent& event) {
  if (event.action == ui::MouseAction::kDown && onPick) {
    std::optional<ChartHit> hit = layout_->PointAt(event.x, event.y);
    if (!hit) hit = layout_->BarAt(event.x, event.y);
    if (hit) onPick(*hit);
  }
  if (layout_->IsInside(event.x, event.y)) ReadSample(layout_->NearestSample(event.x, event.y));
}

void ChartPicture::UseKey(const std::string& key) {
  const struct {
    const char* key;
    std::function<void()> act;
  } keys[] = {{"Left", [this] { StepBy(-1); }},
              {"Right", [this] { StepBy(1); }},
              {"PageUp", [this] { StepBy(-kPage); }},
              {"PageDown", [this] { StepBy(kPage); }},
              {"Home", [this] { GoToEnd(false); }},
              {"End", [this] { GoToEnd(true); }},
              {"Up", [this] { ChangeSeries(-1); }},
              {"Down", [this] { ChangeSeries(1); }},
              {"Ctrl+C", [this] { output.Copy(); }},
              {"Return", [this] {
                 if (onPick && read_) onPick(*read_);
               }}};
  for (const auto& known : keys) {
    if (known.key == key) known.act();
  }
}

void ChartPicture::StepBy(std::ptrdiff_t samples) {
  if (!read_) return GoToEnd(false);
  const auto last = static_cast<std::ptrdiff_t>(chart_.series[read_->series].Size()) - 1;
  const auto target = static_cast<std::ptrdiff_t>(read_->sample) + samples;
  ReadSample(layout_->HeldFrom(
      read_->series, static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(target, 0, last)),
      samples < 0));
}

void ChartPicture::GoToEnd(bool last) {
  for (std::size_t i = read_ ? read_->series : 0; i < chart_.series.size(); ++i) {
    if (!layout_->IsRead(i) || chart_.series[i].Size() == 0) continue;
    return ReadSample(layout_->HeldFrom(i, last ? chart_.series[i].Size() - 1 : 0, last));
  }
}

// To the sample of the next series in that direction which is nearest to the one that was read.
void ChartPicture::ChangeSeries(std::ptrdiff_t by) {
  if (!read_) return GoToEnd(false);
  const auto count = static_cast<std::ptrdiff_t>(chart_.series.size());
  for (auto i = static_cast<std::ptrdiff_t>(read_->series) + by; i >= 0 && i < count; i += by) {
    const auto series = static_cast<std::size_t>(i);
    if (!layout_->IsRead(series)) continue;
    const auto hit = layout_->SampleAt(series, read_->place.x);
    if (hit) return ReadSample(hit);
  }
}

}  // namespace ormel
