// Where long work reports how far it is. The work calls Report() every few rows; the sink shows the
// figure, lets the windows live, and says whether to go on.
#pragma once

namespace ormel {

class ProgressSink {
 public:
  virtual ~ProgressSink() = default;

  // `percent` runs from 0 to 100. False: the user wants to stop; the work then ends at once, leaves
  // no half-written file and returns Cancelled. Cheap enough for every row of a map, too dear for
  // every cell.
  [[nodiscard]] virtual bool Report(double percent) = 0;
};

// For work that nobody watches.
class NoProgress final : public ProgressSink {
 public:
  bool Report(double /*percent*/) override { return true; }
};

// Shows a piece of the work as the stretch from `from` to `to` percent of the whole.
class ProgressSpan final : public ProgressSink {
 public:
  ProgressSpan(ProgressSink& whole, double from, double to) : whole_(whole), from_(from), to_(to) {}
  bool Report(double percent) override {
    return whole_.Report(from_ + (to_ - from_) * percent / 100.0);
  }

 private:
  ProgressSink& whole_;
  double from_;
  double to_;
};

}  // namespace ormel
