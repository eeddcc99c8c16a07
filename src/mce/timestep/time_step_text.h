// Time-step information files (.tsi): a time-step model on one line, as far as its pages have been
// filled in.
//
//   5TS1$2008 January 1 0 0 0 2008 December 1 0 0 0 1 Month 0 #
//   TS2S$FRD$folder#FF$*.asc#CRD$folder#CF$*.asc#FAC$path#5#True#CST$path#
//   TSNS$CI#0#CI#1#path#path#...CI#3#table.csv#row#
//   TS3$3#graph#graph#graph#
//   TS4$folder#prefix#Default#0#1#0#1#False#
//
// stands there without breaks. The digit in front is the stage: how many of the records there are.
// Stage 6 is a model whose maps have been made; "WF" follows its records. Line ends in the file
// count for nothing, and nothing escapes a "#".
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.h"
#include "mce/model_text.h"
#include "mce/timestep/step_calendar.h"

namespace ormel {

// The pages of a time-step model, in their order, and what has been reached.
enum class StepStage {
  kCalendar = 1,
  kFactors = 2,
  kBehaviour = 3,
  kWeights = 4,
  kOutput = 5,
  kGenerated = 6,
};

// The factors of the model, of which the two fields are those of its kind: weight and "True" when
// high values are good, or colour and weight graph.
struct StepFactorsText {
  bool nonlinear = false;
  std::string root;  // folder of the factors' file list, and its filter
  std::string pattern;
  std::string constraintRoot;  // the same of the constraints
  std::string constraintPattern;
  std::vector<ModelTextFactor> factors;
  std::vector<std::string> constraints;  // in the order of the file
};

struct BehaviourText {
  int method = 0;
  std::vector<std::string> files;  // of all steps; of method 1
  std::string csv;                 // of method 3
  std::string row;
};

struct StepOutputText {
  std::string folder;
  std::string prefix;
  std::string palette;  // a file's name, or "Default"
  std::string constraintColour;
  bool raster = true;
  bool bitmap = false;
  bool info = true;
  bool group = false;  // all maps on one scale; else each on its own
};

struct TimeStepText {
  StepStage stage = StepStage::kCalendar;
  CalendarEntries calendar;
  StepFactorsText factors;
  std::vector<BehaviourText> behaviours;  // of each factor; fewer when the text ends early
  std::vector<std::string> stepGraphs;    // the same
  StepOutputText output;
};

// As much of a model as the text holds: what is missing keeps its first value.
TimeStepText ParseTimeStepText(std::string_view text);

// The text of a model, without a line end. Fails when a value holds what the file cannot.
[[nodiscard]] Outcome<std::string> TimeStepTextOf(const TimeStepText& model);

[[nodiscard]] Outcome<TimeStepText> ReadTimeStepText(const std::filesystem::path& path);
[[nodiscard]] Outcome<> WriteTimeStepText(const std::filesystem::path& path,
                                          const TimeStepText& model);

}  // namespace ormel
