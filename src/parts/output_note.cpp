#include "parts/output_note.h"

#include <unistd.h>

#include <filesystem>

#include "text/paths.h"

namespace ormel {

std::string OutputNote(const std::string& path, const std::string& whenThere) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return "a folder";
  const std::string folder = FolderPart(path).empty() ? "." : FolderPart(path);
  if (!std::filesystem::is_directory(folder, error)) return "no such folder";
  if (access(folder.c_str(), W_OK) != 0) return "not writable";
  return std::filesystem::exists(path, error) ? whenThere : "new";
}

}  // namespace ormel
