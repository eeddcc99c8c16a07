#include "shell/help_pages.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <tuple>

#include "text/text_search.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

using Kind = TextBlock::Kind;

constexpr std::string_view kStartPage = "guide.md";
constexpr std::string_view kIndexPage = "index.md";
constexpr std::uintmax_t kLargestPage = 1024 * 1024;  // bytes
constexpr std::size_t kContext = 70;                  // bytes around a place that was found
constexpr std::size_t kFewestLetters = 2;

// ---- Reading ------------------------------------------------------------------------------------

std::string ReadSource(const fs::path& path) {
  const std::string failed = "# " + path.filename().string() + "\n\nThis page cannot be read: ";
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  std::ifstream file(path, std::ios::binary);
  if (error || !file) return failed + "the file cannot be opened.";
  if (size > kLargestPage) return failed + "the file is larger than 1 MiB.";
  std::string source{std::istreambuf_iterator<char>(file), {}};
  return file.bad() ? failed + "the file ends early." : source;
}

HelpPage ReadPage(const fs::path& path) {
  HelpPage page{path.filename().string(), "", ReadMarkdown(ReadSource(path)), {}};
  for (const TextBlock& block : page.text.blocks) {
    if (block.kind != Kind::kHeading) continue;
    const TextCell& cell = block.rows[0][0];
    page.headings.push_back({cell.Text(), block.target, block.level, cell.place});
  }
  page.title = page.headings.empty() ? page.file : page.headings[0].text;
  return page;
}

// The files that the page's links lead to, in their order.
std::vector<std::string> LinkedFiles(const HelpPage& page) {
  std::vector<std::string> files;
  ForEachRun(page.text, [&](const TextRun& run, std::size_t) {
    if (!run.target.empty()) files.push_back(run.target.substr(0, run.target.find('#')));
  });
  return files;
}

// ---- The index ----------------------------------------------------------------------------------

// What a person reads on a button or in a menu, when `run` names such a thing; of a path through a
// menu the last entry. Empty for all other words.
std::string CaptionIn(const TextRun& run) {
  constexpr std::ptrdiff_t kMostBlanks = 5;
  const std::size_t path = run.text.rfind(", ");
  std::string text = path == std::string::npos ? run.text : run.text.substr(path + 2);
  const bool isSentence = text.ends_with('.') && !text.ends_with("...");
  const bool isName = run.bold && !run.code && text.size() > 2 && !isSentence &&
                      std::isupper(static_cast<unsigned char>(text[0])) != 0 &&
                      !text.starts_with("The ") &&
                      std::count(text.begin(), text.end(), ' ') <= kMostBlanks;
  return isName ? text : "";
}

// The entry of the index page that a link stands in: the text up to the colon.
std::string TermOf(const TextCell& cell) {
  const std::string text = cell.Text();
  return text.substr(0, text.rfind(": "));
}

void AddListedTerms(const HelpPages& pages, std::size_t list, std::vector<HelpTerm>& terms) {
  for (const TextBlock& block : pages.Pages()[list].text.blocks) {
    if (block.marker.empty()) continue;
    for (const TextRun& run : block.rows[0][0].runs) {
      if (const auto place = pages.Follow(list, run.target)) {
        terms.push_back({TermOf(block.rows[0][0]), *place});
      }
    }
  }
}

void AddCaptions(const HelpPages& pages, std::size_t number, std::vector<HelpTerm>& terms) {
  ForEachRun(pages.Pages()[number].text, [&](const TextRun& run, std::size_t place) {
    if (const std::string caption = CaptionIn(run); !caption.empty()) {
      terms.push_back({caption, {number, place}});
    }
  });
}

// In order of the alphabet, and each page at most once for a term: with the place that came first.
void SortTerms(std::vector<HelpTerm>& terms) {
  const auto key = [](const HelpTerm& term) {
    return std::pair(InSmallLetters(term.text), term.place.page);
  };
  std::stable_sort(terms.begin(), terms.end(),
                   [&](const HelpTerm& a, const HelpTerm& b) { return key(a) < key(b); });
  const auto end = std::unique(terms.begin(), terms.end(),
                               [&](const auto& a, const auto& b) { return key(a) == key(b); });
  terms.erase(end, terms.end());
}

// ---- Searching ----------------------------------------------------------------------------------

// Some words around a place, in one line.
std::string ContextOf(const std::string& text, const TextPlace& place) {
  const std::size_t before = text.rfind('\n', place.start);
  const std::size_t first = before == std::string::npos ? 0 : before + 1;
  std::string line = text.substr(first, text.find('\n', place.start) - first);
  std::replace(line.begin(), line.end(), '\t', ' ');
  const std::size_t at = place.start - first;
  const std::size_t behind = at + place.length;
  std::size_t start = 0;
  if (at > kContext / 3) start = std::min(line.find(' ', at - kContext / 3), at - 1) + 1;
  std::size_t end = line.size();
  if (end > start + kContext) {
    const std::size_t blank = line.rfind(' ', start + kContext);
    end = blank == std::string::npos ? behind : std::max(blank, behind);
  }
  return (start > 0 ? "\u2026 " : "") + line.substr(start, end - start) +
         (end < line.size() ? " \u2026" : "");
}

// The place whose line tells most about what was found: not the heading, which is told anyway.
TextPlace PlaceToTell(const std::string& text, std::size_t start,
                      const std::vector<TextPlace>& places) {
  const std::size_t body = std::min(text.find('\n', start), text.size() - 1) + 1;
  for (const TextPlace& place : places) {
    if (place.start >= body) return place;
  }
  return {std::min(body, text.size()), 0};
}

