// The largest and smallest of many numbers.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

namespace ormel {

// The largest and smallest of some numbers; of none at the start.
struct Extremes {
  double largest = -std::numeric_limits<double>::infinity();
  double smallest = std::numeric_limits<double>::infinity();

  bool Any() const { return largest >= smallest; }
  void Add(double value) { Add({value, value}); }
  void Add(const Extremes& other) {
    largest = std::max(largest, other.largest);
    smallest = std::min(smallest, other.smallest);
  }
};

// The same in a hot loop. The numbers stand in several lanes, because a single one would make each
// of them wait for the one before it.
class LaneExtremes {
 public:
  static constexpr std::size_t kLanes = 2;

  LaneExtremes() {
    std::fill_n(largest_, kLanes, Extremes().largest);
    std::fill_n(smallest_, kLanes, Extremes().smallest);
  }

  // Takes `value` part when it `counts`.
  void Add(std::size_t lane, double value, bool counts) {
    largest_[lane] = counts && value > largest_[lane] ? value : largest_[lane];
    smallest_[lane] = counts && value < smallest_[lane] ? value : smallest_[lane];
  }

  Extremes All() const {
    return {*std::max_element(largest_, largest_ + kLanes),
            *std::min_element(smallest_, smallest_ + kLanes)};
  }

 private:
  double largest_[kLanes];
  double smallest_[kLanes];
};

// Calls add(i, lane) for 0 to `count` - 1, so that the calls of a lane are far from each other.
template <class Add>
inline void ForEachInLanes(std::size_t count, Add add) {
  std::size_t i = 0;
  for (; i + LaneExtremes::kLanes <= count; i += LaneExtremes::kLanes) {
    for (std::size_t lane = 0; lane < LaneExtremes::kLanes; ++lane) add(i + lane, lane);
  }
  for (; i < count; ++i) add(i, 0);
}

}  // namespace ormel
