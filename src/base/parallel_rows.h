// Work on all cores whose results are used in order: pieces of a file, bands of rows. The caller's
// thread hands the pieces out, takes them back in the order of their numbers, and computes some of
// them itself while it waits; so what comes of it never depends on the number of threads. There are
// as many as the machine has cores, or as the environment says: ORMEL_THREADS=1 works with the
// caller's thread alone.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// $ORMEL_THREADS from 1 to 64, else the number of cores.
int ThreadCount();

class OrderedPieces {
 public:
  struct Steps {
    // Prepares piece `piece` (from 0) in its slot: on the caller's thread, in order. False: there
    // are no more pieces.
    std::function<bool(std::int64_t piece, int slot)> begin;
    // Computes it: on any thread, several pieces at once. What it throws, Next() throws.
    std::function<void(std::int64_t piece, int slot)> compute;
  };

  // So many pieces are in work at once: slots 0 to SlotsFor(threads) - 1 hold what belongs to them.
  static int SlotsFor(int threads);

  // Starts threads - 1 threads, and begins pieces when Next() is called.
  explicit OrderedPieces(Steps steps, int threads = ThreadCount());
  // Waits for what is being computed; pieces that are not begun are left.
  ~OrderedPieces();
  OrderedPieces(const OrderedPieces&) = delete;
  OrderedPieces& operator=(const OrderedPieces&) = delete;

  // The slot of the next piece, computed; -1 behind the last one. The slot is the caller's until
  // the next call.
  int Next();

 private:
  struct Shared;
  std::unique_ptr<Shared> shared_;
};

// Rows 1 to `rows`, some of them at a time.
struct Band {
  int first = 0;
  int last = 0;
  int slot = 0;  // below OrderedPieces::SlotsFor(ThreadCount()): where its results are kept
};

struct BandSteps {
  std::function<Outcome<>(const Band& band)> begin;  // in order; may be empty
  std::function<void(const Band& band)> compute;     // on any thread, several bands at once
  std::function<void(const Band& band)> use;         // in order; may be empty
};

// Runs all bands of `rowsPerBand` rows (at least 1). Ends when a band cannot begin, or when
// `progress`, which hears of each band, wants to stop.
[[nodiscard]] Outcome<> RunBands(int rows, int rowsPerBand, const BandSteps& steps,
                                 ProgressSink& progress);

}  // namespace ormel
