// A model as the making of its map sees it: its maps, and what one row of a factor adds to the
// sums. What all kinds of models share stands in composite_map.h; what differs between them is
// here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/extremes.h"
#include "base/outcome.h"
#include "mapdata/raster_writer.h"
#include "text/paths.h"

namespace ormel {

// The top of the scale on which factors and the composite lie.
inline constexpr double kTopValue = 255;

inline bool IsOutsideScale(double value) { return (value < 0) | (value > kTopValue); }

// A cell as it counts: NODATA and values outside 0 to 255 are 0.
inline double CountedValue(double value, double nodata) {
  return (IsOutsideScale(value) | (value == nodata)) != 0 ? 0.0 : value;
}

struct FactorFile {
  std::string folder;  // ends in a separator, or is empty
  std::string name;    // of the file, with its extension

  std::string Path() const { return JoinPath(folder, name); }
};

// A row of a factor on its way into the sums. `mask` and `sums` are at least as long as `values`.
struct RowToAdd {
  std::span<const double> values;  // as they count
  double nodata;                   // of the factor
  std::span<const std::uint8_t> mask;
  std::span<float> sums;
};

// What the allowed cells of a factor have come to: the sums in double precision, before they are
// stored, and the weighted values that were added.
struct AddedExtremes {
  Extremes sums;
  Extremes weights;
};

// Adds the rows of one factor, one after the other.
class FactorAdder {
 public:
  virtual ~FactorAdder() = default;
  // Adds the weighted values of the allowed cells to their sums.
  virtual void AddRow(const RowToAdd& row) = 0;
  // What all rows have come to.
  virtual AddedExtremes Added() const = 0;
};

class CompositeModel {
 public:
  std::vector<std::string> constraints;  // full paths
  std::string title;
  std::string palette;  // a path; empty: that of the settings

  virtual ~CompositeModel() = default;

  // Factors count from 1.
  virtual int FactorCount() const = 0;
  virtual const FactorFile& Factor(int index) const = 0;

  // Must not outlive the model.
  virtual std::unique_ptr<FactorAdder> AdderOf(int index) const = 0;
  // What a cell of the factor adds to the sum.
  virtual double WeightedValue(int index, double value, double nodata) const = 0;
  // How the factor counts, in a word.
  virtual std::string WeightText(int index) const = 0;
  // What the information file says of the factors, with the empty lines behind it.
  virtual std::string FactorsText() const = 0;

  struct Rules {
    // The warning of values outside 0 to 255 is about every allowed cell; else about the last
    // allowed cell of the last factor alone.
    bool warnsOfEveryCell = false;
    // Sums that are all alike become 0 on a scale one wide; else there is no scale and every cell
    // is 0.
    bool widensEqualSums = false;
    RowForm rows = RowForm::kBlankBefore;  // of the written map
  };
  virtual Rules ItsRules() const = 0;
};

// Letters of the longest factor name, and a name with blanks behind it up to so many letters.
// Letters are counted, not bytes, so that columns line up for names in any language.
std::size_t LongestName(const CompositeModel& model);
std::string Padded(std::string name, std::size_t letters);

// Whether the maps of the model exist and lie on the grid of the first factor; else one sentence
// that says what is wrong.
[[nodiscard]] Outcome<> CheckMaps(const CompositeModel& model);

}  // namespace ormel
