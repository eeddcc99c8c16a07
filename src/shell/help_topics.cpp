#include "shell/help_topics.h"

#include <algorithm>
#include <iterator>

namespace ormel {
namespace {

constexpr HelpTopic kTopics[] = {
    {"frmOptions", "start.md", "global-settings"},
    {"frmHelp", "start.md", "help"},
    {"frmAbout", "guide.md", ""},
    {"frmBuild", "linear-models.md", "the-builder"},
    {"frmRA", "linear-models.md", "a-whole-folder-at-once"},
    {"frmEigen", "linear-models.md", "weights-from-comparisons"},
    {"frmDraw", "main-job.md", "step-by-step"},
    {"frmBuildC", "nonlinear-models.md", "the-builder"},
    {"frmWeight", "nonlinear-models.md", "the-graph-editor"},
    {"frmDrawC", "nonlinear-models.md", "the-viewer"},
    {"frmTS1", "time-steps.md", "the-calendar"},
    {"frmTS2", "time-steps.md", "factors-and-constraints"},
    {"frmTS2C", "time-steps.md", "factors-and-constraints"},
    {"frmTSClass", "time-steps.md", "how-factors-change"},
    {"frmTS3", "time-steps.md", "weights-over-time"},
    {"frmTS4", "time-steps.md", "the-maps"},
    {"frmTSF", "time-steps.md", "playing-the-maps"},
    {"frmTSFC", "time-steps.md", "playing-the-maps"},
    {"frmAVI", "time-steps.md", "movies-of-any-maps"},
    {"frmDataPrep", "raw-maps.md", "one-grid-trimming"},
    {"frmTrim", "raw-maps.md", "one-grid-trimming"},
    {"frmMapStats", "raw-maps.md", "map-statistics"},
    {"frmMapAlgebra", "raw-maps.md", "map-algebra"},
    {"frmClass", "raw-maps.md", "values-for-classes"},
    {"frmGenTSMaps", "raw-maps.md", "one-map-for-each-time-step"},
    {"frmView", "viewer.md", ""},
    {"frmMetric", "viewer.md", "measuring"},
};

}  // namespace

std::span<const HelpTopic> HelpTopics() { return kTopics; }

const HelpTopic* FindHelpTopic(std::string_view window) {
  const auto* found = std::find_if(std::begin(kTopics), std::end(kTopics),
                                   [&](const HelpTopic& one) { return one.window == window; });
  return found == std::end(kTopics) ? nullptr : found;
}

}  // namespace ormel
