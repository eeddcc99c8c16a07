#include "text/paths.h"

#include <filesystem>
#include <system_error>

namespace ormel {
namespace {

constexpr std::string_view kSeparators = "/\\";

// Where the name behind the last separator begins.
std::size_t NameStart(std::string_view path) {
  const std::size_t separator = path.find_last_of(kSeparators);
  return separator == std::string_view::npos ? 0 : separator + 1;
}

}  // namespace

void RepairPath(std::string& path) {
  for (std::size_t i = 1; i < path.size(); ++i) {
    if (path[i] == path[i - 1] && kSeparators.find(path[i]) != std::string_view::npos) {
      path.erase(i, 1);
      return;
    }
  }
}

std::string FileNamePart(std::string_view path, bool withExtension) {
  const std::string_view name = path.substr(NameStart(path));
  return withExtension ? std::string(name) : RemoveExtension(name);
}

std::string RemoveExtension(std::string_view text) {
  return std::string(text.substr(0, text.rfind('.')));
}

std::string ChangeExtension(std::string_view name, std::string_view extension) {
  return RemoveExtension(name) + "." + std::string(extension);
}

std::string FolderPart(std::string_view path) {
  return std::string(path.substr(0, NameStart(path)));
}

void CleanFileName(std::string& text, bool fromStart) {
  constexpr std::string_view kForbidden = "/:?*|<>\"";
  for (std::size_t i = fromStart ? 0 : 2; i < text.size(); ++i) {
    if (kForbidden.find(text[i]) != std::string_view::npos) text[i] = '_';
  }
}

void BlanksToUnderscores(std::string& path) {
  for (std::size_t i = NameStart(path); i < path.size(); ++i) {
    if (path[i] == ' ') path[i] = '_';
  }
}

std::string CsvDisplayName(std::string_view text) {
  if (const std::size_t blank = text.find(' '); blank != std::string_view::npos) {
    text.remove_prefix(blank + 1);
    text = text.substr(0, text.find(' '));
  }
  const std::string name = RemoveExtension(text);
  return name.find('.') == std::string::npos ? FileNamePart(name, true) : "filename";
}

std::string SiblingShapeName(std::string_view base, int group, int number) {
  const auto padded = [](int value, std::size_t digits) {
    const std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
  };
  return std::string(base) + "shp" + padded(group, 3) + padded(number, 5);
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return path.empty() || error ? path : absolute.string();
}

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.empty() && NameStart(path) != path.size()) path += '/';
  return path.append(name);
}

}  // namespace ormel
