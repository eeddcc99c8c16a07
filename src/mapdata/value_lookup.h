// From the value of a cell to the number of its entry in a table. A table may hold thousands of
// values; looking one up costs the same for all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ormel {

class ValueLookup {
 public:
  static constexpr int kNone = -1;

  ValueLookup() : slots_(kSmallest) {}

  // The entry of `value`; kNone when it has none.
  int Find(double value) const { return slots_[SlotOf(value)].entry; }

  // Gives a value the next entry, counted from 0, unless it has one. Returns its entry.
  int Add(double value);

  int Count() const { return count_; }

 private:
  struct Slot {
    double value = 0;
    int entry = kNone;
  };
  static constexpr std::size_t kSmallest = 64;

  // Where the value is, or would go.
  std::size_t SlotOf(double value) const;
  void Grow();

  std::vector<Slot> slots_;  // a power of two, less than half full
  int count_ = 0;
};

}  // namespace ormel
