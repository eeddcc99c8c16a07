#include "mce/timestep/time_step_text.h"

#include <algorithm>

#include "base/file_writer.h"
#include "base/input_file.h"
#include "mce/field_text.h"
#include "mce/linear/model_information.h"
#include "mce/timestep/factor_behaviour.h"
#include "text/csv.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kExistingFiles = static_cast<int>(StepMethod::kExistingFiles);
constexpr int kProducts = static_cast<int>(StepMethod::kProducts);

// The fields of the calendar in the order of the file.
template <class Entries, class Use>
void ForEachEntry(Entries& entries, Use use) {
  for (auto* moment : {&entries.start, &entries.end}) {
    for (auto* field : {&moment->year, &moment->month, &moment->day, &moment->hour, &moment->minute,
                        &moment->second}) {
      use(*field);
    }
  }
  use(entries.increment);
  use(entries.unit);
}

void WriteCalendar(const CalendarEntries& entries, FieldWriter& fields) {
  fields.Key("TS1$");
  ForEachEntry(entries, [&](const std::string& field) {
    fields.Field(std::string(WithoutBlanks(field)), ' ');
  });
  fields.Key(entries.extended ? "1 #" : "0 #");
}

void ReadCalendar(FieldReader& fields, CalendarEntries& entries) {
  if (!fields.Find("TS1$")) return;
  ForEachEntry(entries, [&](std::string& field) { field = fields.Field(' '); });
  entries.extended = TextToNumber(fields.Field(' ')) != 0;
}

void WriteFactors(const StepFactorsText& model, FieldWriter& fields) {
  fields.Key(model.nonlinear ? "TS2C$" : "TS2S$");
  fields.Key("FRD$").Field(model.root).Key("FF$").Field(model.pattern);
  fields.Key("CRD$").Field(model.constraintRoot).Key("CF$").Field(model.constraintPattern);
  WriteMapFields(model.factors, model.constraints, fields);
}

void ReadFactors(FieldReader& fields, StepFactorsText& model) {
  model.nonlinear = fields.Find("TS2C$");
  if (!model.nonlinear && !fields.Find("TS2S$")) return;
  model.root = fields.FieldBehind("FRD$");
  model.pattern = fields.FieldBehind("FF$");
  model.constraintRoot = fields.FieldBehind("CRD$");
  model.constraintPattern = fields.FieldBehind("CF$");
  if (!fields.Take("FAC$NULL")) model.factors = ReadFactorFields(fields);
  if (!fields.Take("CST$NULL")) {
    while (fields.Find("CST$")) model.constraints.push_back(fields.Field());
  }
  (void)fields.Find("OUTIM$");  // of files by other hands; what is before it is passed over
}

void WriteBehaviours(const std::vector<BehaviourText>& behaviours, FieldWriter& fields) {
  fields.Key("TSNS$");
  for (const BehaviourText& behaviour : behaviours) {
    fields.Key("CI#").Field(std::to_string(behaviour.method));
    if (behaviour.method == kExistingFiles) {
      for (const std::string& file : behaviour.files) fields.Field(file);
    } else if (behaviour.method == kProducts) {
      fields.Field(behaviour.csv).Field(behaviour.row);
    }
  }
}

// How many files a factor has, the dates say.
void ReadBehaviours(FieldReader& fields, std::size_t factors, int steps,
                    std::vector<BehaviourText>& behaviours) {
  while (behaviours.size() < factors && fields.Find("CI#")) {
    BehaviourText& behaviour = behaviours.emplace_back();
    const double method = TextToNumber(fields.Field());
    behaviour.method = method >= 0 && method <= kProducts ? static_cast<int>(method) : 0;
    if (behaviour.method == kExistingFiles) {
      for (int step = 1; step <= steps; ++step) behaviour.files.push_back(fields.Field());
    } else if (behaviour.method == kProducts) {
      behaviour.csv = fields.Field();
      behaviour.row = fields.Field();
    }
  }
}

