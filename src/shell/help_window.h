// The help: the pages of the guide with their contents, an index, and a search that marks what it
// finds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/help_pages.h"
#include "ui/window.h"

namespace ormel {

class FrmHelp final : public ui::Window {
 public:
  // Reads the guide in `folder`, and says so on its page when there is none.
  FrmHelp(ui::Desktop& desktop, const std::string& folder);

  // The three ways in. The contents come with the start page.
  void ShowContents();
  void ShowIndex();
  void ShowSearch();
  // What the guide tells about a window (help_topics.h); the contents when it tells nothing.
  void ShowAbout(std::string_view window);

  ui::MenuBar menu{*this, Menus()};
  ui::TextBox txtSearch{*this, "txtSearch"};
  ui::Button cmdClear{*this, "cmdClear", "Clea&r"};
  ui::Label lblFound{*this, "lblFound"};
  ui::ListBox lstFound{*this, "lstFound"};
  ui::OptionGroup optPane{*this, "optPane"};
  ui::ListBox lstPages{*this, "lstPages"};
  ui::ListBox lstIndex{*this, "lstIndex"};
  ui::Button cmdBack{*this, "cmdBack", "&Back"};
  ui::Button cmdForward{*this, "cmdForward", "&Forward"};
  ui::Button cmdHome{*this, "cmdHome", "S&tart Page"};
  ui::Label lblPlace{*this, "lblPlace"};
  ui::Button cmdPrevious{*this, "cmdPrevious", "&Previous"};
  ui::Button cmdNext{*this, "cmdNext", "&Next"};
  ui::Button cmdClose{*this, "cmdClose", "&Close"};
  ui::RichText docPage{*this, "docPage"};

 private:
  enum Pane { kContents = 1, kIndex = 2 };

  std::vector<ui::MenuSpec> Menus();
  void ConnectHandlers();
  void LayOut();
  void ShowPane(Pane pane);

  // Going about. Visits are the places that Back and Forward lead through.
  void Go(const HelpPlace& place);
  void Travel(int steps);
  void ShowPlace(const HelpPlace& place);
  void ListContents();
  void SelectWhereItIs();
  void FollowLink(const std::string& target);

  void Search();
  void Clear();
  void OpenFound(int number);
  void Step(int direction);
  void StepToPage(int direction);
  void MarkPage();
  void ShowMarks();
  int FoundAt(const HelpPlace& place) const;

  ui::Desktop& desktop_;
  const std::string folder_;
  HelpPages pages_;
  std::vector<HelpPlace> contents_;  // behind the entries of lstPages
  std::vector<HelpPlace> visits_;
  std::size_t visit_ = 0;                             // the one on show
  std::size_t shown_ = static_cast<std::size_t>(-1);  // the page on show; at first none
  HelpSearch search_;
  bool stepped_ = false;  // to one of the places found
};

// Opens the help, or brings it to the front when it is open: it can be used above a modal window
// too.
FrmHelp& OpenHelp(ui::Desktop& desktop);

}  // namespace ormel
