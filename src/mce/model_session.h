// The one running model of the program: who owns it, and where it is saved.
#pragma once

#include <functional>
#include <string>

namespace ormel {

// A window that owns a running model, as the rest of the program needs it.
class RunningModel {
 public:
  virtual ~RunningModel() = default;

  // Saves the model, with its own dialog unless ModelSession::saveInPlace is set.
  virtual void cmdSave_Click() = 0;

  // A person closes the model, which may ask what becomes of unsaved changes. False: it stays.
  [[nodiscard]] virtual bool Unload() = 0;

  // Brings its window to the front.
  virtual void BringForward() = 0;
};

class ModelSession {
 public:
  std::string modelFile;        // path of the model's file; empty: it has none yet
  bool saveInPlace = false;     // a save goes to modelFile without a dialog
  bool nonLinearSteps = false;  // the factors of the next time-step model have weight graphs

  // Null when no model runs.
  RunningModel* Running() const { return running_; }

  // A model begins, and ends when its window closes.
  void Begin(RunningModel& model) {
    running_ = &model;
    Tell();
  }
  void End(const RunningModel& model) {
    if (running_ != &model) return;
    running_ = nullptr;
    Tell();
  }

  // Called whenever a model begins or ends.
  std::function<void()> onChange;

 private:
  void Tell() const {
    if (onChange) onChange();
  }

  RunningModel* running_ = nullptr;
};

}  // namespace ormel
