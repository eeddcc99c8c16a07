// The types of weight graphs in a window: a small picture of each type's curve, by which it is
// chosen, and for each a frame with its parameters and ready-made shapes. The frame of one type is
// on show.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "mce/nonlinear/weight_graph.h"
#include "ui/window.h"

namespace ormel {

class GraphForms {
 public:
  // The window outlives the forms.
  explicit GraphForms(ui::Window& window);

  std::function<void(GraphType)> onType;  // a person chooses a type
  // A person types parameters of the type on show, or takes one of its ready-made shapes.
  std::function<void(const GraphParameters&)> onParameters;

  // Shows the frame of `type`, and in all frames what the graph holds. The pictures of the types
  // stay; DrawTypes() is for them.
  void Show(const WeightGraph& graph, GraphType type);
  // Draws the pictures of the types anew.
  void DrawTypes(const WeightGraph& graph);
  GraphType Shown() const { return shown_; }
  // The parameters of the type on show, as they stand in its frame.
  GraphParameters Entered() const;
  // Of the type on show; it must be one with parameters.
  ui::Control& FirstField() const;

  // The pictures of the types side by side, and the frames, of which that of the control points
  // holds `points`.
  ui::LayoutItem Types() const;
  ui::LayoutItem Frames(std::vector<ui::LayoutItem> points);

 private:
  struct Field {
    GraphType type;
    std::size_t slot;  // from 1
    const char* caption;
    std::unique_ptr<ui::TextBox> box;
  };

  void MakeFrames(ui::Window& window);
  void MakePresets(ui::Window& window);
  void Put(GraphType type, const GraphParameters& parameters);
  ui::LayoutItem FieldsOf(GraphType type);

  GraphType shown_ = GraphType::kLinear;
  std::vector<std::unique_ptr<ui::FrameControl>> frames_;  // of type 1, 2, ...
  std::vector<std::unique_ptr<ui::Picture>> types_;
  std::vector<Field> fields_;
  std::vector<std::unique_ptr<ui::Picture>> presets_;  // as GraphPresets() lists them
  ui::CheckBox chkExpInvert_;
};

}  // namespace ormel
