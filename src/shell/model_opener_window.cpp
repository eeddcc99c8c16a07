#include "shell/model_opener_window.h"

#include <memory>

#include "mce/linear/composite_map_window.h"
#include "mce/linear/model_information.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {

bool OpenModel(AppContext& app, const std::string& path) {
  Outcome<LinearModel> model = ReadRunnableModel(path);
  if (!model.Ok()) {
    app.desktop.Message(model.Text());
    return false;
  }
  FrmDraw& viewer = app.desktop.Show(std::make_unique<FrmDraw>(
      app, std::make_shared<const LinearModel>(std::move(model.Value()))));
  bool started = false;
  // As a handler: a person may stop it or close the viewer meanwhile, and memory may run out.
  app.desktop.Dispatch([&] {
    ui::Run run(viewer);
    started = run.Report(viewer.Start(run));
  });
  if (!started) app.desktop.Close(viewer);
  return started;
}

bool AskAndOpenModel(AppContext& app) {
  const auto choice = app.desktop.OpenFile({"Load MCE", "Model Information Files (*.mif)|*.mif", "",
                                            app.settings.workingDirectory, "*.mif"});
  return choice && OpenModel(app, choice->Path());
}

}  // namespace ormel
