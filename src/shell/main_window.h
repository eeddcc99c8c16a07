// The main window: a menu and a toolbar across the top of the screen, from which every tool and
// every model builder is opened. It knows the one running model by the ModelSession.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "parts/app_context.h"
#include "shell/options_window.h"
#include "ui/window.h"

namespace ormel {

class FrmTS1;
class FrmView;
class RunningModel;
class SavedDesktop;

class FrmMain final : public ui::Window {
 public:
  // Loads the settings. At most one in a program, and open as long as it runs. `saved` has the
  // files that were used last.
  FrmMain(AppContext& app, SavedDesktop& saved);
  ~FrmMain() override;

  // Opens what the text names, by its extension in small letters: models, maps. Whatever fails is
  // passed over in silence, and so is a text that names nothing known.
  void OpenFileByExtension(const std::string& text);

  // Whether a model may be started: none runs, or the person agrees to close the one that does. It
  // is true as well when that model then asks about its changes and is kept after all.
  bool CloseCurMCE();

  // Another start of the program hands over a file, a path and "?": it opens at once. The empty
  // message that announces a file by hand has nothing to wait for, and the receive box is left to
  // whoever types in it.
  void TakeOver(const std::string& text);

  // By its frame as by Exit.
  bool QueryClose() override;

  ui::TextBox txtReceive{*this, "txtReceive"};
  ui::MenuBar menu{*this, Menus()};
  ui::ToolBar TBMain{*this, "TBMain", Tools()};

 private:
  using Command = void (FrmMain::*)();

  // The menu of a toolbar's button, which starts again what was chosen from it last.
  struct Choice {
    const char* caption;
    Command start;
  };
  static std::vector<Choice> Builders();
  static std::vector<Choice> RasterTools();

  std::vector<ui::MenuSpec> Menus();
  std::vector<ui::ToolSpec> Tools();
  ui::Handler Run(Command command);
  void ShowSession();
  void ShowChoices();
  std::vector<ui::MenuSpec> ChoiceMenu(const std::vector<Choice>& choices, int& chosen,
                                       void (FrmMain::*start)(int number));
  void ListRecent();
  void OpenRecent(const std::string& path);
  bool OpenAs(const std::string& path, std::string_view extension);
  void ListWindows();
  void GoToWindow(int number);
  void StartBuilder(int number);
  void StartRasterTool(int number);

  // The commands of the menu, by the names of their entries.
  void mBuild();
  void mBuildC();
  void mTimeStep();
  void mTimeStepC();
  void mOptions();
  void mReceive();
  void mExit();
  void mLoadMCE();
  void mSaveMCE();
  void mSaveAsMCE();
  void mClose();
  void mAbout();

  void mNewView();
  void mDPrep();
  void mMapStats();
  void mMapAlgebra();
  void mClass();
  void mGenFCSV();
  void mAVI();

  // Each tool has one window: it comes to the front when it is open.
  template <class Tool>
  void OpenTool();
  FrmView& NewView();
  void OpenMap(const std::string& path);
  void TextReceived();
  template <class Builder>
  void Build();
  template <class Builder>
  Builder* NewBuilder(Command start);
  void OpenLinearModel(const std::string& path);
  void OpenNonlinearModel(const std::string& path);
  void OpenTimeStepModel(const std::string& path);
  FrmTS1* StartTimeSteps();
  void TimeStepByToolbar();

  AppContext& app_;
  SavedDesktop& saved_;
  FrmOptions options_{app_};
  // What the toolbar's buttons with a menu start, from 1.
  int builder_ = 1;
  int rasterTool_ = 1;
};

}  // namespace ormel
