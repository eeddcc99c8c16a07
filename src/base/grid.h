// The cells of a map: a contiguous block addressed (column, row), both from 1, row 1 in the north.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "base/outcome.h"

namespace ormel {

// Memory that the system gives out as zeros: large blocks of it take shape only when they are
// touched. For numbers.
template <class T>
struct ZeroedMemory {
  using value_type = T;

  ZeroedMemory() = default;
  template <class U>
  explicit ZeroedMemory(const ZeroedMemory<U>& /*other*/) {}

  T* allocate(std::size_t count) {
    void* memory = std::calloc(count, sizeof(T));
    if (memory == nullptr) throw std::bad_alloc();
    return static_cast<T*>(memory);
  }
  void deallocate(T* memory, std::size_t /*count*/) { std::free(memory); }

  void construct(T* /*place*/) {}  // it is 0 already
  void construct(T* place, const T& value) { *place = value; }

  bool operator==(const ZeroedMemory&) const = default;
};

template <class T>
class Grid {
 public:
  Grid() = default;
  // Sizes below 1 make a grid without cells. Throws std::bad_alloc; MakeGrid() does not.
  Grid(int columns, int rows, T value = T{})
      : columns_(columns > 0 && rows > 0 ? columns : 0),
        rows_(columns > 0 && rows > 0 ? rows : 0),
        cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {
    if (value != T{}) Fill(value);
  }

  int Columns() const { return columns_; }
  int Rows() const { return rows_; }
  bool Empty() const { return cells_.empty(); }
  bool Holds(int column, int row) const {
    return column >= 1 && column <= columns_ && row >= 1 && row <= rows_;
  }

  T& operator()(int column, int row) { return cells_[Place(column, row)]; }
  const T& operator()(int column, int row) const { return cells_[Place(column, row)]; }

  // The cells of one row, west to east; element 0 is column 1.
  std::span<T> Row(int row) { return {&cells_[Place(1, row)], static_cast<std::size_t>(columns_)}; }
  std::span<const T> Row(int row) const {
    return {&cells_[Place(1, row)], static_cast<std::size_t>(columns_)};
  }

  // All cells, row after row.
  std::span<T> Cells() { return cells_; }
  std::span<const T> Cells() const { return cells_; }

  void Fill(T value) { cells_.assign(cells_.size(), value); }

  bool operator==(const Grid&) const = default;

 private:
  std::size_t Place(int column, int row) const {
    assert(Holds(column, row));
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column - 1);
  }

  int columns_ = 0;
  int rows_ = 0;
  std::vector<T, ZeroedMemory<T>> cells_;
};

// A grid of `columns` by `rows` cells that hold `value`, or a failure of kind kTooLarge that names
// the size when the memory does not hold it.
template <class T>
[[nodiscard]] Outcome<Grid<T>> MakeGrid(int columns, int rows, T value = T{}) {
  try {
    return Grid<T>(columns, rows, value);
  } catch (const std::exception&) {  // bad_alloc, or length_error beyond what can be addressed
    return Failure{FailureKind::kTooLarge,
                   "A map of " + std::to_string(columns) + " columns and " + std::to_string(rows) +
                       " rows does not fit into the memory of this machine."};
  }
}

}  // namespace ormel
