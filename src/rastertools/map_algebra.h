// Arithmetic with two maps, cell by cell. The maps are read value by value and never held.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// In the order in which people choose.
enum class MapOperator { kAdd, kSubtract, kMultiply, kDivide, kPower };

// What comes of two values. Not finite where there is no result: a division by 0, a root of a
// negative number, a number too large.
double Operate(MapOperator op, double left, double right);

// Two maps and the map that is made of them.
struct MapPair {
  std::string first;
  std::string second;
  std::string output;
};

// Writes the map of a pair. It has the header of the first map, and its NODATA; a header of five
// lines gets a line with -9999. A cell that is NODATA in either map, each by its own value, or has
// no result is NODATA. The maps' headers are not compared: the second is read as if it had the
// first one's rows. Fails when a file cannot be used and when one ends early.
[[nodiscard]] Outcome<> OperateOnMaps(const MapPair& pair, MapOperator op, ProgressSink& progress);

// How outputs are named: PREFIX + the name of one of the inputs + SUFFIX + ".asc".
struct AlgebraNames {
  std::string folder;
  bool afterSecond = false;
  std::string prefix;
  std::string suffix;
};

// The pairs of two lists, in order. A single map at the right goes with each of those at the left
// when `oneToMany`; without it, as many as the shorter list has.
std::vector<MapPair> PairsOf(std::span<const std::string> left, std::span<const std::string> right,
                             bool oneToMany, const AlgebraNames& names);

}  // namespace ormel
