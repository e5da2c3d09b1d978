#include "ui/information_panel.h"

#include <cstdint>
#include <utility>

#include "controls/picture_place.h"

namespace ui {

using platform::Text;

InformationPanel::InformationPanel(Parts parts, StationPicture::Ports ports)
    : parts_(parts), picture_(ports) {
  subscriptions_ += parts_.CmdInfoClose.Clicked.Subscribe([this] { CmdInfoClose_Click(); });
}

void InformationPanel::ShowTitle(Text title) {
  parts_.Frame3.SetVisible(true);
  parts_.Label4.SetCaption(std::move(title));
}

void InformationPanel::ShowNoTitle() { parts_.Label4.SetCaption(u"Keine Info!"); }

void InformationPanel::ShowSelected(const Text& station) {
  const bool has_picture = picture_.Exists(station);
  if (has_picture) parts_.Frame3.SetVisible(true);
  parts_.Label3.SetCaption(u"");
  parts_.Image1.SetVisible(has_picture);
  if (!has_picture || LoadPicture(station) == Loaded::kNo) RemovePicture();
}

void InformationPanel::ShowOpened(const Text& station, Text information) {
  if (picture_.Exists(station)) {
    parts_.Image1.SetVisible(true);
    LoadPicture(station);
  }
  parts_.Frame3.SetVisible(true);
  parts_.Label3.SetCaption(std::move(information));
}

void InformationPanel::ShowStopped() {
  parts_.Frame3.SetVisible(false);
  parts_.Label3.SetCaption(u"");
}

void InformationPanel::CmdInfoClose_Click() { parts_.Frame3.SetVisible(false); }

InformationPanel::Loaded InformationPanel::LoadPicture(const Text& station) {
  const platform::LoadedPicture picture = picture_.Load(station);
  if (picture.handle == platform::PictureHandle::kNone) return Loaded::kNo;
  parts_.Image1.SetPicture(static_cast<std::uint32_t>(picture.handle));
  const controls::Place& title = parts_.Label4.GetPlace();
  parts_.Image1.Move(controls::FitLowerRight(picture.width, picture.height, parts_.Frame3.GetPlace(),
                                             title.top + title.height));
  return Loaded::kYes;
}

void InformationPanel::RemovePicture() {
  parts_.Image1.SetPicture(0);
  picture_.Clear();
}

}  // namespace ui
