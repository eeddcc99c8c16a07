// What the help shows about each window. The main window has the contents.
#pragma once

#include <span>
#include <string_view>

namespace ormel {

struct HelpTopic {
  std::string_view window;  // its name, "frmView"
  std::string_view file;    // of a page of the guide
  std::string_view anchor;  // of a heading on it; empty: the page from its top
};

std::span<const HelpTopic> HelpTopics();

// The topic of a window; null: it has none.
const HelpTopic* FindHelpTopic(std::string_view window);

}  // namespace ormel
