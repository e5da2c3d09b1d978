#include "app/text/wait_seconds.h"

namespace app {

void WaitSeconds(float seconds, platform::Clock& clock, platform::MessageLoop& messages) {
  constexpr double kSecondsOfADay = 86400.0;
  double start = clock.SecondsSinceMidnight();
  double end = start + static_cast<double>(seconds);
  double now = start;
  while (now < end) {
    messages.Sleep(1);
    messages.ProcessPendingMessages();
    now = clock.SecondsSinceMidnight();
    if (now < start) end -= kSecondsOfADay;
    start = now;
  }
}

}  // namespace app
