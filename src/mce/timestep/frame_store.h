// The sums of all steps of a time series: a frame of 4-byte cells for each. Series that are too
// large for the machine's memory live in a file without a name, which goes with the store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "base/outcome.h"

namespace ormel {

// A quarter of the machine's memory, in bytes.
std::uint64_t QuarterOfMemory();

class FrameStore {
 public:
  // Frames of `columns` by `rows` cells, all 0, for steps 1 to `steps`. More than `memory` bytes
  // are kept in a file in `folder`, which is made when it is missing. Fails with kDiskFull when
  // the disk does not hold them, and with kTooLarge when they cannot be addressed.
  [[nodiscard]] static Outcome<FrameStore> Make(int columns, int rows, int steps,
                                                std::uint64_t memory, const std::string& folder);

  FrameStore() = default;  // without frames
  FrameStore(FrameStore&& other) noexcept
      : cells_(std::exchange(other.cells_, nullptr)),
        bytes_(std::exchange(other.bytes_, 0)),
        columns_(other.columns_),
        rows_(other.rows_) {}
  FrameStore& operator=(FrameStore&& other) noexcept {
    std::swap(cells_, other.cells_);
    std::swap(bytes_, other.bytes_);
    std::swap(columns_, other.columns_);
    std::swap(rows_, other.rows_);
    return *this;
  }
  ~FrameStore();

  // The cells of a row, west to east. Steps and rows count from 1.
  std::span<float> Row(int step, int row) { return {cells_ + Place(step, row), columns_}; }
  std::span<const float> Row(int step, int row) const {
    return {cells_ + Place(step, row), columns_};
  }

 private:
  std::size_t Place(int step, int row) const {
    return (static_cast<std::size_t>(step - 1) * rows_ + static_cast<std::size_t>(row - 1)) *
           columns_;
  }

  float* cells_ = nullptr;
  std::size_t bytes_ = 0;
  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
};

}  // namespace ormel
