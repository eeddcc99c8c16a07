#include "base/parallel_rows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <thread>

namespace ormel {
namespace {

constexpr int kPieces = 200;

// Every other piece takes longer than its neighbours.
void Dawdle(std::int64_t piece) {
  if (piece % 2 == 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
}

TEST(OrderedPieces, ComeInOrderWhateverTheNumberOfThreads) {
  for (const int threads : {1, 2, 3, 8}) {
    const auto slots = static_cast<std::size_t>(OrderedPieces::SlotsFor(threads));
    std::vector<std::int64_t> rooms(slots, -1);
    std::set<std::thread::id> workers;
    std::mutex mutex;
    std::int64_t begun = 0;
    OrderedPieces pieces({[&](std::int64_t piece, int slot) {
                            EXPECT_EQ(piece, begun++);
                            rooms[static_cast<std::size_t>(slot)] = piece;
                            return piece < kPieces;
                          },
                          [&](std::int64_t piece, int slot) {
                            Dawdle(piece);
                            EXPECT_EQ(rooms[static_cast<std::size_t>(slot)], piece);
                            rooms[static_cast<std::size_t>(slot)] = piece * piece;
                            const std::lock_guard lock(mutex);
                            workers.insert(std::this_thread::get_id());
                          }},
                         threads);
    for (std::int64_t piece = 0; piece < kPieces; ++piece) {
      const int slot = pieces.Next();
      ASSERT_GE(slot, 0);
      ASSERT_EQ(rooms[static_cast<std::size_t>(slot)], piece * piece);
    }
    EXPECT_EQ(pieces.Next(), -1);
    EXPECT_EQ(pieces.Next(), -1);
    EXPECT_LE(workers.size(), static_cast<std::size_t>(threads));
    EXPECT_EQ(workers.size() == 1, threads == 1);
  }
}

TEST(OrderedPieces, HandOnWhatAPieceThrowsAndCanBeLeftInTheMiddle) {
  for (const int threads : {1, 3}) {
    std::atomic<int> computed = 0;
    OrderedPieces pieces({[](std::int64_t, int) { return true; },
                          [&](std::int64_t piece, int) {
                            ++computed;
                            if (piece == 5) throw std::runtime_error("no room");
                          }},
                         threads);
    for (int i = 0; i < 5; ++i) EXPECT_GE(pieces.Next(), 0);
    EXPECT_THROW((void)pieces.Next(), std::runtime_error);
    EXPECT_GE(pieces.Next(), 0);
    EXPECT_LE(computed, 7 + OrderedPieces::SlotsFor(threads));
  }
}

class CountedProgress final : public ProgressSink {
 public:
  explicit CountedProgress(int reports) : left_(reports) {}
  bool Report(double percent) override {
    EXPECT_GT(percent, last_);
    last_ = percent;
    return --left_ > 0;
  }
  double Last() const { return last_; }

 private:
  int left_;
  double last_ = 0;
};

TEST(Bands, CoverEachRowOnceAndEndWhereTheyAreTold) {
  std::vector<int> seen;
  BandSteps steps;
  steps.compute = [](const Band& band) { Dawdle(band.first); };
  steps.use = [&](const Band& band) {
    for (int row = band.first; row <= band.last; ++row) seen.push_back(row);
  };
  CountedProgress whole(1000);
  EXPECT_TRUE(RunBands(50, 8, steps, whole).Ok());
  ASSERT_EQ(seen.size(), 50U);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(seen[static_cast<std::size_t>(i)], i + 1);
  EXPECT_EQ(whole.Last(), 100);

  seen.clear();
  CountedProgress stopped(2);
  EXPECT_TRUE(RunBands(50, 8, steps, stopped).WasCancelled());
  EXPECT_EQ(seen.size(), 16U);

  seen.clear();
  steps.begin = [](const Band& band) -> Outcome<> {
    if (band.first < 17) return Done{};
    return Failure{FailureKind::kDamaged, "row 17"};
  };
  CountedProgress failed(1000);
  EXPECT_EQ(RunBands(50, 8, steps, failed).Text(), "row 17");
  EXPECT_EQ(seen.size(), 16U);
}

TEST(ThreadCount, IsWhatTheEnvironmentSays) {
  const char* before = std::getenv("ORMEL_THREADS");
  const std::string kept = before == nullptr ? "" : before;
  const std::pair<const char*, int> cases[] = {{"1", 1}, {"3", 3}, {"1000", 64}};
  for (const auto& [text, threads] : cases) {
    setenv("ORMEL_THREADS", text, 1);
    EXPECT_EQ(ThreadCount(), threads);
  }
  for (const char* text : {"0", "-2", "many"}) {
    setenv("ORMEL_THREADS", text, 1);
    EXPECT_EQ(ThreadCount(), static_cast<int>(std::thread::hardware_concurrency()));
  }
  setenv("ORMEL_THREADS", kept.c_str(), 1);
  if (before == nullptr) unsetenv("ORMEL_THREADS");
}

}  // namespace
}  // namespace ormel
