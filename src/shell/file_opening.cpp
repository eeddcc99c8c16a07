#include "shell/file_opening.h"

#include "text/numbers.h"

namespace ormel {

FileToOpen ReadFileText(std::string text) {
  if (const double number = TextToNumber(text); number != 0) text = NumberText(number);
  if (text.starts_with('"')) text = text.size() < 2 ? "" : text.substr(1, text.size() - 2);
  if (text.ends_with('"') && text.size() > 2) text.erase(0, text.size() - 2);
  const std::size_t point = text.rfind('.');
  std::string extension = point == std::string::npos ? "" : text.substr(point + 1);
  return {std::move(text), std::move(extension)};
}

}  // namespace ormel
