#pragma once
// Shows a new title on the desktop while nobody can see the window, if the user wants that. Not the title in
// the window (ui/now_playing.h).

#include "controls/captioned.h"
#include "controls/form.h"
#include "ports/files.h"
#include "ports/notifications.h"
#include "ports/text.h"
#include "ui/current_track.h"
#include "ui/playing_mark.h"

namespace ui {

/// The wish is a check that is off at first; a file of the program's own remembers it.
class TitleNotice {
 public:
  struct Parts {
    controls::Form& form;
    controls::CheckBox& TitleNotices;
  };
  struct Ports {
    platform::Notifications& notifications;
    platform::Files& files;
  };

  TitleNotice(Parts parts, Ports ports, CurrentTrack& track, PlayingMark& mark);

  /// Sets the check as it was left; `path` names the file that is there while it is set. Once.
  void Restore(const platform::Text& path);

 private:
  void TakeTrack();
  void Remember();
  void Withdraw();

  Parts parts_;
  Ports ports_;
  const CurrentTrack& track_;
  const PlayingMark& mark_;
  platform::Text path_;
  platform::Text title_;  // of what plays, as it was last
  bool shows_ = false;
  controls::Subscriptions subscriptions_;
};

}  // namespace ui
