#include "catalogue/station_icons.h"

#include <utility>

#include "app/text/text_utilities.h"

namespace catalogue {

using platform::Text;

StationIcons::StationIcons(Ports ports, app::ListPair lists)
    : ports_(ports), lists_(lists), positions_(ports.conversion) {}

StationIcons::~StationIcons() { Destroy(); }

void StationIcons::LoadStationIcons(const Text& folder) {
  Destroy();
  image_list_ = ports_.icons.ImageList_Create(kSize, kSize, platform::kIlcColor32 | platform::kIlcMask, 9, 0);
  for (controls::ListView* list : {&lists_.full, &lists_.filtered}) {
    list->SetImageList(static_cast<std::uint32_t>(image_list_));
  }

  const Text path = app::AddBackslash(folder);
  platform::FoundFile found;
  const platform::FindHandle search = ports_.files.FindFirstFileW(path + u"*.*", found);
  if (search == platform::FindHandle::kNone) return;
  do {
    if (!found.is_directory && !found.is_reparse_point) AddIconFile(path, found.name);
  } while (ports_.files.FindNextFileW(search, found));
  ports_.files.FindClose(search);
}

void StationIcons::AddIconFile(const Text& folder, const Text& file_name) {
  if (app::GetFileExt(ports_.conversion, file_name) != u"ICO") return;
  const platform::IconHandle icon = ports_.icons.LoadImageW(folder + file_name, kSize, kSize);
  if (icon == platform::IconHandle::kNone) return;

  const int position = ports_.icons.ImageList_AddIcon(image_list_, icon);
  const Text station_name = file_name.substr(0, file_name.rfind(u'.'));
  if (position >= 0 && !positions_.Add(position, station_name)) {
    ports_.dialogs.MessageBoxW(u"Dieser Schlüssel ist bereits einem Element dieser Auflistung zugeordnet",
                               u"", platform::kMbOk);
  }
  ports_.icons.DestroyIcon(icon);
}

std::int32_t StationIcons::IconOf(const Text& station_name) const {
  return ItemIndex(positions_, station_name);
}

void StationIcons::Destroy() {
  if (image_list_ == platform::ImageListHandle::kNone) return;
  for (controls::ListView* list : {&lists_.full, &lists_.filtered}) list->SetImageList(0);
  positions_.Clear();
  ports_.icons.ImageList_Destroy(std::exchange(image_list_, platform::ImageListHandle::kNone));
}

}  // namespace catalogue
