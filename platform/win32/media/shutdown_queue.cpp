#include "platform/win32/media/shutdown_queue.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <algorithm>
#include <iterator>
#include <thread>
#include <utility>

namespace platform::win32 {
namespace {

void ShutDown(const ComView& object) {
  if (object.interface_id == Interface::kMediaSource) {
    static_cast<::IMFMediaSource*>(object.object.Get())->Shutdown();
  } else {
    static_cast<::IMFMediaSession*>(object.object.Get())->Shutdown();
  }
}

}  // namespace

ShutdownQueue::Closing& ShutdownQueue::Of(const std::shared_ptr<SessionWatch>& session) {
  const auto found = std::find_if(closing_.begin(), closing_.end(),
                                  [&session](const Closing& closing) { return closing.session == session; });
  return found != closing_.end() ? *found : closing_.emplace_back(Closing{session, {}});
}

void ShutdownQueue::Add(const std::shared_ptr<SessionWatch>& session) { Of(session); }

void ShutdownQueue::Add(const std::shared_ptr<SessionWatch>& session, const ComView& object) {
  Of(session).objects.push_back(object);
}

void ShutdownQueue::Step(Clock::time_point now) {
  const auto rests = [now](const Closing& closing) {
    const auto closed = closing.session->ClosedAt();
    return closed && now - *closed >= kRest;
  };
  const auto first = std::stable_partition(closing_.begin(), closing_.end(),
                                           [&](const auto& closing) { return !rests(closing); });
  std::vector<Closing> resting(std::make_move_iterator(first), std::make_move_iterator(closing_.end()));
  closing_.erase(first, closing_.end());
  for (const Closing& closing : resting) {
    for (const ComView& object : closing.objects) ShutDown(object);
  }
}

bool ShutdownQueue::Finish(std::chrono::milliseconds limit) {
  const auto until = Clock::now() + limit;
  Clock::time_point latest{};
  for (const Closing& closing : closing_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    closing.session->WaitClosed(std::max(left, std::chrono::milliseconds::zero()));
    latest = std::max(latest, closing.session->ClosedAt().value_or(latest));
  }
  while (Clock::now() < latest + kRest) std::this_thread::sleep_until(latest + kRest);
  Step(latest + kRest);
  return closing_.empty();
}

}  // namespace platform::win32
