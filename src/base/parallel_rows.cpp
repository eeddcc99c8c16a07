#include "base/parallel_rows.h"

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <utility>

namespace ormel {
namespace {

constexpr int kMostThreads = 64;

}  // namespace

int ThreadCount() {
  const char* wanted = std::getenv("ORMEL_THREADS");
  const int number = wanted == nullptr ? 0 : std::atoi(wanted);
  const int threads = number > 0 ? number : static_cast<int>(std::thread::hardware_concurrency());
  return std::clamp(threads, 1, kMostThreads);
}

// Pieces are counted up: those before `front` are used, those before `taken` have somebody who
// computes them, those before `begun` are prepared.
struct OrderedPieces::Shared {
  Steps steps;
  int slots = 1;
  std::mutex mutex;
  std::condition_variable work;  // there is a piece to take, or nothing is wanted any more
  std::condition_variable done;  // a piece has been computed
  std::int64_t front = 0;
  std::int64_t taken = 0;
  std::int64_t begun = 0;
  bool frontIsOut = false;  // the caller has it
  bool ended = false;       // there are no more pieces to begin
  bool stopped = false;
  std::vector<bool> computed;  // by slot
  std::vector<std::exception_ptr> thrown;
  std::vector<std::thread> threads;

  int SlotOf(std::int64_t piece) const { return static_cast<int>(piece % slots); }

  // Computes the next piece that nobody has taken. The lock is open meanwhile.
  void ComputeOne(std::unique_lock<std::mutex>& lock) {
    const std::int64_t piece = taken++;
    const int slot = SlotOf(piece);
    const auto place = static_cast<std::size_t>(slot);
    lock.unlock();
    std::exception_ptr error;
    try {
      steps.compute(piece, slot);
    } catch (...) {
      error = std::current_exception();
    }
    lock.lock();
    thrown[place] = error;
    computed[place] = true;
    done.notify_one();
  }

  void Work() {
    std::unique_lock lock(mutex);
    while (true) {
      work.wait(lock, [this] { return stopped || taken < begun; });
      if (stopped) return;
      ComputeOne(lock);
    }
  }

  // Prepares as many pieces as there are free slots. The lock is open meanwhile.
  void BeginMore(std::unique_lock<std::mutex>& lock) {
    while (!ended && begun < front + slots) {
      const int slot = SlotOf(begun);
      lock.unlock();
      const bool more = steps.begin(begun, slot);
      lock.lock();
      ended = !more;
      if (!more) return;
      computed[static_cast<std::size_t>(slot)] = false;
      ++begun;
      work.notify_one();
    }
  }
};

int OrderedPieces::SlotsFor(int threads) { return threads <= 1 ? 1 : 2 * threads + 1; }

OrderedPieces::OrderedPieces(Steps steps, int threads) : shared_(std::make_unique<Shared>()) {
  shared_->steps = std::move(steps);
  shared_->slots = SlotsFor(threads);
  shared_->computed.resize(static_cast<std::size_t>(shared_->slots));
  shared_->thrown.resize(static_cast<std::size_t>(shared_->slots));
  for (int i = 1; i < threads; ++i) {
    shared_->threads.emplace_back([shared = shared_.get()] { shared->Work(); });
  }
}

OrderedPieces::~OrderedPieces() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->stopped = true;
  }
  shared_->work.notify_all();
  for (std::thread& thread : shared_->threads) thread.join();
}

int OrderedPieces::Next() {
  Shared& shared = *shared_;
  std::unique_lock lock(shared.mutex);
  if (std::exchange(shared.frontIsOut, false)) ++shared.front;
  while (true) {
    shared.BeginMore(lock);
    if (shared.front == shared.begun) return -1;
    const int slot = shared.SlotOf(shared.front);
    const auto place = static_cast<std::size_t>(slot);
    if (shared.computed[place]) {
      shared.frontIsOut = true;
      if (shared.thrown[place]) std::rethrow_exception(shared.thrown[place]);
      return slot;
    }
    if (shared.taken < shared.begun) {
      shared.ComputeOne(lock);
    } else {
      shared.done.wait(lock, [&] { return shared.computed[place]; });
    }
  }
}

Outcome<> RunBands(int rows, int rowsPerBand, const BandSteps& steps, ProgressSink& progress) {
  const auto bandOf = [=](std::int64_t piece, int slot) {
    const int first = static_cast<int>(piece * rowsPerBand) + 1;
    return Band{first, static_cast<int>(std::min<std::int64_t>(rows, first - 1LL + rowsPerBand)),
                slot};
  };
  Outcome<> begun = Done{};
  OrderedPieces pieces({[&](std::int64_t piece, int slot) {
                          if (piece * rowsPerBand >= rows || !begun.Ok()) return false;
                          if (steps.begin) begun = steps.begin(bandOf(piece, slot));
                          return begun.Ok();
                        },
                        [&](std::int64_t piece, int slot) { steps.compute(bandOf(piece, slot)); }},
                       rows > rowsPerBand ? ThreadCount() : 1);
  std::int64_t piece = 0;
  for (int slot = pieces.Next(); slot >= 0; slot = pieces.Next()) {
    const Band band = bandOf(piece++, slot);
    if (steps.use) steps.use(band);
    if (!progress.Report(100.0 * band.last / rows)) return Cancelled{};
  }
  return begun;
}

}  // namespace ormel
