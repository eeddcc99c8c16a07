// The marks within a line of Markdown: bold, italic, code, links and pictures.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/markdown.h"

namespace ormel {

// The text of a paragraph, a heading or a cell in its looks. A mark without its other end within
// the next 400 bytes stands for itself.
std::vector<TextRun> ReadRuns(std::string_view text);

// The pictures of a paragraph that holds nothing else: their captions, each with its file in
// `target`. Empty for every other text.
std::vector<TextRun> ReadPictures(std::string_view text);

}  // namespace ormel
