#pragma once
// The sentence for the state of playing, and its arguments. Not when it is shown (ui/status_line.h).

#include <vector>

#include "app/text/text.h"
#include "ports/playback_monitor.h"

namespace ui {

/// One of app/state/status_sentences.h, in German, with its arguments.
struct Sentence {
  app::TextView text;
  std::vector<app::Text> arguments;
};

/// `station` is the name of what was started.
[[nodiscard]] Sentence SentenceOf(const platform::PlaybackStatus& status, const app::Text& station);

}  // namespace ui
