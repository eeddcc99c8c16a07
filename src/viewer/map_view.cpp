#include "viewer/map_view.h"

#include <algorithm>
#include <utility>

namespace ormel {

void MapView::Select(int picture) {
  if (Holds(picture)) selected_ = picture;
}

void MapView::Add(MapPicture picture, const ViewSpecs& specs) {
  if (pictures_.empty()) specs_ = specs;
  if (lockedZoom_ && selected_ != 0) picture.view = (*this)(selected_).view;
  pictures_.push_back(std::move(picture));
  selected_ = NumPictures();
}

void MapView::Close(int picture) {
  if (!Holds(picture)) return;
  pictures_.erase(pictures_.begin() + static_cast<std::ptrdiff_t>(Place(picture)));
  if (selected_ > picture) --selected_;
  selected_ = std::min(selected_, NumPictures());
  if (pictures_.empty()) specs_.reset();
}

void MapView::CloseAll() {
  pictures_.clear();
  specs_.reset();
  selected_ = 0;
}

void MapView::LockZoom(bool locked) {
  lockedZoom_ = locked;
  if (selected_ != 0) SetView(selected_, (*this)(selected_).view);
}

void MapView::SetView(int picture, const ViewRegion& view) {
  if (!Holds(picture)) return;
  const ViewRegion shown = InsideMap(view);
  (*this)(picture).view = shown;
  if (!lockedZoom_) return;
  for (MapPicture& other : pictures_) other.view = shown;
}

}  // namespace ormel
