#include "mapdata/value_lookup.h"

#include <bit>
#include <utility>

namespace ormel {

std::size_t ValueLookup::SlotOf(double value) const {
  // Fibonacci hashing; adding 0 makes -0 the same as 0.
  const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
  const int shift = 64 - std::countr_zero(slots_.size());
  auto slot = static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15u) >> shift);
  while (slots_[slot].entry != kNone && slots_[slot].value != value) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

int ValueLookup::Add(double value) {
  Slot& found = slots_[SlotOf(value)];
  if (found.entry != kNone) return found.entry;
  found = {value, count_};
  if (2 * static_cast<std::size_t>(++count_) >= slots_.size()) Grow();
  return count_ - 1;
}

void ValueLookup::Grow() {
  std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(2 * slots_.size()));
  for (const Slot& slot : old) {
    if (slot.entry != kNone) slots_[SlotOf(slot.value)] = slot;
  }
}

}  // namespace ormel
