// What came of a piece of work: it is done and has a value, the user cancelled it, or it failed
// with a kind and a text for the user. Every routine that can fail returns one, and the caller
// looks at it on the next line:
//
//   Outcome<RasterMap> map = ReadRaster(path);
//   if (!map.Ok()) return map.Stop();   // hands a cancellation or failure on, whatever T is
//   Use(map.Value());
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace ormel {

enum class FailureKind {
  kNotFound,  // a file or folder is not there
  kDamaged,   // a file is there, but does not hold what it should
  kRefused,   // the input cannot be used for this
  kDisk,      // reading or writing failed
  kDiskFull,  // writing failed: there is no room
  kTooLarge,  // the memory of this machine does not hold it
};

// The text is one sentence that names file, line and value as far as they matter.
struct Failure {
  FailureKind kind = FailureKind::kRefused;
  std::string text;
};

struct Cancelled {};

// The value of work that has none.
struct Done {};

// The part of an outcome that is not a value: converts to an Outcome of any type.
using Stopped = std::variant<Cancelled, Failure>;

template <class T = Done>
class [[nodiscard]] Outcome {
 public:
  Outcome(T value) : state_(std::move(value)) {}
  Outcome(Failure failure) : state_(std::move(failure)) {}
  Outcome(Cancelled cancelled) : state_(cancelled) {}
  Outcome(Stopped stopped) : state_(Cancelled{}) {
    if (auto* failure = std::get_if<Failure>(&stopped)) state_ = std::move(*failure);
  }

  bool Ok() const { return std::holds_alternative<T>(state_); }
  bool WasCancelled() const { return std::holds_alternative<Cancelled>(state_); }
  bool Failed() const { return std::holds_alternative<Failure>(state_); }

  // Only when Ok().
  T& Value() {
    assert(Ok());
    return *std::get_if<T>(&state_);
  }
  const T& Value() const {
    assert(Ok());
    return *std::get_if<T>(&state_);
  }
  // Only when Failed().
  const Failure& Why() const {
    assert(Failed());
    return *std::get_if<Failure>(&state_);
  }
  // The text of the failure; empty for the two others.
  std::string Text() const { return Failed() ? Why().text : std::string(); }

  // Only when not Ok(): what is left to hand on.
  Stopped Stop() const {
    if (Failed()) return Why();
    return Cancelled{};
  }

 private:
  std::variant<T, Failure, Cancelled> state_;
};

}  // namespace ormel
