#include "ui/rich_text.h"

#include <algorithm>
#include <utility>

namespace ormel::ui {
namespace {

// The target of the first link whose `part` is `wanted`; empty: none is.
std::string FindLink(const MarkdownPage& page, std::string TextRun::*part,
                     const std::string& wanted) {
  std::string target;
  ForEachRun(page, [&](const TextRun& run, std::size_t) {
    if (target.empty() && run.*part == wanted) target = run.target;
  });
  return target;
}

}  // namespace

void RichText::SetPage(MarkdownPage page, std::string folder) {
  page_ = std::move(page);
  folder_ = std::move(folder);
  ++versions_.page;
  Mark({});
  ScrollTo(0);
}

void RichText::ScrollTo(std::size_t place) {
  place_ = std::min(place, page_.plain.size());
  ++versions_.place;
  Changed();
}

bool RichText::ScrollToHeading(std::string_view anchor) {
  for (const TextBlock& block : page_.blocks) {
    if (block.kind != TextBlock::Kind::kHeading || block.target != anchor) continue;
    ScrollTo(block.rows[0][0].place);
    return true;
  }
  return false;
}

void RichText::Mark(const std::vector<std::string>& texts) {
  marks_ = FindPlaces(page_.plain, texts);
  current_ = 0;
  ++versions_.marks;
  Changed();
}

void RichText::ShowMark(int number) {
  if (number < 1 || number > MarkedCount()) return;
  current_ = number;
  ++versions_.marks;
  ScrollTo(marks_[static_cast<std::size_t>(number - 1)].start);
}

Outcome<> RichText::Follow(const std::string& target) {
  Outcome<> can = CanAct();
  if (can.Ok() && onLink) {
    Fire([this, target] { onLink(target); });
  }
  return can;
}

Outcome<> RichText::Scroll(std::size_t place) {
  Outcome<> can = CanAct();
  place = std::min(place, page_.plain.size());
  if (!can.Ok() || place == place_) return can;
  place_ = place;
  Fire(onChange);
  return can;
}

Outcome<> RichText::Select(std::span<const std::string> entries) {
  if (entries.size() != 1) return Refusal("follows one link only");
  const std::string& wanted = entries[0];
  std::string target = FindLink(page_, &TextRun::text, wanted);
  if (target.empty()) target = FindLink(page_, &TextRun::target, wanted);
  return target.empty() ? Refusal("has no link " + wanted) : Follow(target);
}

bool RichText::Shows(const std::string& value) const {
  const std::string& text = page_.plain;
  const std::size_t before = place_ == 0 ? std::string::npos : text.rfind('\n', place_ - 1);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  return text.substr(start, text.find('\n', start) - start) == value;
}

}  // namespace ormel::ui
