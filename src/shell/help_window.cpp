#include "shell/help_window.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>

#include "shell/help_topics.h"
#include "shell/program_folder.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kName[] = "frmHelp";

std::string Counted(int count, const std::string& one) {
  return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

}  // namespace

FrmHelp::FrmHelp(ui::Desktop& desktop, const std::string& folder)
    : Window(kName, "ORMEL Help"), desktop_(desktop), folder_(folder) {
  optPane.SetCaptions({"C&ontents", "&Index"});
  cmdClear.SetCancel();  // Escape takes the search away first, then the window
  cmdClose.SetCancel();
  cmdNext.SetDefault();
  for (ui::ListBox* list : {&lstFound, &lstPages, &lstIndex}) list->SetShortened(true);
  LayOut();
  ConnectHandlers();
  Outcome<HelpPages> read = HelpPages::Read(folder);
  if (read.Ok()) {
    pages_ = std::move(read.Value());
    std::vector<std::string> terms;
    for (const HelpTerm& term : pages_.Index()) terms.push_back(term.text);
    lstIndex.SetItems(std::move(terms));
  } else {
    docPage.SetPage(ReadMarkdown("# Help\n\n" + read.Text()), folder);
    for (ui::Control* control : Controls()) {
      if (control != &docPage && control != &cmdClose) control->SetEnabled(false);
    }
  }
  ShowPane(kContents);
  Search();
}

FrmHelp& OpenHelp(ui::Desktop& desktop) {
  if (auto* open = dynamic_cast<FrmHelp*>(desktop.FindWindow(kName))) {
    desktop.BringAbove(*open);
    return *open;
  }
  return desktop.Show(std::make_unique<FrmHelp>(desktop, GuideFolder()),
                      desktop.FindWindow("frmMain"));
}

std::vector<ui::MenuSpec> FrmHelp::Menus() {
  using ui::MenuSpec;
  return {{"mGo",
           "&Go",
           "",
           {},
           {{"mBack", "&Back", "Alt+Left", [this] { Travel(-1); }, {}},
            {"mForward", "&Forward", "Alt+Right", [this] { Travel(1); }, {}},
            {"mHome", "&Start Page", "Alt+Home", [this] { Go({}); }, {}},
            MenuSpec::Separator(),
            {"mContents", "&Contents", "", [this] { ShowContents(); }, {}},
            {"mIndex", "&Index", "", [this] { ShowIndex(); }, {}},
            MenuSpec::Separator(),
            {"mClose", "C&lose", "Ctrl+W", [this] { desktop_.Close(*this); }, {}}}},
          {"mSearch",
           "&Search",
           "",
           {},
           {{"mFind", "&Search the Guide", "Ctrl+F", [this] { ShowSearch(); }, {}},
            {"mNext", "&Next Place", "F3", [this] { Step(1); }, {}},
            {"mPrevious", "&Previous Place", "Shift+F3", [this] { Step(-1); }, {}}}}};
}

void FrmHelp::LayOut() {
  txtSearch.SetToolTip("Words to look for; \"words in quotes\" are looked for together (Ctrl+F)");
  cmdClear.SetToolTip("Takes the search and its marks away (Esc)");
  cmdBack.SetToolTip("To the place before (Alt+Left)");
  cmdForward.SetToolTip("To the place from which you came back (Alt+Right)");
  cmdHome.SetToolTip("To the start page of the guide (Alt+Home)");
  cmdPrevious.SetToolTip("The marked place before (Shift+F3)");
  cmdNext.SetToolTip("The next marked place, on the next page behind the last one (F3)");
  SetLayout(ui::Row{
      ui::Share(
          3, ui::Column{ui::Row{"Se&arch:", txtSearch, cmdClear}, lblFound, ui::Share(3, lstFound),
                        ui::Row{lblPlace, ui::Stretch{}, cmdPrevious, cmdNext},
                        ui::Row{optPane(1), optPane(2)}, ui::Share(2, lstPages),
                        ui::Share(2, lstIndex)}),
      ui::Share(
          7, ui::Column{ui::Row{cmdBack, cmdForward, cmdHome, ui::Stretch{}, cmdClose}, docPage})});
}