void WriteGraphs(const std::vector<std::string>& graphs, FieldWriter& fields) {
  fields.Key("TS3$").Field(std::to_string(graphs.size()));
  for (const std::string& graph : graphs) fields.Field(graph);
}

void ReadGraphs(FieldReader& fields, std::size_t factors, std::vector<std::string>& graphs) {
  if (!fields.Find("TS3$")) return;
  const double count = std::min(TextToNumber(fields.Field()), static_cast<double>(factors));
  while (static_cast<double>(graphs.size()) < count) graphs.push_back(fields.Field());
}

const char* BoxText(bool checked) { return checked ? "1" : "0"; }

void WriteOutput(const StepOutputText& output, FieldWriter& fields) {
  fields.Key("TS4$").Field(output.folder).Field(output.prefix).Field(output.palette);
  fields.Field(output.constraintColour);
  for (const bool box : {output.raster, output.bitmap, output.info}) fields.Field(BoxText(box));
  fields.Field(TruthText(output.group));
}

void ReadOutput(FieldReader& fields, StepOutputText& output) {
  if (!fields.Find("TS4$")) return;
  for (std::string* field :
       {&output.folder, &output.prefix, &output.palette, &output.constraintColour}) {
    *field = fields.Field();
  }
  for (bool* box : {&output.raster, &output.bitmap, &output.info}) {
    *box = TextToNumber(fields.Field()) != 0;
  }
  const std::string group = fields.Field();
  output.group = !group.empty() && !IsFalse(group);
}

}  // namespace

TimeStepText ParseTimeStepText(std::string_view text) {
  TimeStepText model;
  if (text.empty() || text.front() < '1' || text.front() > '6') return model;
  model.stage = static_cast<StepStage>(text.front() - '0');
  FieldReader fields(text);
  ReadCalendar(fields, model.calendar);
  if (model.stage >= StepStage::kFactors) ReadFactors(fields, model.factors);
  const std::size_t factors = model.factors.factors.size();
  if (model.stage >= StepStage::kBehaviour) {
    const Outcome<StepCalendar> calendar = BuildCalendar(model.calendar);
    ReadBehaviours(fields, factors, calendar.Ok() ? calendar.Value().Steps() : 0, model.behaviours);
  }
  if (model.stage >= StepStage::kWeights) ReadGraphs(fields, factors, model.stepGraphs);
  if (model.stage >= StepStage::kOutput) ReadOutput(fields, model.output);
  return model;
}

Outcome<std::string> TimeStepTextOf(const TimeStepText& model) {
  FieldWriter fields("#\r\n");
  fields.Key(std::to_string(static_cast<int>(model.stage)));
  WriteCalendar(model.calendar, fields);
  if (model.stage >= StepStage::kFactors) WriteFactors(model.factors, fields);
  if (model.stage >= StepStage::kBehaviour) WriteBehaviours(model.behaviours, fields);
  if (model.stage >= StepStage::kWeights) WriteGraphs(model.stepGraphs, fields);
  if (model.stage >= StepStage::kOutput) WriteOutput(model.output, fields);
  if (model.stage == StepStage::kGenerated) fields.Key("WF");
  if (fields.Bad().empty()) return fields.Text();
  return Failure{FailureKind::kRefused,
                 "A model file cannot hold # or a line end, as in: " + fields.Bad()};
}

Outcome<TimeStepText> ReadTimeStepText(const std::filesystem::path& path) {
  Outcome<std::string> text = ReadWholeFile(path);
  if (!text.Ok()) return text.Stop();
  std::erase_if(text.Value(), [](char letter) { return letter == '\r' || letter == '\n'; });
  return ParseTimeStepText(text.Value());
}

Outcome<> WriteTimeStepText(const std::filesystem::path& path, const TimeStepText& model) {
  const Outcome<std::string> text = TimeStepTextOf(model);
  if (!text.Ok()) return text.Stop();
  return WriteFile(path, text.Value() + "\r\n");
}

}  // namespace ormel
