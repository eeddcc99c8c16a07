#include "mce/timestep/behaviour_window.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kSelectedTooMany[] =
    "Filling in the selected files has exceeded the number of time steps!";
constexpr char kFolderTooMany[] =
    "Filling in the directory's files has exceeded the number of time steps!";

}  // namespace

FrmTSClass::FrmTSClass(AppContext& app, StepWizard& wizard)
    : Window("frmTSClass", "Define Non-Static Factors' Behavior - Step 3/5"),
      files(*this, app.desktop, {kSelectedTooMany, kFolderTooMany, "Time Step File for "}),
      app_(app),
      wizard_(wizard) {
  optMethod.SetCaptions(
      {"Static", "Existing Files", "Functional Changes to the Original ", "A Product Database"});
  files.folder.SetFolder(app.settings.workingDirectory);
  files.File.SetFolder(files.folder.Folder());
  ConnectControls();
  LayOut();
}

void FrmTSClass::ConnectControls() {
  rows_.onSelect = [this] { SelectFactor(); };
  optMethod(0).SetToolTip("The same map at every step");
  optMethod(1).SetToolTip("Another map at each step");
  optMethod(2).SetToolTip("Reserved; the map stays the same");
  optMethod(3).SetToolTip("The map times a number of a table at each step");
  optMethod.OnChange([this] { ChooseMethod(); });
  files.onChange = [this] {
    if (Item* item = Selected()) item->behaviour.stepFiles = files.Entries();
    ShowStates();
  };
  txtCSV.SetToolTip("A table: a title and the number of each step on a line");
  txtCSV.onLeave = [this] { TakeTable(); };
  cmdLoadCSV.SetToolTip("Look for the table");
  cmdLoadCSV.onClick = [this] { PickTable(); };
  RoW.SetToolTip("The row whose numbers multiply the map, step by step");
  RoW.onSelect = [this] { ReadRow(); };
  cmdAlgorithm.SetToolTip("Reserved");
  parts_.cmdNext.onClick = [this] { Next(); };
}

void FrmTSClass::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  const Column methods{optMethod(0), optMethod(3), optMethod(2), optMethod(1)};
  SetLayout(Column{
      Share(1, Row{Share(2, Column{Share(1, Frame{"Factors", Share(1, Row{Share(2, lstFactors),
                                                                          Share(1, lstState)})}),
                                   Frame{"Method of Change", methods}}),
                   Share(3, Column{Share(1, Frame{FrTSList, Share(1, files.Steps())}),
                                   Share(1, Frame{frProducts, Row{"&Table:", txtCSV, cmdLoadCSV},
                                                  "&Row:", Share(1, RoW), lblProducts}),
                                   Frame{frAlgorithm, "The map is the same at every step.",
                                         Row{cmdAlgorithm, Stretch{}}},
                                   Frame{frStatic, "The map is the same at every step."}}),
                   Share(2, Frame{frTSDir, Share(1, files.Folder())})}),
      parts_.Buttons()});
}

// ---- Factors and dates --------------------------------------------------------------------------

std::size_t FrmTSClass::CountFiles(const FactorBehaviour& behaviour) const {
  return static_cast<std::size_t>(
      std::count_if(behaviour.stepFiles.begin(), behaviour.stepFiles.end(),
                    [this](const std::string& entry) { return !dateTexts_.contains(entry); }));
}

FrmTSClass::Item* FrmTSClass::Selected() {
  const int index = lstFactors.FirstSelected();
  return index == 0 ? nullptr : &items_[static_cast<std::size_t>(index - 1)];
}

// Steps without a file have their new dates; files keep their places.
void FrmTSClass::FitFiles(FactorBehaviour& behaviour, const std::vector<std::string>& dates) const {
  if (behaviour.stepFiles.empty()) return;
  std::vector<std::string> files = dates;
  for (std::size_t i = 0; i < std::min(files.size(), behaviour.stepFiles.size()); ++i) {
    const std::string& entry = behaviour.stepFiles[i];
    if (!dateTexts_.contains(entry) && !entry.empty()) files[i] = entry;
  }
  behaviour.stepFiles = std::move(files);
}

// The numbers of a row that has as many as there are steps; of any other a person is asked first.
void FrmTSClass::ReadAgain(FactorBehaviour& behaviour, std::size_t steps) {
  if (behaviour.product.size() == steps) return;
  behaviour.product.clear();
  if (behaviour.productRow.empty()) return;
  Outcome<std::vector<float>> row = ReadProductRow(behaviour.productCsv, behaviour.productRow);
  if (row.Ok() && row.Value().size() == steps) behaviour.product = std::move(row.Value());
}

