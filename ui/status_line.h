#pragma once
// The status line: what playing does now, and what a feature has to say in one sentence.
// Not the message boxes, and not the causes themselves (platform/playback_monitor.h).

#include <vector>

#include "app/language.h"
#include "app/notices.h"
#include "controls/captioned.h"

namespace ui {

class StatusLine final : public app::Notices {
 public:
  StatusLine(controls::Label& label, const app::Language& language) : label_(label), language_(language) {}

  using Notices::Notify;
  void Notify(platform::TextView sentence, const std::vector<platform::Text>& arguments) override;

 private:
  controls::Label& label_;
  const app::Language& language_;
};

}  // namespace ui
