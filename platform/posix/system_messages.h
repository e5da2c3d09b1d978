#pragma once
// Adapter: the platform's texts for the few error codes that the program shows.
// Not for messages of the program's own.

#include <functional>
#include <utility>

#include "ports/system_messages.h"

namespace platform::posix {

/// Knows the codes that opening a medium reports: file not found (0x80070002) and unsupported stream type
/// (0xC00D36C4). As the platform's own, the texts end with CR LF.
class PosixSystemMessages final : public SystemMessages {
 public:
  /// Gives a German text, without its line end, in the user's language. German at first.
  using LookUp = std::function<Text(const Text&)>;
  void SetLookUp(LookUp translated) { translated_ = std::move(translated); }

  Text FormatMessageA(std::int32_t code) override;

 private:
  LookUp translated_;
};

}  // namespace platform::posix
