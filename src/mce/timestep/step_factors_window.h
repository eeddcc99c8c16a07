// The second page of a time-step model: its factors and constraints, in the rows of the single-pass
// builders.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mce/factor_form_window.h"
#include "mce/timestep/step_wizard_window.h"
#include "mce/timestep/time_step_model.h"

namespace ormel {

// A factor as the pages behind this one list it.
struct ListedFactor {
  std::string path;
  std::string name;
  Colour colour = kBlack;  // of its curve
  double weight = 1;       // by which a plot may multiply it
};

class StepFactorsWindow : public FactorForm {
 public:
  StepFactorsText Text() const;
  void Put(const StepFactorsText& text);
  // Goes on to how the factors change. False: a message has told why not.
  bool Next();

  virtual std::vector<ListedFactor> Listed() const = 0;
  // How the factors on the page count, with the constraints; the palette is a path.
  virtual std::unique_ptr<StepKind> Steps(const std::string& palette) const = 0;

  bool QueryClose() override { return wizard_.Leave(); }

 protected:
  StepFactorsWindow(AppContext& app, StepWizard& wizard, const std::string& name,
                    MakeFactorKind makeKind);
  virtual bool IsNonlinear() const = 0;

 private:
  void LayOut() override;
  std::string Title() const override { return title_; }
  void SetTitle(const std::string& title) override { title_ = title; }
  ui::FileDialog ConstraintDialog() const override;
  std::vector<ui::MenuSpec> Menu();
  void SaveFactors();

  StepWizard& wizard_;
  std::string title_;  // of a single-pass model whose factors were loaded
  std::string constraintRoot_;
  std::string constraintPattern_ = "*.asc";
  StepPageParts parts_;
  ui::MenuBar menu_;
};

class FrmTS2 final : public StepFactorsWindow {
 public:
  FrmTS2(AppContext& app, StepWizard& wizard);
  std::vector<ListedFactor> Listed() const override;
  std::unique_ptr<StepKind> Steps(const std::string& palette) const override;

 private:
  bool IsNonlinear() const override { return false; }
};

class FrmTS2C final : public StepFactorsWindow {
 public:
  FrmTS2C(AppContext& app, StepWizard& wizard);
  std::vector<ListedFactor> Listed() const override;
  std::unique_ptr<StepKind> Steps(const std::string& palette) const override;

 private:
  bool IsNonlinear() const override { return true; }
};

}  // namespace ormel
