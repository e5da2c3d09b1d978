#pragma once
// The one station picture that is shown: finds its file, decodes it, releases it. Not its place.

#include "ports/environment.h"
#include "ports/files.h"
#include "ports/icons.h"

namespace ui {

/// Where a station's picture is looked for: "RadioJPG\" + station name + ".jpg" in the program folder.
[[nodiscard]] platform::Text StationPicturePath(platform::Environment& environment,
                                                const platform::Text& station_name);

class StationPicture {
 public:
  struct Ports {
    platform::Environment& environment;
    platform::Files& files;
    platform::Icons& icons;
  };

  explicit StationPicture(Ports ports) : ports_(ports) {}
  ~StationPicture();
  StationPicture(const StationPicture&) = delete;
  StationPicture& operator=(const StationPicture&) = delete;

  /// True when the station has a picture file.
  [[nodiscard]] bool Exists(const platform::Text& station_name) const;

  /// Decodes the station's picture. On failure the handle is kNone and the previous picture stays loaded. The
  /// handle is valid until the next successful Load or Clear.
  platform::LoadedPicture Load(const platform::Text& station_name);

  void Clear();

 private:
  Ports ports_;
  platform::PictureHandle loaded_ = platform::PictureHandle::kNone;
};

}  // namespace ui
