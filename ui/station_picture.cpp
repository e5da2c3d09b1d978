#include "ui/station_picture.h"

#include <utility>

#include "app/text/text_utilities.h"

namespace ui {

using platform::LoadedPicture;
using platform::PictureHandle;
using platform::Text;

StationPicture::~StationPicture() { Clear(); }

Text StationPicture::PathOf(const Text& station_name) const {
  return app::AddBackslash(ports_.environment.ProgramFolder()) + u"RadioJPG\\" + station_name + u".jpg";
}

bool StationPicture::Exists(const Text& station_name) const {
  return ports_.files.PathFileExistsW(PathOf(station_name));
}

LoadedPicture StationPicture::Load(const Text& station_name) {
  const LoadedPicture picture = ports_.icons.LoadPicture(PathOf(station_name));
  if (picture.handle == PictureHandle::kNone) return picture;
  Clear();
  loaded_ = picture.handle;
  return picture;
}

void StationPicture::Clear() {
  if (loaded_ == PictureHandle::kNone) return;
  ports_.icons.DestroyPicture(std::exchange(loaded_, PictureHandle::kNone));
}

}  // namespace ui
