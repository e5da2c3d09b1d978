#pragma once
// The clipboard's text by Qt. Not other kinds of content.

#include "ports/clipboard.h"

namespace platform::qt {

class QtClipboard final : public Clipboard {
 public:
  Text GetText() override;
  void SetText(const Text& text) override;
};

}  // namespace platform::qt
