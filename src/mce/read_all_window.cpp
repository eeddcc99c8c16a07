#include "mce/read_all_window.h"

#include <utility>

#include "mapdata/raster.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {

FrmRA::FrmRA(ui::Desktop& desktop, const std::string& startFolder,
             std::function<void(const DirectoryChoice&)> take)
    : Window("frmRA", "Read all From Directory"),
      folder(*this, desktop),
      desktop_(desktop),
      take_(std::move(take)) {
  folder.SetFolder(startFolder);
  File.SetFolder(startFolder);
  folder.onChange = [this] { File.SetFolder(folder.Folder()); };
  ckSmart.SetToolTip("Take the whole folder: maps of 0, 1 and NODATA become constraints");
  cmdGo.SetDefault();
  cmdCancel.SetCancel();
  cmdGo.onClick = [this] { Go(); };
  cmdCancel.onClick = [this] { desktop_.Close(*this); };
  SetLayout(ui::Column{ui::Share(1, ui::Row{ui::Share(1, folder.Area()), ui::Share(1, File)}),
                       "The first map that you choose decides the size and place of all.", ckSmart,
                       ui::Row{ui::Stretch{}, cmdGo, cmdCancel}});
}

void FrmRA::Go() {
  const auto path = [this](const std::string& name) { return JoinPath(File.Folder(), name); };
  DirectoryChoice choice;
  choice.sorted = ckSmart.Checked();
  if (File.FirstSelected() != 0) choice.reference = path(File.SelectedText());
  if (choice.sorted) {
    if (!Sort()) return;
    for (const std::string& name : lstF.Items()) choice.factors.push_back(path(name));
    choice.constraints = LSTC.Items();
  } else {
    for (const int index : File.Selected()) choice.factors.push_back(path(File.Item(index)));
  }
  take_(choice);
  desktop_.Close(*this);
}

// False: the person stopped it.
bool FrmRA::Sort() {
  ui::Run run(*this);
  lstF.Clear();
  LSTC.Clear();
  for (int i = 1; i <= File.Count(); ++i) {
    const std::string path = JoinPath(File.Folder(), File.Item(i));
    ProgressSpan span(run, 100.0 * (i - 1) / File.Count(), 100.0 * i / File.Count());
    const Outcome<bool> constraint = IsValidConstraintFile(path, span);
    if (constraint.WasCancelled()) return false;
    if (constraint.Ok() && constraint.Value()) {
      LSTC.Add(path);
    } else {
      lstF.Add(File.Item(i));
    }
  }
  return true;
}

}  // namespace ormel
