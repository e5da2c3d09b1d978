#pragma once
// Port: the system's texts for error codes. Not for the program's own messages.

#include <cstdint>

#include "ports/text.h"

namespace platform {

class SystemMessages {
 public:
  virtual ~SystemMessages() = default;
  /// The platform's message for an error code in the program's language, at most 255 characters; empty
  /// for an unknown code (FormatMessageA with FORMAT_MESSAGE_FROM_SYSTEM).
  virtual Text FormatMessageA(std::int32_t code) = 0;
};

}  // namespace platform
