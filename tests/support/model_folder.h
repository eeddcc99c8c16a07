// A model in a folder of its own, written map by map.
#pragma once

#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mce/composite_map.h"
#include "mce/composite_output.h"
#include "mce/linear/linear_model.h"
#include "support/temporary_folder.h"

namespace ormel::testing {

using Cells = std::vector<std::vector<double>>;

// Of a model of any kind.
template <class Model>
class MapFolder {
 public:
  Model model;

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  const TemporaryFolder& Folder() const { return folder_; }

  // Writes the map of the next factor, which the model does not have yet: f1.asc, f2.asc, ...
  FactorFile WriteFactor(const std::string& text) const {
    const std::string name = "f" + std::to_string(model.factors.size() + 1) + ".asc";
    folder_.Write(name, text);
    return {folder_.Path().string() + "/", name};
  }
  void AddConstraint(const Cells& cells) {
    const std::string name = "c" + std::to_string(model.constraints.size() + 1) + ".asc";
    model.constraints.push_back(folder_.Write(name, MapText(cells)).string());
  }

  // The map after all factors; the test fails when the model cannot be run.
  CompositeMap Accumulate() const {
    NoProgress quiet;
    CompositeMap map = std::move(CompositeMap::Begin(model).Value());
    for (int i = 1; i <= model.FactorCount(); ++i) {
      EXPECT_TRUE(map.AccumulateFactor(model, i, {}, quiet).Ok());
    }
    return map;
  }

  // Runs the model into out.asc and returns the rows below the header.
  std::string Rows(int decimalPlaces = 2) const {
    NoProgress quiet;
    const Outcome<> written =
        WriteComposite(Accumulate(), model, Path("out.asc"), decimalPlaces, quiet, {});
    EXPECT_TRUE(written.Ok()) << written.Text();
    std::string text = ReadText(Path("out.asc"));
    for (int line = 1; line <= kHeaderLines; ++line) text.erase(0, text.find('\n') + 1);
    return text;
  }

  static std::string MapText(const Cells& cells, std::optional<double> nodata = std::nullopt) {
    std::ostringstream text;
    text << "ncols " << cells[0].size() << "\r\nnrows " << cells.size()
         << "\r\nxllcorner 100.5\r\nyllcorner 200\r\ncellsize 30\r\n";
    if (nodata) text << "NODATA_value " << *nodata << "\r\n";
    for (const std::vector<double>& row : cells) {
      for (const double cell : row) text << ' ' << cell;
      text << "\r\n";
    }
    return text.str();
  }

 private:
  static constexpr int kHeaderLines = 5;

  TemporaryFolder folder_;
};

enum class Good { kHigh, kLow };

// Of a linear model.
class ModelFolder : public MapFolder<LinearModel> {
 public:
  void AddFactor(const Cells& cells, int weight, Good good = Good::kHigh,
                 std::optional<double> nodata = std::nullopt) {
    AddFactorText(MapText(cells, nodata), weight, good);
  }
  void AddFactorText(const std::string& text, int weight, Good good = Good::kHigh) {
    model.factors.push_back({WriteFactor(text), weight, good == Good::kHigh});
  }
};

}  // namespace ormel::testing
