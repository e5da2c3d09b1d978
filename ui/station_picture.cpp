#include "ui/station_picture.h"

#include <utility>

#include "app/text/text_utilities.h"

namespace ui {

using platform::LoadedPicture;
using platform::PictureHandle;
using platform::Text;

Text StationPicturePath(platform::Environment& environment, const Text& station_name) {
  return app::AddBackslash(environment.ProgramFolder()) + u"RadioJPG\\" + station_name + u".jpg";
}

StationPicture::~StationPicture() { Clear(); }

bool StationPicture::Exists(const Text& station_name) const {
  return ports_.files.PathFileExistsW(StationPicturePath(ports_.environment, station_name));
}

LoadedPicture StationPicture::Load(const Text& station_name) {
  const LoadedPicture picture =
      ports_.icons.LoadPicture(StationPicturePath(ports_.environment, station_name));
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
