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

// Replaces each of / : ? * | < > " by an underscore, from the third letter on, which spares a
// drive's colon, or from the first with `fromStart`. Meant for names, and for paths whose folders
// are separated by backslashes.
void CleanFileName(std::string& text, bool fromStart = false);

// Replaces each blank in the part behind the last separator by an underscore.
void BlanksToUnderscores(std::string& path);

// The name under which a list shows a table: of a text with blanks the part between the first and
// the second, without its extension and folder. A name that still holds a point is "filename".
std::string CsvDisplayName(std::string_view text);

// `base`, "shp", `group` in three digits and `number` in five.
std::string SiblingShapeName(std::string_view base, int group, int number);

// The path as every working directory finds it; as it is when it is empty or that cannot be told.
std::string AbsolutePath(const std::string& path);

// `folder` and `name` with one separator between them; `name` alone when the folder is empty.
std::string JoinPath(std::string_view folder, std::string_view name);

}  // namespace ormel
