#include "platform/front/announced_text.h"

#include <utility>

namespace platform::front {

AnnouncedText::Turn AnnouncedText::Show(controls::Text text) {
  if (text.empty()) {
    wording_.clear();
    return Turn::kNever;
  }
  std::erase_if(text, [](char16_t unit) { return unit >= u'0' && unit <= u'9'; });
  const bool is_same = text == wording_;
  wording_ = std::move(text);
  return is_same ? Turn::kWhenItRests : Turn::kNow;
}

}  // namespace platform::front
