#pragma once
// The station icons: loads them from their folder and knows each station's place in the image list.
// Not station pictures.

#include <cstdint>

#include "app/state/list_pair.h"
#include "catalogue/keyed_collection.h"
#include "controls/list_view.h"
#include "ports/dialogs.h"
#include "ports/files.h"
#include "ports/icons.h"
#include "ports/text_conversion.h"

namespace catalogue {

class StationIcons {
 public:
  struct Ports {
    platform::Icons& icons;
    platform::Files& files;
    platform::TextConversion& conversion;
    platform::Dialogs& dialogs;
  };

  static constexpr int kSize = 32;  ///< pixels, width and height

  StationIcons(Ports ports, app::ListPair lists);
  ~StationIcons();
  StationIcons(const StationIcons&) = delete;
  StationIcons& operator=(const StationIcons&) = delete;

  /// Makes the image list, gives it to both lists and fills it from the "ico" files (any letter case) of
  /// `folder`, one per station, named after it. Files that are not icons are skipped; a second file for the
  /// same station is reported in a message box. A folder that does not exist gives no icons.
  void LoadStationIcons(const platform::Text& folder);

  /// The station's position in the image list, -1 when it has no icon.
  [[nodiscard]] std::int32_t IconOf(const platform::Text& station_name) const;

  /// Destroys the image list, if there is one.
  void Destroy();

 private:
  void AddIconFile(const platform::Text& folder, const platform::Text& file_name);

  Ports ports_;
  app::ListPair lists_;
  KeyedCollection positions_;
  platform::ImageListHandle image_list_ = platform::ImageListHandle::kNone;
};

}  // namespace catalogue
