#include "mce/nonlinear/graph_forms_window.h"

#include <algorithm>
#include <string>
#include <utility>

#include "mce/nonlinear/graph_plot.h"
#include "mce/nonlinear/graph_presets.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kPictureWidth = 80;
constexpr int kPictureHeight = 44;
constexpr std::size_t kInvertSlot = 4;

constexpr struct {
  const char* frame;
  const char* picture;
} kTypes[kGraphTypes] = {
    {"fraLinear", "picLinear"}, {"fraTriangle", "picTriangle"},       {"fraBell", "picBell"},
    {"fraSine", "picSine"},     {"fraExponential", "picExponential"}, {"fraPoints", "picPoints"}};

constexpr struct {
  GraphType type;
  std::size_t slot;
  const char* name;
  const char* caption;
} kFields[] = {
    {GraphType::kLinear, 1, "txtLinStart", "&Initial Weight:"},
    {GraphType::kLinear, 2, "txtLinEnd", "&Final Weight:"},
    {GraphType::kBentLine, 1, "txtTriStart", "S&tart:"},
    {GraphType::kBentLine, 2, "txtTriMax", "&Vertex:"},
    {GraphType::kBentLine, 3, "txtTriEnd", "&End:"},
    {GraphType::kBell, 1, "txtBellMin", "&Base:"},
    {GraphType::kBell, 2, "txtBellMax", "&Peak:"},
    {GraphType::kBell, 3, "txtBellCenter", "&Center:"},
    {GraphType::kBell, 4, "txtBellStdDev", "Std. De&viation:"},
    {GraphType::kPeriodic, 1, "txtSineMin", "Mi&nimum:"},
    {GraphType::kPeriodic, 2, "txtSineMax", "Ma&ximum:"},
    {GraphType::kPeriodic, 3, "txtSinePer", "&Period:"},
    {GraphType::kPeriodic, 4, "txtSinePhase", "P&hase:"},
    {GraphType::kExponential, 1, "txtExpMin", "&Initial:"},
    {GraphType::kExponential, 2, "txtExpMax", "&Final:"},
    {GraphType::kExponential, 3, "txtExpConstant", "&Growth Rate:"},
};

// Computes the samples of one type from what the graph holds for it.
void BecomeType(WeightGraph& graph, GraphType type) {
  if (type == GraphType::kCustom) {
    computeCustom(graph, graph.topValue, graph.bottomValue);
  } else {
    ComputeCurve(graph, type, graph.Parameters(type));
  }
}

GraphType TypeAt(std::size_t index) { return static_cast<GraphType>(index + 1); }

}  // namespace

GraphForms::GraphForms(ui::Window& window) : chkExpInvert_(window, "chkExpInvert", "In&vert") {
  MakeFrames(window);
  MakePresets(window);
}

void GraphForms::MakeFrames(ui::Window& window) {
  for (std::size_t i = 0; i < kGraphTypes; ++i) {
    frames_.push_back(
        std::make_unique<ui::FrameControl>(window, kTypes[i].frame, TypeWord(TypeAt(i))));
    ui::Picture& picture =
        *types_.emplace_back(std::make_unique<ui::Picture>(window, kTypes[i].picture));
    picture.SetStripHeight(kPictureHeight);
    picture.SetToolTip(TypeWord(TypeAt(i)));
    picture.onClick = [this, i] { onType(TypeAt(i)); };
  }
  const auto changed = [this] { onParameters(Entered()); };
  for (const auto& field : kFields) {
    auto box = std::make_unique<ui::TextBox>(window, field.name);
    box->onChange = changed;
    fields_.push_back({field.type, field.slot, field.caption, std::move(box)});
  }
  chkExpInvert_.SetToolTip("Bend the curve the other way");
  chkExpInvert_.onClick = changed;
}

