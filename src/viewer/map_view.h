// The pictures of one viewer: up to four maps on one grid, each with its own view. Nothing
// here is drawn or asked; the window shows what it says.
//
// Pictures are counted from 1. A closed one hands its number to the one behind it.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "viewer/map_picture.h"
#include "viewer/view_region.h"

namespace ormel {

class MapView {
 public:
  static constexpr int kMostPictures = 4;

  int NumPictures() const { return static_cast<int>(pictures_.size()); }
  bool IsFull() const { return NumPictures() == kMostPictures; }
  bool Holds(int picture) const { return picture >= 1 && picture <= NumPictures(); }
  MapPicture& operator()(int picture) { return pictures_[Place(picture)]; }
  const MapPicture& operator()(int picture) const { return pictures_[Place(picture)]; }

  // Of all maps; none while there is no picture.
  const std::optional<ViewSpecs>& Specs() const { return specs_; }

  // The picture that commands act on; 0: there is none.
  int Selected() const { return selected_; }
  void Select(int picture);

  // Adds a picture and selects it. The first one sets the grid. Not when IsFull().
  void Add(MapPicture picture, const ViewSpecs& specs);
  void Close(int picture);
  void CloseAll();

  // With a locked zoom all pictures move together; locking brings them to the selected one's view.
  bool LockedZoom() const { return lockedZoom_; }
  void LockZoom(bool locked);

  // Gives a picture, or all of them with a locked zoom, that view, as far as it lies on the map.
  void SetView(int picture, const ViewRegion& view);

 private:
  static std::size_t Place(int picture) { return static_cast<std::size_t>(picture - 1); }

  std::vector<MapPicture> pictures_;
  std::optional<ViewSpecs> specs_;
  int selected_ = 0;
  bool lockedZoom_ = false;
};

}  // namespace ormel
