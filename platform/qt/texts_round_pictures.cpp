#include "platform/qt/texts_round_pictures.h"

namespace platform::qt {

TextsRoundPictures::TextsRoundPictures(const app::Inventory& inventory, const WidgetSet& widgets,
                                       const TwipScale& scale)
    : scale_(scale) {
  for (const app::FormControl& entry : inventory) {
    auto* picture = app::As<controls::Image>(entry);
    if (picture == nullptr) continue;
    for (const auto& [label, text] : widgets.Texts()) {
      if (text->parentWidget() != widgets.Of(*picture)->parentWidget()) continue;
      const Pair pair{picture, text};
      pairs_.push_back(pair);
      subscriptions_ += picture->Changed.Subscribe([this, pair] { Follow(pair); });
      subscriptions_ += label->Changed.Subscribe([this, pair] { Follow(pair); });
    }
  }
  FollowScale();
}

void TextsRoundPictures::FollowScale() {
  for (const Pair& pair : pairs_) Follow(pair);
}

void TextsRoundPictures::Follow(const Pair& pair) const {
  const bool shown = pair.picture->Visible() && pair.picture->Picture() != 0;
  const QRect picture = shown ? scale_.Pixels(pair.picture->GetPlace()) : QRect();
  const QRect covered = picture & pair.text->geometry();
  pair.text->SetObstacle(covered.isEmpty() ? QRect() : covered.translated(-pair.text->pos()));
}

}  // namespace platform::qt
