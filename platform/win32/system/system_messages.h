#pragma once
// Adapter: the system's texts for error codes. Not for messages of the program's own.

#include <functional>
#include <utility>

#include "ports/system_messages.h"

namespace platform::win32 {

/// The system's texts are in its own language. For the media framework's code that some systems have no text
/// for (0xC00D36C4, unsupported stream type) the program has one. All end with CR LF.
class Win32SystemMessages final : public SystemMessages {
 public:
  /// Gives a German text, without its line end, in the user's language. German at first.
  using LookUp = std::function<Text(const Text&)>;
  void SetLookUp(LookUp translated) { translated_ = std::move(translated); }

  Text FormatMessageA(std::int32_t code) override;

 private:
  LookUp translated_;
};

}  // namespace platform::win32