// Adds the part of a page from `start` to `end` when all that is wanted occurs in it.
void AddFound(const HelpPages& pages, std::size_t number, std::size_t start, std::size_t end,
              HelpSearch& search) {
  const HelpPage& page = pages.Pages()[number];
  const std::string_view part = std::string_view(page.text.plain).substr(start, end - start);
  if (!HoldsAll(part, search.wanted)) return;
  std::vector<TextPlace> places = FindPlaces(part, search.wanted);
  for (TextPlace& place : places) place.start += start;
  const HelpHeading* heading = page.HeadingAt(start);
  search.found.push_back({page.title,
                          heading == nullptr ? page.title : heading->text,
                          ContextOf(page.text.plain, PlaceToTell(page.text.plain, start, places)),
                          static_cast<int>(places.size()),
                          {number, places[0].start}});
  search.places += static_cast<int>(places.size());
}

}  // namespace

const HelpHeading* HelpPage::HeadingAt(std::size_t place) const {
  const HelpHeading* last = nullptr;
  for (const HelpHeading& heading : headings) {
    if (heading.start <= place) last = &heading;
  }
  return last;
}

Outcome<HelpPages> HelpPages::Read(const fs::path& folder) {
  HelpPages help;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path().extension() == ".md") help.pages_.push_back(ReadPage(entry->path()));
  }
  if (help.pages_.empty()) {
    return Failure{FailureKind::kNotFound, folder.string() + ": the guide is not there"};
  }
  help.PutInOrder();
  help.DropDeadLinks();
  help.MakeIndex();
  return help;
}

// The start page, the pages it leads to, the others by name, the index.
void HelpPages::PutInOrder() {
  std::vector<std::string> order{std::string(kStartPage)};
  for (const HelpPage& page : pages_) {
    if (page.file != kStartPage) continue;
    const std::vector<std::string> linked = LinkedFiles(page);
    order.insert(order.end(), linked.begin(), linked.end());
  }
  const auto rank = [&](const HelpPage& page) {
    const auto found = std::find(order.begin(), order.end(), page.file);
    return std::tuple(page.file == kIndexPage, found - order.begin(), page.file);
  };
  std::sort(pages_.begin(), pages_.end(),
            [&](const HelpPage& a, const HelpPage& b) { return rank(a) < rank(b); });
}

void HelpPages::DropDeadLinks() {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    ForEachRun(pages_[i].text, [&](TextRun& run, std::size_t) {
      if (!run.target.empty() && !Follow(i, run.target)) run.target.clear();
    });
  }
}

void HelpPages::MakeIndex() {
  const bool hasList = pages_.back().file == kIndexPage;
  const std::size_t shown = pages_.size() - (hasList ? 1 : 0);
  if (hasList) AddListedTerms(*this, shown, index_);
  for (std::size_t i = 0; i < shown; ++i) AddCaptions(*this, i, index_);
  SortTerms(index_);
  std::map<std::string, int> pagesOf;
  for (const HelpTerm& term : index_) ++pagesOf[InSmallLetters(term.text)];
  for (HelpTerm& term : index_) {
    if (pagesOf[InSmallLetters(term.text)] > 1) term.text += ": " + pages_[term.place.page].title;
  }
  if (hasList) pages_.pop_back();
}

std::optional<HelpPlace> HelpPages::Find(std::string_view file, std::string_view anchor) const {
  const auto page = std::find_if(pages_.begin(), pages_.end(),
                                 [&](const HelpPage& one) { return one.file == file; });
  if (page == pages_.end()) return {};
  const auto number = static_cast<std::size_t>(page - pages_.begin());
  if (anchor.empty()) return HelpPlace{number, 0};
  for (const HelpHeading& heading : page->headings) {
    if (heading.anchor == anchor) return HelpPlace{number, heading.start};
  }
  return {};
}

std::optional<HelpPlace> HelpPages::Follow(std::size_t page, std::string_view target) const {
  const std::size_t hash = std::min(target.find('#'), target.size());
  const std::string_view file = target.substr(0, hash);
  const std::string_view anchor = target.substr(std::min(hash + 1, target.size()));
  if (target.empty()) return {};
  return Find(file.empty() ? std::string_view(pages_[page].file) : file, anchor);
}

void HelpPages::SearchPage(std::size_t page, HelpSearch& search) const {
  const HelpPage& where = pages_[page];
  const std::string& text = where.text.plain;
  std::vector<std::size_t> starts{0};
  for (const HelpHeading& heading : where.headings) {
    if (heading.start > 0) starts.push_back(heading.start);
  }
  starts.push_back(text.size());
  const std::size_t before = search.found.size();
  for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
    AddFound(*this, page, starts[i], starts[i + 1], search);
  }
  if (search.found.size() == before) AddFound(*this, page, 0, text.size(), search);
}

HelpSearch HelpPages::Search(std::string_view query) const {
  HelpSearch search;
  search.wanted = WantedTexts(query);
  std::size_t letters = 0;
  for (const std::string& one : search.wanted) letters += one.size();
  if (letters < kFewestLetters) return {};
  for (std::size_t i = 0; i < pages_.size(); ++i) SearchPage(i, search);
  std::stable_partition(search.found.begin(), search.found.end(),
                        [&](const HelpFound& one) { return HoldsAll(one.heading, search.wanted); });
  return search;
}

}  // namespace ormel
