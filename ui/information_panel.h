#pragma once
// The information panel: the title being sent, what the stream says about itself, the station's picture.
// Not where title and information come from (ui/now_playing.h, ui/playback_control.h).

#include "controls/captioned.h"
#include "controls/value_controls.h"
#include "ports/text.h"
#include "ui/station_picture.h"

namespace ui {

/// The only class that touches its controls.
class InformationPanel {
 public:
  struct Parts {
    controls::Frame& Frame3;                ///< the panel itself
    controls::Label& Label4;                ///< the title being sent
    controls::Label& Label3;                ///< what the stream says about itself
    controls::Image& Image1;                ///< the station's picture
    controls::CommandButton& CmdInfoClose;  ///< closes the panel
  };

  InformationPanel(Parts parts, StationPicture::Ports ports);

  /// The current station sends this title: the panel is shown.
  void ShowTitle(platform::Text title);
  /// The current station sends no title: "Keine Info!". A hidden panel stays hidden.
  void ShowNoTitle();
  /// A station was selected: with a picture the panel is shown; without one it stays as it is, and nothing of
  /// the previous station remains in it. What the earlier stream said about itself is cleared in any case.
  void ShowSelected(const platform::Text& station);
  /// The station's stream is open and says this about itself: the panel is shown, with the station's picture
  /// or, when it has none, with the current one.
  void ShowOpened(const platform::Text& station, platform::Text information);
  /// Nothing plays any more: the panel is hidden, and what the stream said about itself is cleared.
  void ShowStopped();

  void CmdInfoClose_Click();  ///< hides the panel

 private:
  enum class Loaded { kYes, kNo };
  Loaded LoadPicture(const platform::Text& station);
  void RemovePicture();

  Parts parts_;
  StationPicture picture_;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