void FrmHelp::ConnectHandlers() {
  txtSearch.onChange = [this] { Search(); };
  cmdClear.onClick = [this] { Clear(); };
  lstFound.onSelect = [this] { OpenFound(lstFound.FirstSelected()); };
  optPane.OnChange([this] { ShowPane(static_cast<Pane>(optPane.Chosen())); });
  lstPages.onSelect = [this] {
    const int row = lstPages.FirstSelected();
    if (row > 0) Go(HelpPlace(contents_[static_cast<std::size_t>(row - 1)]));  // listed anew
  };
  lstIndex.onSelect = [this] {
    const int row = lstIndex.FirstSelected();
    if (row > 0) Go(pages_.Index()[static_cast<std::size_t>(row - 1)].place);
  };
  cmdBack.onClick = [this] { Travel(-1); };
  cmdForward.onClick = [this] { Travel(1); };
  cmdHome.onClick = [this] { Go({}); };
  cmdPrevious.onClick = [this] { Step(-1); };
  cmdNext.onClick = [this] { Step(1); };
  cmdClose.onClick = [this] { desktop_.Close(*this); };
  docPage.onLink = [this](const std::string& target) { FollowLink(target); };
  docPage.onChange = [this] { SelectWhereItIs(); };
}

// ---- The ways in --------------------------------------------------------------------------------

void FrmHelp::ShowPane(Pane pane) {
  optPane.Choose(pane);
  lstPages.SetVisible(pane == kContents);
  lstIndex.SetVisible(pane == kIndex);
}

void FrmHelp::ShowContents() {
  ShowPane(kContents);
  Go({});
  FocusOn(lstPages);
}

void FrmHelp::ShowIndex() {
  if (visits_.empty()) Go({});
  ShowPane(kIndex);
  FocusOn(lstIndex);
}

void FrmHelp::ShowSearch() {
  if (visits_.empty()) Go({});
  FocusOn(txtSearch);
}

void FrmHelp::ShowAbout(std::string_view window) {
  const HelpTopic* topic = FindHelpTopic(window);
  const auto place = topic == nullptr ? std::nullopt : pages_.Find(topic->file, topic->anchor);
  if (!place) return ShowContents();
  Go(*place);
  FocusOn(docPage);
}

// ---- Going about --------------------------------------------------------------------------------

void FrmHelp::Go(const HelpPlace& place) {
  if (pages_.Pages().empty()) return;
  if (!visits_.empty()) {
    visits_[visit_].start = docPage.Place();  // Back leads to where a person read
    if (visits_[visit_] == place) return ShowPlace(place);
    visits_.resize(++visit_);  // what lay ahead is gone
  }
  visits_.push_back(place);
  ShowPlace(place);
}

void FrmHelp::Travel(int steps) {
  const std::size_t wanted = visit_ + static_cast<std::size_t>(steps);
  if (wanted >= visits_.size()) return;
  visits_[visit_].start = docPage.Place();
  visit_ = wanted;
  ShowPlace(HelpPlace(visits_[visit_]));
}

void FrmHelp::ShowPlace(const HelpPlace& place) {
  if (place.page != shown_) {
    shown_ = place.page;
    docPage.SetPage(pages_.Pages()[place.page].text, folder_);
    MarkPage();
    ListContents();
  }
  docPage.ScrollTo(place.start);
  ShowMarks();
  const bool back = visit_ > 0;
  const bool forward = visit_ + 1 < visits_.size();
  cmdBack.SetEnabled(back);
  menu["mBack"].SetEnabled(back);
  cmdForward.SetEnabled(forward);
  menu["mForward"].SetEnabled(forward);
}

// All pages, and below the one on show its headings.
void FrmHelp::ListContents() {
  constexpr std::size_t kIndent = 4;  // blanks for each level
  std::vector<std::string> entries;
  contents_.clear();
  for (std::size_t i = 0; i < pages_.Pages().size(); ++i) {
    const HelpPage& page = pages_.Pages()[i];
    entries.push_back(page.title);
    contents_.push_back({i, 0});
    if (i != shown_) continue;
    for (const HelpHeading& heading : page.headings) {
      if (heading.level == 1) continue;
      const auto level = static_cast<std::size_t>(heading.level - 1);
      entries.push_back(std::string(kIndent * level, ' ') + heading.text);
      contents_.push_back({i, heading.start});
    }
  }
  lstPages.SetItems(std::move(entries));
}

void FrmHelp::SelectWhereItIs() {
  int row = 0;
  for (std::size_t i = 0; i < contents_.size(); ++i) {
    const bool reached = contents_[i].page == shown_ && contents_[i].start <= docPage.Place();
    if (reached) row = static_cast<int>(i) + 1;
  }
  if (row != lstPages.FirstSelected()) lstPages.SetSelected({row});
}

void FrmHelp::FollowLink(const std::string& target) {
  if (const auto place = pages_.Follow(visits_[visit_].page, target)) Go(*place);
}

