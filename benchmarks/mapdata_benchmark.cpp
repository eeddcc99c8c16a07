// The hot loops of a model run, measured per cell on maps as they are met in the field.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "base/file_writer.h"
#include "base/progress_sink.h"
#include "mapdata/constraint_mask.h"
#include "mapdata/raster.h"
#include "mapdata/raster_writer.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr int kSide = 1000;
constexpr int kCells = kSide * kSide;

// Times are given per cell.
void CountCells(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * kCells); }

std::vector<double> RandomCells(double least, double most, int places) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> value(least, most);
  std::vector<double> cells(kCells);
  for (double& cell : cells) cell = HalfEvenRound(value(random), places);
  return cells;
}

std::string RowsOf(const std::vector<double>& cells) {
  std::string text;
  RowText row;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    row.Add(cells[i]);
    if ((i + 1) % kSide == 0) text += row.Finish();
  }
  return text;
}

std::filesystem::path ScratchFile(const std::string& name, const std::string& text) {
  std::filesystem::path path =
      std::filesystem::temp_directory_path() / (name + std::to_string(getpid()) + ".asc");
  if (!WriteFile(path, text).Ok()) std::abort();
  return path;
}

void ReadCellsOf(benchmark::State& state, const std::vector<double>& cells) {
  const std::filesystem::path path = ScratchFile("cells", RowsOf(cells));
  std::vector<double> read(kCells);
  for (auto _ : state) {
    TokenReader reader = std::move(TokenReader::Open(path).Value());
    if (reader.ReadNumbers(read) != read.size()) state.SkipWithError("too few cells");
    benchmark::DoNotOptimize(read.data());
  }
  CountCells(state);
  std::filesystem::remove(path);
}

void ReadFactor(benchmark::State& state) { ReadCellsOf(state, RandomCells(0, 255, 2)); }
void ReadWholeNumbers(benchmark::State& state) { ReadCellsOf(state, RandomCells(0, 255, 0)); }
void ReadElevation(benchmark::State& state) { ReadCellsOf(state, RandomCells(-500, 3000, 5)); }
BENCHMARK(ReadFactor);
BENCHMARK(ReadWholeNumbers);
BENCHMARK(ReadElevation);

void WriteRows(benchmark::State& state) {
  const std::vector<double> cells = RandomCells(0, 255, 9);
  RowText row;
  std::size_t size = 0;
  for (auto _ : state) {
    for (int i = 0; i < kCells; ++i) {
      row.AddRounded(cells[static_cast<std::size_t>(i)], static_cast<int>(state.range(0)));
      if ((i + 1) % kSide == 0) size += row.Finish().size();
    }
  }
  benchmark::DoNotOptimize(size);
  CountCells(state);
}
BENCHMARK(WriteRows)->Arg(0)->Arg(2)->Arg(9);

void BuildMask(benchmark::State& state) {
  std::string text = HeaderText(HeaderStyle::kWide14, {"1000", "1000", "0", "0", "1", {}});
  const std::filesystem::path path = ScratchFile("mask", text + RowsOf(RandomCells(0, 1, 0)));
  const std::vector<std::string> files(static_cast<std::size_t>(state.range(0)), path.string());
  for (auto _ : state) {
    const auto build = BuildConstraintMask(files, kSide, kSide);
    if (!build.Ok() || !build.Value().failure.empty()) state.SkipWithError("no mask");
  }
  CountCells(state);
  std::filesystem::remove(path);
}
BENCHMARK(BuildMask)->Arg(1)->Arg(2);

void ScanRange(benchmark::State& state) {
  std::string text = HeaderText(HeaderStyle::kWide14, {"1000", "1000", "0", "0", "1", {}});
  const std::filesystem::path path = ScratchFile("scan", text + RowsOf(RandomCells(0, 255, 2)));
  NoProgress quiet;
  for (auto _ : state) {
    if (!ScanRasterRange(path, quiet).Ok()) state.SkipWithError("no range");
  }
  CountCells(state);
  std::filesystem::remove(path);
}
BENCHMARK(ScanRange);

}  // namespace
}  // namespace ormel

BENCHMARK_MAIN();
