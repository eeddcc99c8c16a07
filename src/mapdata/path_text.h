// Paths as models, lists and settings hold them: plain texts. Both `/` and `\` separate folders, so
// that models written on other systems keep working.
#pragma once

#include <string>
#include <string_view>

namespace ormel {

// When the path holds a doubled separator, the first such pair becomes one; other pairs stay.
void RepairPath(std::string& path);

// The text behind the last separator, without its extension (from the last point on) unless
// `withExtension` says to keep it.
std::string FileNamePart(std::string_view path, bool withExtension = false);

// Everything before the last point of `text`, a folder's point too; `text` itself when it has none.
std::string RemoveExtension(std::string_view text);

// `extension` (without a point) in place of what stands behind the last point of `name`, or behind
// a new point when it has none.
std::string ChangeExtension(std::string_view name, std::string_view extension);

// The text up to and including the last separator; empty when there is none.
std::string FolderPart(std::string_view path);

// `folder` and `name` with one separator between them; `name` alone when the folder is empty.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace ormel
