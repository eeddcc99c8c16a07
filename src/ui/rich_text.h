// A page of rich text to read: headings, lists, tables, pictures and links. A person scrolls it and
// follows its links; the program brings a place of it into sight and marks what was searched for.
// Places are bytes of the page's plain text, which is all there is of it without a screen.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/markdown.h"
#include "text/text_search.h"
#include "ui/control.h"

namespace ormel::ui {

class RichText final : public Control {
 public:
  using Control::Control;

  // Shows the page from its top, with nothing marked. Its pictures lie relative to `folder`; one
  // that cannot be read is left out, and its caption stays.
  void SetPage(MarkdownPage page, std::string folder);
  const MarkdownPage& Page() const { return page_; }
  const std::string& Folder() const { return folder_; }

  // Where a person reads: what was brought into sight last, or the uppermost line after scrolling.
  std::size_t Place() const { return place_; }
  // The line of `place` becomes the uppermost one, as far as the page reaches.
  void ScrollTo(std::size_t place);
  // The same for a heading, by its anchor. False: the page has none of that name, and stays.
  bool ScrollToHeading(std::string_view anchor);

  // Marks all places of the texts (FindPlaces in text/text_search.h) and stays where it is.
  void Mark(const std::vector<std::string>& texts);
  const std::vector<TextPlace>& Marks() const { return marks_; }
  int MarkedCount() const { return static_cast<int>(marks_.size()); }
  // The place that stands out among the marked ones, from 1; 0: none.
  int CurrentMark() const { return current_; }
  // Brings a marked place into sight and lets it stand out. Nothing happens beyond the last one.
  void ShowMark(int number);

  // A person follows a link to its target. Links do nothing by themselves.
  std::function<void(const std::string& target)> onLink;
  [[nodiscard]] Outcome<> Follow(const std::string& target);
  // A person scrolls: the line of `place` is the uppermost one now. onChange when it differs.
  [[nodiscard]] Outcome<> Scroll(std::size_t place);

  // Follows the first link with this text, or with this target.
  Outcome<> Select(std::span<const std::string> entries) override;
  std::string Printed() const override { return page_.plain; }
  // Whether it is the line where a person reads.
  bool Shows(const std::string& value) const override;
  bool Grows() const override { return true; }

  // They grow whenever the page, the marks or the place in sight is set: the screen does again what
  // has changed.
  struct Versions {
    int page = 0;
    int marks = 0;
    int place = 0;
  };
  const Versions& Changes() const { return versions_; }

 private:
  MarkdownPage page_;
  std::string folder_;
  std::vector<TextPlace> marks_;
  int current_ = 0;
  std::size_t place_ = 0;
  Versions versions_;
};

}  // namespace ormel::ui
