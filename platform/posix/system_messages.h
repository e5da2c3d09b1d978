#pragma once
// Adapter: the platform's texts for the few error codes that the program shows.
// Not for messages of the program's own.

#include "ports/system_messages.h"

namespace platform::posix {

enum class MessageLanguage { kGerman, kEnglish };

/// Knows the codes that opening a medium reports: file not found (0x80070002) and unsupported stream type
/// (0xC00D36C4). As the platform's own, the texts end with CR LF.
class PosixSystemMessages final : public SystemMessages {
 public:
  explicit PosixSystemMessages(MessageLanguage language) : language_(language) {}

  void SetLanguage(MessageLanguage language) { language_ = language; }

  Text FormatMessageA(std::int32_t code) override;

 private:
  MessageLanguage language_;
};

}  // namespace platform::posix
