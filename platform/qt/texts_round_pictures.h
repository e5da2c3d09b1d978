#pragma once
// Makes a form's long texts flow around a picture in the same frame. Not where pictures and texts are placed.

#include <vector>

#include "app/forms/form_control.h"
#include "platform/qt/twip_scale.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

/// Follows the controls by itself.
class TextsRoundPictures {
 public:
  TextsRoundPictures(const app::Inventory& inventory, const WidgetSet& widgets, const TwipScale& scale);
  TextsRoundPictures(const TextsRoundPictures&) = delete;
  TextsRoundPictures& operator=(const TextsRoundPictures&) = delete;

  /// To be called when the scale has changed.
  void FollowScale();

 private:
  struct Pair {
    const controls::Image* picture;
    FittedLabel* text;
  };
  void Follow(const Pair& pair) const;

  const TwipScale& scale_;
  std::vector<Pair> pairs_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