// ---- Searching ----------------------------------------------------------------------------------

void FrmHelp::Search() {
  search_ = pages_.Search(txtSearch.Text());
  stepped_ = false;
  std::vector<std::string> entries;
  for (const HelpFound& found : search_.found) {
    const std::string page = found.heading == found.page ? "" : " \u00b7 " + found.page;
    entries.push_back(found.heading + " (" + std::to_string(found.places) + ")" + page + "\n    " +
                      found.context);
  }
  const int count = static_cast<int>(entries.size());
  lstFound.SetItems(std::move(entries));
  lblFound.SetCaption(search_.wanted.empty() ? "Type two letters or more."
                      : count == 0
                          ? "Nothing found. Try fewer words."
                          : Counted(search_.places, "place") + " in " + Counted(count, "section"));
  const bool searching = !txtSearch.Text().empty();
  cmdClear.SetEnabled(searching);
  lblFound.SetVisible(searching);
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&lstFound, &lblPlace, &cmdPrevious, &cmdNext}) {
    control->SetVisible(count > 0);
  }
  MarkPage();
  ShowMarks();
}

void FrmHelp::Clear() {
  txtSearch.SetText("");
  Search();
  FocusOn(txtSearch);
}

void FrmHelp::OpenFound(int number) {
  if (number == 0) return;
  stepped_ = true;
  const HelpPlace place = search_.found[static_cast<std::size_t>(number - 1)].place;
  Go(place);
  const std::vector<TextPlace>& marks = docPage.Marks();
  const auto mark = std::find_if(marks.begin(), marks.end(),
                                 [&](const TextPlace& one) { return one.start >= place.start; });
  docPage.ShowMark(static_cast<int>(mark - marks.begin()) + 1);
  ShowMarks();
}

// The first step leads to the best find, every other one on from where a person reads.
void FrmHelp::Step(int direction) {
  if (search_.found.empty()) return;
  if (!stepped_) return OpenFound(1);
  const std::vector<TextPlace>& marks = docPage.Marks();
  const auto count =
      static_cast<int>(std::count_if(marks.begin(), marks.end(), [&](const TextPlace& one) {
        return one.start < docPage.Place();
      }));
  const bool stands = count + 1 == docPage.CurrentMark();
  const int wanted = direction < 0 ? count : count + (stands ? 2 : 1);
  if (wanted < 1 || wanted > docPage.MarkedCount()) return StepToPage(direction);
  docPage.ShowMark(wanted);
  ShowMarks();
}

// To the first or last place of the nearest page on which something was found, around the end of
// the guide.
void FrmHelp::StepToPage(int direction) {
  std::set<std::size_t> pages;
  for (const HelpFound& found : search_.found) pages.insert(found.place.page);
  const auto behind = direction > 0 ? pages.upper_bound(shown_) : pages.lower_bound(shown_);
  const std::size_t page = direction > 0
                               ? (behind == pages.end() ? *pages.begin() : *behind)
                               : (behind == pages.begin() ? *pages.rbegin() : *std::prev(behind));
  const auto places = FindPlaces(pages_.Pages()[page].text.plain, search_.wanted);
  Go({page, (direction > 0 ? places.front() : places.back()).start});
  docPage.ShowMark(direction > 0 ? 1 : docPage.MarkedCount());
  ShowMarks();
}

// Marks are for the pages on which something was found.
void FrmHelp::MarkPage() {
  const bool has = std::any_of(search_.found.begin(), search_.found.end(),
                               [&](const HelpFound& one) { return one.place.page == shown_; });
  docPage.Mark(has ? search_.wanted : std::vector<std::string>());
}

void FrmHelp::ShowMarks() {
  const std::string places = Counted(docPage.MarkedCount(), "place");
  const int current = docPage.CurrentMark();
  lblPlace.SetCaption(docPage.MarkedCount() == 0 ? ""
                      : current == 0             ? places
                                                 : std::to_string(current) + " of " + places);
  const int row = current == 0 ? 0 : FoundAt({shown_, docPage.Place()});
  if (row != lstFound.FirstSelected()) lstFound.SetSelected({row});
  SelectWhereItIs();
}

// The section found that begins nearest before the place, from 1; 0: none does.
int FrmHelp::FoundAt(const HelpPlace& place) const {
  int nearest = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < search_.found.size(); ++i) {
    const HelpPlace& found = search_.found[i].place;
    if (found.page != place.page || found.start > place.start || found.start < start) continue;
    nearest = static_cast<int>(i) + 1;
    start = found.start;
  }
  return nearest;
}

}  // namespace ormel