// The pictures show each shape of a new graph.
void GraphForms::MakePresets(ui::Window& window) {
  for (const GraphPreset& preset : GraphPresets()) {
    WeightGraph graph;
    ApplyPreset(preset, graph.Parameters(preset.type));
    BecomeType(graph, preset.type);
    ui::Picture& picture =
        *presets_.emplace_back(std::make_unique<ui::Picture>(window, preset.name));
    picture.SetStripHeight(kPictureHeight);
    picture.SetToolTip(preset.toolTip);
    picture.SetPainter(kPictureWidth, kPictureHeight,
                       [graph](Canvas& canvas) { DrawCurvePicture(canvas, graph, false); });
    picture.onClick = [this, &preset] {
      GraphParameters parameters = Entered();
      ApplyPreset(preset, parameters);
      Put(preset.type, parameters);
      onParameters(parameters);
    };
  }
}

GraphParameters GraphForms::Entered() const {
  GraphParameters parameters;
  for (const Field& field : fields_) {
    if (field.type == shown_) parameters[field.slot - 1] = field.box->Text();
  }
  if (shown_ == GraphType::kExponential) {
    parameters[kInvertSlot - 1] = chkExpInvert_.Checked() ? "1" : "0";
  }
  return parameters;
}

ui::Control& GraphForms::FirstField() const {
  return *std::find_if(fields_.begin(), fields_.end(), [this](const Field& field) {
            return field.type == shown_;
          })->box;
}

void GraphForms::Put(GraphType type, const GraphParameters& parameters) {
  for (const Field& field : fields_) {
    if (field.type == type) field.box->SetText(parameters[field.slot - 1]);
  }
  if (type == GraphType::kExponential) {
    chkExpInvert_.SetChecked(TextToNumber(parameters[kInvertSlot - 1]) != 0);
  }
}

void GraphForms::Show(const WeightGraph& graph, GraphType type) {
  shown_ = type;
  for (std::size_t i = 0; i < kGraphTypes; ++i) {
    frames_[i]->SetVisible(TypeAt(i) == type);
    if (TypeAt(i) != GraphType::kCustom) Put(TypeAt(i), graph.Parameters(TypeAt(i)));
  }
}

void GraphForms::DrawTypes(const WeightGraph& graph) {
  for (std::size_t i = 0; i < kGraphTypes; ++i) {
    WeightGraph shape = graph;
    if (TypeAt(i) != graph.type) BecomeType(shape, TypeAt(i));
    const bool chosen = TypeAt(i) == shown_;
    types_[i]->SetPainter(kPictureWidth, kPictureHeight,
                          [shape = std::move(shape), chosen](Canvas& canvas) {
                            DrawCurvePicture(canvas, shape, chosen);
                          });
  }
}

ui::LayoutItem GraphForms::Types() const {
  ui::Row row;
  for (const auto& picture : types_) row.items.emplace_back(*picture);
  return row;
}

ui::LayoutItem GraphForms::FieldsOf(GraphType type) {
  ui::Table table{};
  for (Field& field : fields_) {
    if (field.type == type) table.items.push_back(ui::Row{field.caption, *field.box});
  }
  ui::Row shapes;
  for (std::size_t i = 0; i < presets_.size(); ++i) {
    if (GraphPresets()[i].type == type) shapes.items.emplace_back(*presets_[i]);
  }
  if (type != GraphType::kExponential) return ui::Column{table, "Ready-made:", shapes};
  return ui::Column{table, chkExpInvert_, "Ready-made:", shapes};
}

ui::LayoutItem GraphForms::Frames(std::vector<ui::LayoutItem> points) {
  ui::Column column;
  for (std::size_t i = 0; i < kCurveTypes; ++i) {
    column.items.push_back(ui::Frame{*frames_[i], FieldsOf(TypeAt(i))});
  }
  ui::Frame pointsFrame{*frames_.back()};
  pointsFrame.items = std::move(points);
  column.items.push_back(std::move(pointsFrame));
  return column;
}

}  // namespace ormel