void FrmTSClass::Fit(const std::vector<ListedFactor>& factors,
                     const std::vector<std::string>& dates) {
  const int selected = std::max(lstFactors.FirstSelected(), 1);
  std::vector<Item> items;
  for (const ListedFactor& factor : factors) {
    const auto known = std::find_if(items_.begin(), items_.end(),
                                    [&](const Item& item) { return item.path == factor.path; });
    items.push_back({factor.path, factor.name, {}});
    if (known == items_.end()) continue;
    FactorBehaviour& behaviour = items.back().behaviour = known->behaviour;
    FitFiles(behaviour, dates);
    ReadAgain(behaviour, dates.size());
  }
  items_ = std::move(items);
  dates_ = dates;
  dateTexts_ = {dates.begin(), dates.end()};
  std::vector<std::string> names;
  for (const Item& item : items_) names.push_back(item.name);
  lstFactors.SetItems(std::move(names));
  ShowStates();
  const int shown = std::min(selected, lstFactors.Count());
  for (ui::ListBox* list : {&lstFactors, &lstState}) list->SetSelected({shown});
  SelectFactor();
}

void FrmTSClass::Put(const std::vector<ModelTextFactor>& factors,
                     const std::vector<BehaviourText>& texts) {
  items_.clear();
  for (std::size_t i = 0; i < std::min(factors.size(), texts.size()); ++i) {
    const BehaviourText& text = texts[i];
    FactorBehaviour behaviour;
    behaviour.method = static_cast<StepMethod>(text.method);
    behaviour.stepFiles = text.files;
    behaviour.productCsv = text.csv;
    behaviour.productRow = text.row;
    if (behaviour.method == StepMethod::kProducts) ShowProducts({"", "", behaviour});
    items_.push_back({factors[i].path, "", std::move(behaviour)});
  }
}

// Of several factors with tables all are saved with the table on show: the format has always been
// written so, and readers expect it.
std::vector<BehaviourText> FrmTSClass::Text() const {
  std::vector<BehaviourText> texts;
  for (const Item& item : items_) {
    BehaviourText text;
    text.method = static_cast<int>(item.behaviour.method);
    text.files = item.behaviour.stepFiles;
    text.csv = txtCSV.Text();
    text.row = RoW.SelectedText();
    texts.push_back(std::move(text));
  }
  return texts;
}

std::vector<FactorBehaviour> FrmTSClass::Behaviours() const {
  std::vector<FactorBehaviour> behaviours;
  for (const Item& item : items_) behaviours.push_back(item.behaviour);
  return behaviours;
}

// ---- The method of a factor ---------------------------------------------------------------------

// The table of a factor that has none leaves that of the one before on show.
void FrmTSClass::SelectFactor() {
  const Item* item = Selected();
  if (item == nullptr) return;
  optMethod.Choose(static_cast<int>(item->behaviour.method));
  if (item->behaviour.method == StepMethod::kProducts) ShowProducts(*item);
  ShowMethod();
}

void FrmTSClass::ShowMethod() {
  const Item* item = Selected();
  if (item == nullptr) return;
  const StepMethod method = item->behaviour.method;
  const bool hasFiles = method == StepMethod::kExistingFiles;
  FrTSList.SetVisible(hasFiles);
  frTSDir.SetVisible(hasFiles);
  frProducts.SetVisible(method == StepMethod::kProducts);
  frAlgorithm.SetVisible(method == StepMethod::kFunctional);
  frStatic.SetVisible(method == StepMethod::kStatic);
  if (hasFiles) files.Show(item->behaviour.stepFiles, dates_, dates_);
}

void FrmTSClass::ChooseMethod() {
  Item* item = Selected();
  if (item == nullptr) return;
  FactorBehaviour& behaviour = item->behaviour;
  behaviour.method = static_cast<StepMethod>(optMethod.Chosen());
  if (behaviour.method == StepMethod::kExistingFiles && behaviour.stepFiles.empty()) {
    behaviour.stepFiles = dates_;
  }
  if (behaviour.method == StepMethod::kProducts) ShowProducts(*item);
  ShowMethod();
  ShowStates();
}

void FrmTSClass::ShowProducts(const Item& item) {
  const FactorBehaviour& behaviour = item.behaviour;
  txtCSV.SetText(behaviour.productCsv);
  std::vector<std::string> titles;
  lblProducts.SetCaption("");
  if (!behaviour.productCsv.empty()) {
    Outcome<std::vector<std::string>> read = ReadProductTitles(behaviour.productCsv);
    lblProducts.SetCaption(read.Text());
    if (read.Ok()) titles = std::move(read.Value());
  }
  const std::string& row = behaviour.productRow;
  if (!row.empty() && std::find(titles.begin(), titles.end(), row) == titles.end()) {
    titles.push_back(row);
  }
  const auto place = std::find(titles.begin(), titles.end(), row) - titles.begin() + 1;
  RoW.SetItems(std::move(titles));
  if (!row.empty()) RoW.SetSelected({static_cast<int>(place)});
}

