#pragma once
// Waiting while the window stays alive. Not for waits that user input must not interrupt.

#include "ports/clock.h"
#include "ports/message_loop.h"

namespace app {

/// Returns once the time of day has advanced by `seconds`, past midnight too; at once when `seconds` is not
/// above 0. Between naps of a millisecond the window processes its messages, so that any event procedure
/// can run inside.
void WaitSeconds(float seconds, platform::Clock& clock, platform::MessageLoop& messages);

}  // namespace app
