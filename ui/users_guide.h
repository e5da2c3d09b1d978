#pragma once
// Opens the user's guide. Not where it is on a system.

#include "app/state/notices.h"
#include "controls/captioned.h"
#include "ports/shell.h"

namespace ui {

class UsersGuide {
 public:
  /// `address` is that of the guide, empty when there is none. The others outlive the object.
  UsersGuide(controls::CommandButton& ShowGuide, platform::Shell& shell, app::Notices& notices,
             platform::Text address);

 private:
  /// The status line reports it when the guide is missing or cannot be opened.
  void Show();

  platform::Shell& shell_;
  app::Notices& notices_;
  const platform::Text address_;
  controls::Subscription clicked_;
};

}  // namespace ui
