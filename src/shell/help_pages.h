// The guide of the program as its help shows it: all pages of a folder, each with its headings, in
// the order in which the start page leads to them; an index of terms; and a search over all pages.
//
// Two pages have a part of their own. guide.md is the start page: the order of its links is that of
// the pages. index.md holds terms, "- term: [place](page.md#heading), [another](...)", and is shown
// as the index alone.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.h"
#include "text/markdown.h"

namespace ormel {

struct HelpHeading {
  std::string text;
  std::string anchor;
  int level = 1;
  std::size_t start = 0;  // in the plain text of its page
};

struct HelpPage {
  std::string file;   // its name in the folder
  std::string title;  // its first heading; the file's name when it has none
  MarkdownPage text;
  std::vector<HelpHeading> headings;

  // The last heading at or before `place`; null: there is none.
  const HelpHeading* HeadingAt(std::size_t place) const;
};

struct HelpPlace {
  std::size_t page = 0;   // in HelpPages::Pages()
  std::size_t start = 0;  // in the plain text of the page

  bool operator==(const HelpPlace&) const = default;
};

// A term of the index. One that stands on several pages has an entry for each, with the page's
// title behind it.
struct HelpTerm {
  std::string text;
  HelpPlace place;
};

// A section in which something was found: a heading and what follows it.
struct HelpFound {
  std::string page;     // its title
  std::string heading;  // the page's title as well when it is the top of a page
  std::string context;  // the words around the first place, in one line
  int places = 0;
  HelpPlace place;  // the first one
};

struct HelpSearch {
  std::vector<std::string> wanted;  // the words, and the phrases that stood in double quotes
  std::vector<HelpFound> found;     // those first whose heading holds all that is wanted
  int places = 0;                   // of all found sections together
};

class HelpPages {
 public:
  HelpPages() = default;

  // Reads every file of the folder that ends in .md. Links that lead out of the guide, or to a page
  // or heading that is not there, become plain text. A page that cannot be read says so itself.
  // Fails when the folder holds no page.
  [[nodiscard]] static Outcome<HelpPages> Read(const std::filesystem::path& folder);

  const std::vector<HelpPage>& Pages() const { return pages_; }
  const std::vector<HelpTerm>& Index() const { return index_; }  // in order of the alphabet

  // A page, by its file's name, or one of its headings. Nothing when there is no such place.
  std::optional<HelpPlace> Find(std::string_view file, std::string_view anchor = "") const;
  // Where a link on a page leads: "viewer.md", "viewer.md#colours", "#colours".
  std::optional<HelpPlace> Follow(std::size_t page, std::string_view target) const;

  // The sections in which all words of `query` occur, whatever their case; words in double quotes
  // occur together. Where they are spread over a page, its top is found. A query of fewer than two
  // letters finds nothing.
  HelpSearch Search(std::string_view query) const;

 private:
  void PutInOrder();
  void MakeIndex();
  void DropDeadLinks();
  void SearchPage(std::size_t page, HelpSearch& search) const;

  std::vector<HelpPage> pages_;
  std::vector<HelpTerm> index_;
};

}  // namespace ormel
