// What a person waits for in the map viewer: loading a large map, against `wc -w` on the same file,
// and the repaint behind every zoom and pan on a large screen.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include "base/file_writer.h"
#include "base/progress_sink.h"
#include "mapdata/raster_writer.h"
#include "text/numbers.h"
#include "viewer/map_picture.h"
#include "viewer/view_painter.h"

namespace ormel {
namespace {

constexpr int kSide = 4000;
constexpr int kScreenWidth = 1600;
constexpr int kScreenHeight = 1000;

// An elevation map of kSide by kSide cells with `places` decimals, taken away at the end.
class LargeMap {
 public:
  explicit LargeMap(int places)
      : path_((std::filesystem::temp_directory_path() / ("large" + std::to_string(getpid())))
                  .string()) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> value(-500, 3000);
    const std::string side = std::to_string(kSide);
    std::string text = HeaderText(HeaderStyle::kWide14, {side, side, "0", "0", "30", {}});
    RowText row;
    for (int i = 0; i < kSide; ++i) {
      for (int j = 0; j < kSide; ++j) row.AddRounded(value(random), places);
      text += row.Finish();
    }
    if (!WriteFile(path_, text).Ok()) std::abort();
  }
  ~LargeMap() { std::filesystem::remove(path_); }

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

MapPicture Loaded(const std::string& path) {
  NoProgress quiet;
  MapValues map = std::move(ReadMapValues(path, std::nullopt, quiet).Value());
  MapPicture picture;
  picture.cells = std::move(map.cells);
  picture.specs = {map.range.min, map.range.max, map.nodata};
  picture.viewing = Viewing::kScaledVersion;
  picture.palette = GreyPalette();
  DrawPicture(picture, kBlack, quiet);
  return picture;
}

// Whole numbers, and five decimals.
void LoadAndDraw(benchmark::State& state) {
  const LargeMap map(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(Loaded(map.Path()));
}
BENCHMARK(LoadAndDraw)->Arg(0)->Arg(5)->Unit(benchmark::kMillisecond);

void CountWords(benchmark::State& state) {
  const LargeMap map(static_cast<int>(state.range(0)));
  const std::string command = "LC_ALL=C wc -w " + map.Path() + " >/dev/null";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("no wc");
  }
}
BENCHMARK(CountWords)->Arg(0)->Arg(5)->Unit(benchmark::kMillisecond)->UseRealTime();

// The whole map, a tenth of it, and a few cells.
void Repaint(benchmark::State& state) {
  const LargeMap map(0);
  MapPicture picture = Loaded(map.Path());
  const double size = 1.0 / static_cast<double>(state.range(0));
  picture.view = {0.3 * (1 - size), 0.4 * (1 - size), size, size};
  const ViewSpecs specs{kSide, kSide, 0, 0, 30};
  Canvas screen(kScreenWidth, kScreenHeight);
  for (auto _ : state) {
    PaintView(screen, picture, specs, {{0, 0}, {60000, 90000}}, RubberBand{{0, 0}, {1, 1}});
    benchmark::DoNotOptimize(screen.Bytes().data());
  }
}
BENCHMARK(Repaint)->Arg(1)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormel

BENCHMARK_MAIN();
