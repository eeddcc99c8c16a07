#include "shell/start_up_picture.h"

#include "mapdata/palette.h"
#include "mapdata/previewed_map.h"

namespace ormel {

Canvas DrawStartUpPicture(const std::filesystem::path& map, const std::filesystem::path& palette) {
  Palette colours;
  NoProgress quiet;
  const Outcome<PreviewedMap> read = PreviewedMap::Read(map.string(), quiet);
  if (!read.Ok() || !read.Value().Fault().empty()) return {};
  if (!ReadPalette(palette, colours).Ok()) return {};
  return read.Value().Picture(colours, kWhite, PreviewedMap::Unscaled::kAsItStands);
}

}  // namespace ormel
