#include "app/state/station_picture.h"

#include <utility>

#include "app/text/text_utilities.h"

namespace app {

using platform::LoadedPicture;
using platform::PictureHandle;
using platform::Text;

StationPicture::StationPicture(platform::Environment& environment, platform::Files& files,
                               platform::Icons& icons)
    : environment_(environment), files_(files), icons_(icons) {}

StationPicture::~StationPicture() { Clear(); }

Text StationPicture::PathOf(const Text& station_name) const {
  return AddBackslash(environment_.ProgramFolder()) + u"RadioJPG\\" + station_name + u".jpg";
}

bool StationPicture::Exists(const Text& station_name) const {
  return files_.PathFileExistsW(PathOf(station_name));
}

LoadedPicture StationPicture::Load(const Text& station_name) {
  const LoadedPicture picture = icons_.LoadPicture(PathOf(station_name));
  if (picture.handle == PictureHandle::kNone) return picture;
  Clear();
  loaded_ = picture.handle;
  return picture;
}

void StationPicture::Clear() {
  if (loaded_ == PictureHandle::kNone) return;
  icons_.DestroyPicture(std::exchange(loaded_, PictureHandle::kNone));
}

}  // namespace app
