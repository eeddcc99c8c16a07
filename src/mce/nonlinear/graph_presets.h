// The one-click shapes of the graph editor. Each keeps the levels that the user has chosen, as far
// as its shape allows, and sets the parameters that make the shape.
#pragma once

#include <array>
#include <span>

#include "mce/nonlinear/weight_graph.h"

namespace ormel {

struct GraphPreset {
  // How the levels of slots 1 and 2 lie to each other.
  enum class Order { kRising, kFalling, kLevel };

  const char* name;     // of its picture in the editor
  const char* toolTip;  // what the shape is, in words
  GraphType type;
  Order order;
  double apart = 0;                                   // added to slot 2 when the levels are equal
  std::array<const char*, kParameterSlots> set = {};  // texts for slots; null: the slot stays
};

// All of them, those of a type together.
std::span<const GraphPreset> GraphPresets();

// Adjusts the parameters of the preset's type. Levels that are the wrong way round change places as
// they were typed; a bent line ends where it starts; a growth rate loses its sign.
void ApplyPreset(const GraphPreset& preset, GraphParameters& parameters);

}  // namespace ormel
