#include "mce/save_model_window.h"

#include <filesystem>

#include "mce/model_session.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

void SaveInPlace(ModelSession& session) {
  session.saveInPlace = true;
  session.Running()->cmdSave_Click();
  session.saveInPlace = false;
}

}  // namespace

void SaveRunningModel(AppContext& app) {
  ModelSession& session = app.session;
  if (session.Running() == nullptr) return;
  std::error_code error;
  if (session.modelFile.empty()) return session.Running()->cmdSave_Click();
  if (!std::filesystem::exists(session.modelFile, error)) return SaveInPlace(session);
  switch (app.desktop.AskBeforeLoss("Overwrite existing file?", "Save Model Information",
                                    ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      return SaveInPlace(session);
    case ui::Answer::kNo:
      return session.Running()->cmdSave_Click();
    default:
      return;
  }
}

}  // namespace ormel
