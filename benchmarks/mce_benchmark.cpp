// The evaluation: what a cell costs to accumulate in a linear and in a non-linear model, and to
// scale and write.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/file_writer.h"
#include "mce/composite_map.h"
#include "mce/composite_output.h"
#include "mce/linear/linear_model.h"
#include "mce/nonlinear/nonlinear_model.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr int kSide = 1000;

// A model of one factor of kSide x kSide two-decimal cells, in a folder that goes with it.
class SampleModel {
 public:
  SampleModel() {
    fs::create_directories(folder_);
    std::string text = "ncols 1000\r\nnrows 1000\r\nx 0\r\ny 0\r\ns 30\r\n";
    for (int cell = 0; cell < kSide * kSide; ++cell) {
      const int hundredths = static_cast<int>(cell * 7919LL % 25501);
      text += " " + std::to_string(hundredths / 100) + "." + std::to_string(hundredths % 100);
      if (cell % kSide == kSide - 1) text += "\r\n";
    }
    if (!WriteFile(folder_ / "factor.asc", text).Ok()) std::abort();
    const FactorFile file{(folder_ / "").string(), "factor.asc"};
    linear_.factors.push_back({file, 3, true});
    nonlinear_.factors.push_back({file, {}});
    computeBell(nonlinear_.factors[0].graph, {"0", "255", "0.5", "0.2"});
  }
  SampleModel(const SampleModel&) = delete;
  SampleModel& operator=(const SampleModel&) = delete;
  ~SampleModel() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  const LinearModel& Linear() const { return linear_; }
  const NonlinearModel& Nonlinear() const { return nonlinear_; }
  std::string Output() const { return (folder_ / "out.asc").string(); }

 private:
  const fs::path folder_ =
      fs::temp_directory_path() / ("ormel-mce-benchmark-" + std::to_string(getpid()));
  LinearModel linear_;
  NonlinearModel nonlinear_;
};

void Accumulate(benchmark::State& state, const CompositeModel& model) {
  CompositeMap map = std::move(CompositeMap::Begin(model).Value());
  NoProgress quiet;
  while (state.KeepRunning()) {
    if (!map.AccumulateFactor(model, 1, {}, quiet).Ok()) state.SkipWithError("failed");
  }
  state.SetItemsProcessed(state.iterations() * kSide * kSide);
}

void AccumulateLinear(benchmark::State& state) {
  const SampleModel sample;
  Accumulate(state, sample.Linear());
}
BENCHMARK(AccumulateLinear)->Unit(benchmark::kMillisecond);

void AccumulateNonlinear(benchmark::State& state) {
  const SampleModel sample;
  Accumulate(state, sample.Nonlinear());
}
BENCHMARK(AccumulateNonlinear)->Unit(benchmark::kMillisecond);

void ScaleAndWrite(benchmark::State& state) {
  const SampleModel sample;
  CompositeMap map = std::move(CompositeMap::Begin(sample.Linear()).Value());
  NoProgress quiet;
  if (!map.AccumulateFactor(sample.Linear(), 1, {}, quiet).Ok()) state.SkipWithError("failed");
  while (state.KeepRunning()) {
    if (!WriteComposite(map, sample.Linear(), sample.Output(), 2, quiet, {}).Ok()) {
      state.SkipWithError("failed");
    }
  }
  state.SetItemsProcessed(state.iterations() * kSide * kSide);
}
BENCHMARK(ScaleAndWrite)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ormel

BENCHMARK_MAIN();