// What keeps a factor from being used; empty: nothing.
std::string FrmTSClass::Fault(const Item& item) const {
  const FactorBehaviour& behaviour = item.behaviour;
  if (behaviour.method == StepMethod::kExistingFiles && CountFiles(behaviour) < dates_.size()) {
    return "One or More of " + item.name + "'s Files are Dates, Please Fill in the Missing Values.";
  }
  if (behaviour.method != StepMethod::kProducts) return {};
  const bool hasTable = !behaviour.productCsv.empty();
  if (hasTable && !behaviour.productRow.empty()) return {};
  return std::string("You have not selected a valid ") + (hasTable ? "row" : "CSV") + " for " +
         item.name + "'s product database.";
}

std::string FrmTSClass::StateOf(const Item& item) const {
  const FactorBehaviour& behaviour = item.behaviour;
  switch (behaviour.method) {
    case StepMethod::kExistingFiles: {
      const std::size_t count = CountFiles(behaviour);
      if (count == dates_.size()) return "complete";
      return std::to_string(count) + " of " + std::to_string(dates_.size());
    }
    case StepMethod::kProducts:
      return behaviour.product.size() == dates_.size() ? "complete" : "no row";
    default:
      return "static";
  }
}

void FrmTSClass::ShowStates() {
  const std::vector<int> selected = lstFactors.Selected();
  std::vector<std::string> states;
  for (const Item& item : items_) states.push_back(StateOf(item));
  lstState.SetItems(std::move(states));
  lstState.SetSelected(selected);
}

// ---- Product tables -----------------------------------------------------------------------------

void FrmTSClass::PickTable() {
  const auto choice = app_.desktop.OpenFile(
      {"Load CSV", "CSV Files|*.csv,*.txt", "", "", "", ui::FileKind::kPoints});
  if (!choice) return;
  txtCSV.SetText(choice->Path());
  TakeTable();
}

void FrmTSClass::TakeTable() {
  Item* item = Selected();
  if (item == nullptr || item->behaviour.productCsv == txtCSV.Text()) return;
  item->behaviour.productCsv = txtCSV.Text();
  item->behaviour.productRow.clear();
  item->behaviour.product.clear();
  ShowProducts(*item);
  ShowStates();
}

void FrmTSClass::ReadRow() {
  Item* item = Selected();
  if (item == nullptr || RoW.FirstSelected() == 0) return;
  item->behaviour.productRow = RoW.SelectedText();
  (void)TakeRow(*item);
  ShowStates();
}

// The numbers of the factor's row. False: there are none, and it has no row any more.
bool FrmTSClass::TakeRow(Item& item) {
  FactorBehaviour& behaviour = item.behaviour;
  behaviour.product.clear();
  Outcome<std::vector<float>> row = ReadProductRow(behaviour.productCsv, behaviour.productRow);
  if (row.Ok() && row.Value().size() == dates_.size()) {
    behaviour.product = std::move(row.Value());
  } else if (!row.Ok()) {
    app_.desktop.Message(row.Text());
  } else if (Expand(item, row.Value())) {
    behaviour.product = SpreadProducts(row.Value(), Steps());
  }
  const bool read = behaviour.product.size() == dates_.size();
  if (!read) behaviour.productRow.clear();
  ShowProducts(item);
  return read;
}

// A row of another length becomes a new one, when the person wants it.
bool FrmTSClass::Expand(Item& item, const std::vector<float>& row) {
  FactorBehaviour& behaviour = item.behaviour;
  const std::string title = behaviour.productRow;
  const std::string question =
      "The number of time step values in row " + title + " of " + behaviour.productCsv + " is" +
      std::to_string(row.size()) + " while the number of time steps is " +
      std::to_string(dates_.size()) + ". Would you like to program to automatically " +
      (row.size() > dates_.size() ? "shrink" : "stretch") +
      " the number of steps to your time steps?";
  if (app_.desktop.Ask(question, "Not Enough Data", ui::Buttons::kYesNo) != ui::Answer::kYes) {
    return false;
  }
  app_.desktop.Message("The Data Used Will Be Written To the Same File With the Title " + title +
                       " Expanded");
  const Outcome<> written =
      AppendExpandedRow(behaviour.productCsv, title, SpreadProducts(row, Steps()));
  if (!written.Ok()) {
    app_.desktop.Message(written.Text());
    return false;
  }
  behaviour.productRow = ExpandedTitle(title);
  return true;
}

// ---- On to the weights --------------------------------------------------------------------------

bool FrmTSClass::Next() {
  for (Item& item : items_) {
    if (const std::string fault = Fault(item); !fault.empty()) {
      app_.desktop.Message(fault);
      return false;
    }
    const bool needsRow = item.behaviour.method == StepMethod::kProducts &&
                          item.behaviour.product.size() != dates_.size();
    if (needsRow && !TakeRow(item)) {
      ShowStates();
      return false;
    }
  }
  ShowStates();
  wizard_.BehaviourDone();
  return true;
}

}  // namespace ormel
