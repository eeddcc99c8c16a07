// A window with one control of each kind, which notes every event that its controls fire, and the
// screen and desktop to show it on.
#pragma once

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "ui/headless/headless_desktop.h"
#include "ui/window.h"

namespace ormel::ui::testing {

class FrmTest : public Window {
 public:
  explicit FrmTest(std::string name = "frmTest") : Window(std::move(name), "Test") {
    optSlope.SetCaptions({"&Rook", "Erdas", "Queen"});
    ckRow.Resize(3);
    txtName.SetMaximumLength(6);
    lstOne.SetItems({"north", "south", "7"});
    lstMany.SetItems({"a", "b", "c"});
    cmbFixed.SetItems({"day", "hour"});
    cmbTyped.SetItems({"one", "two"});
    cmdOk.SetDefault();
    cmdCancel.SetCancel();
    picMap.SetImage(Canvas(4, 3));
    txtNotes.SetMultiLine(true);
    txtNotes.SetText("two\nlines");
    SetLayout(
        Column{Row{Column{Frame{fraBox, txtInside},
                          Table{{"&Name:", txtName}, {"&Unit:", cmbFixed, cmbTyped}},
                          Row{ckSmart, sldWeight, spnWhole, swGround}, Frame{"Slope", optSlope},
                          txtNotes, Row{Column{drvPlace, Dir}, File, lstOne, lstMany}},
                   Column{Row{picMap, scrRow}, scrColumn, lblState}},
               pbDone, Row{Stretch{}, cmdOk, cmdCancel}});
    for (Control* control : Controls()) Watch(*control);
  }
  ~FrmTest() override {
    if (onDestroyed) onDestroyed();
  }

  // Notes every event of a control as NAME:EVENT.
  void Watch(Control& control) {
    const auto note = [this, name = control.Name()](const char* event) {
      return [this, name, event] { events += name + ":" + event + " "; };
    };
    control.onClick = note("click");
    control.onDoubleClick = note("double");
    control.onChange = note("change");
    control.onLeave = note("leave");
    control.onSelect = note("select");
    control.onMouse = [this, name = control.Name()](const MouseEvent& event) {
      static constexpr const char* kNames[] = {"down", "move", "up", "click"};
      events += name + ":" + kNames[static_cast<int>(event.action)] + " ";
    };
    control.onKey = [this, name = control.Name()](const std::string& key) {
      events += name + ":" + key + " ";
    };
  }

  // The events since the last call.
  std::string TakeEvents() { return std::exchange(events, ""); }

  bool QueryClose() override { return mayClose && (!onQueryClose || onQueryClose()); }
  void OnClosed() override { events += "closed "; }

  bool mayClose = true;
  std::function<bool()> onQueryClose;
  std::function<void()> onDestroyed;
  std::string events;

  Label lblState{*this, "lblState", "Ready"};
  Button cmdOk{*this, "cmdOk", "&OK"};
  Button cmdCancel{*this, "cmdCancel", "Cancel"};
  CheckBox ckSmart{*this, "ckSmart", "Filter Data"};
  ControlArray<CheckBox> ckRow{*this, "ckRow"};
  OptionGroup optSlope{*this, "optSlope", 0};
  FrameControl fraBox{*this, "fraBox", "Box"};
  TextBox txtInside{*this, "txtInside"};
  TextBox txtName{*this, "txtName"};
  ListBox lstOne{*this, "lstOne"};
  ListBox lstMany{*this, "lstMany", ListBox::Choice::kMultiple};
  ComboBox cmbFixed{*this, "cmbFixed"};
  ComboBox cmbTyped{*this, "cmbTyped", ComboBox::Kind::kTyped};
  Slider sldWeight{*this, "sldWeight", 1, 100};
  SpinButton spnWhole{*this, "spnWhole", 0, 2147483647};
  Picture picMap{*this, "picMap"};
  Picture picStrip{*this, "picStrip"};
  ColourSwatch swGround{*this, "swGround", 255};
  TextBox txtNotes{*this, "txtNotes"};
  ScrollBar scrRow{*this, "scrRow"};
  ScrollBar scrColumn{*this, "scrColumn", false};
  ProgressBar pbDone{*this, "pbDone"};
  DriveList drvPlace{*this, "Drive"};
  FolderList Dir{*this, "Dir"};
  FileList File{*this, "File"};
  StatusStrip status{*this, "status", 2};
  MenuBar menu{*this,
               {{"mFile",
                 "&File",
                 "",
                 {},
                 {{"mSave", "&Save", "Ctrl+S", {}, {}},
                  MenuSpec::Separator(),
                  {"", "&More", "", {}, {{"mRun", "Run", "F12", {}, {}}}}}}}};
  ToolBar tools{
      *this, "TBMain", {{1, "Load", "", {}, {{"", "First", "", {}, {}}}}, {2, "View", "", {}, {}}}};
};

// Stands in for what a person does while a long command lets the windows live.
class FakeScreen final : public Screen {
 public:
  void Open(Window&, Window*, bool, std::optional<WindowSize> size) override { opened = size; }
  void Show(Window& window, bool visible) override { shown = visible ? window.Name() : ""; }
  void Close(Window&) override {}
  WindowBox Room() const override { return {}; }
  WindowBox BoxOf(const Window&) const override { return {}; }
  std::optional<WindowSize> SizeGiven(const Window&) const override { return given; }
  void Resize(Window&, WindowSize size) override { given = size; }
  void ProcessEvents() override {
    ++pumps;
    if (onPump) onPump();
  }
  bool Snapshot(Window&, const std::string& file) override {
    pictures.push_back(file);
    return canWrite;
  }

  std::optional<WindowSize> opened;  // the size of the window that was opened last
  std::optional<WindowSize> given;   // what a person made of it
  std::string shown;                 // the window shown again last
  int pumps = 0;
  std::function<void()> onPump;
  std::vector<std::string> pictures;
  bool canWrite = true;
};

// Remembers as long as the test runs.
struct ShortMemory final : DesktopMemory {
  std::string FolderOf(FileKind) const override { return ""; }
  void NoteChosen(FileKind, const std::string& path) override { notes += path; }
  std::optional<WindowSize> SizeOf(const std::string&) const override { return size; }
  void NoteSize(const std::string& window, WindowSize left) override {
    size = left;
    notes += window + " " + std::to_string(left.width) + " x " + std::to_string(left.height) + ", ";
  }
  std::optional<WindowSize> size;
  std::string notes;
};

// A desktop without a person before it, and test windows on it. It may have a screen.
struct TestDesktop {
  explicit TestDesktop(bool seen = false) : desktop(log, seen ? &screen : nullptr) {}

  FrmTest& ShowTest(std::string name = "frmTest") {
    return desktop.Show(std::make_unique<FrmTest>(std::move(name)));
  }

  std::ostringstream log;
  FakeScreen screen;
  HeadlessDesktop desktop;
};

}  // namespace ormel::ui::testing
