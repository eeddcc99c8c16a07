#include "mce/nonlinear/graph_presets.h"

#include <cmath>
#include <utility>

#include "text/numbers.h"

namespace ormel {
namespace {

using Order = GraphPreset::Order;

constexpr char kInverted[] = "1";
constexpr char kNotInverted[] = "0";

// Quarters of the circle as phases are typed: half of 3.14159265, of its triple, and so on.
constexpr GraphPreset kPresets[] = {
    {"imgLinUp", "Rising line", GraphType::kLinear, Order::kRising, 1},
    {"imgLinDown", "Falling line", GraphType::kLinear, Order::kFalling, 1},
    {"imgLinFlat", "Level line", GraphType::kLinear, Order::kLevel},
    {"imgTriUp", "Highest in the middle", GraphType::kBentLine, Order::kRising, 1},
    {"imgTriDown", "Lowest in the middle", GraphType::kBentLine, Order::kFalling, -1},
    {"imgBellNormal",
     "Bell with its peak in the middle",
     GraphType::kBell,
     Order::kRising,
     1,
     {nullptr, nullptr, "0.5"}},
    {"imgBellInvert",
     "Bell upside down",
     GraphType::kBell,
     Order::kFalling,
     -1,
     {nullptr, nullptr, "0.5"}},
    {"imgSine1",
     "Wave that falls first",
     GraphType::kPeriodic,
     Order::kRising,
     1,
     {nullptr, nullptr, "0.5", "1.570796325"}},
    {"imgSine2",
     "Wave that rises first",
     GraphType::kPeriodic,
     Order::kRising,
     1,
     {nullptr, nullptr, "0.5", "4.712388975"}},
    {"imgSine3",
     "Wave that starts at its maximum",
     GraphType::kPeriodic,
     Order::kRising,
     1,
     {nullptr, nullptr, "0.5", "0"}},
    {"imgSine4",
     "Wave that starts at its minimum",
     GraphType::kPeriodic,
     Order::kRising,
     1,
     {nullptr, nullptr, "0.5", "3.14159265"}},
    {"imgExpGrow",
     "Rises slowly, then fast",
     GraphType::kExponential,
     Order::kRising,
     1,
     {nullptr, nullptr, nullptr, kNotInverted}},
    {"imgExpLevel",
     "Rises fast, then slowly",
     GraphType::kExponential,
     Order::kRising,
     1,
     {nullptr, nullptr, nullptr, kInverted}},
    {"imgExpDrop",
     "Falls slowly, then fast",
     GraphType::kExponential,
     Order::kFalling,
     -1,
     {nullptr, nullptr, nullptr, kNotInverted}},
    {"imgExpDecay",
     "Falls fast, then slowly",
     GraphType::kExponential,
     Order::kFalling,
     -1,
     {nullptr, nullptr, nullptr, kInverted}},
};

void PutInOrder(Order order, double apart, std::string& first, std::string& second) {
  if (order == Order::kLevel) {
    second = first;
    return;
  }
  if (TextToNumber(first) == TextToNumber(second)) {
    second = NumberText(TextToNumber(second) + apart);
  }
  const bool rises = TextToNumber(second) >= TextToNumber(first);
  if (rises != (order == Order::kRising)) std::swap(first, second);
}

}  // namespace

std::span<const GraphPreset> GraphPresets() { return kPresets; }

void ApplyPreset(const GraphPreset& preset, GraphParameters& parameters) {
  PutInOrder(preset.order, preset.apart, parameters[0], parameters[1]);
  for (std::size_t slot = 0; slot < parameters.size(); ++slot) {
    if (preset.set[slot] != nullptr) parameters[slot] = preset.set[slot];
  }
  if (preset.type == GraphType::kBentLine) parameters[2] = parameters[0];
  if (preset.type == GraphType::kExponential) {
    parameters[2] = NumberText(std::abs(TextToNumber(parameters[2])));
  }
}

}  // namespace ormel
