#include "platform/win32/media/shutdown_queue.h"

#include "platform/win32/base/windows_api.h"

#include <mfidl.h>

#include <algorithm>
#include <iterator>
#include <thread>
#include <utility>

namespace platform::win32 {
namespace {

constexpr std::chrono::milliseconds kLook{5};

void ShutDown(const ComView& object) {
  if (object.interface_id == Interface::kMediaSource) {
    static_cast<::IMFMediaSource*>(object.object.Get())->Shutdown();
  } else {
    static_cast<::IMFMediaSession*>(object.object.Get())->Shutdown();
  }
}

void MoveTo(std::vector<ComView>& all, std::vector<ComView>& some) {
  std::move(some.begin(), some.end(), std::back_inserter(all));
  some.clear();
}

}  // namespace

ShutdownQueue::Closing& ShutdownQueue::Of(const std::shared_ptr<SessionWatch>& session) {
  const auto found = std::find_if(closing_.begin(), closing_.end(),
                                  [&session](const Closing& closing) { return closing.session == session; });
  return found != closing_.end() ? *found : closing_.emplace_back(Closing{session, Clock::now()});
}

void ShutdownQueue::Add(const std::shared_ptr<SessionWatch>& session) { Of(session); }

void ShutdownQueue::Add(const std::shared_ptr<SessionWatch>& session, const ComView& object) {
  Closing& closing = Of(session);
  // The other of the two may be added next, and the session comes first.
  closing.rests_from = Clock::now();
  (object.interface_id == Interface::kMediaSource ? closing.sources : closing.sessions).push_back(object);
}

void ShutdownQueue::Add(const std::shared_ptr<SessionWatch>& session, std::function<void()> end_reads) {
  Of(session).end_reads = std::move(end_reads);
}

void ShutdownQueue::Step(Clock::time_point now) {
  EndReads(now);
  for (const ComView& source : TakeSources(now)) ShutDown(source);
  for (const ComView& session : TakeSessions(now)) ShutDown(session);
}

void ShutdownQueue::EndReads(Clock::time_point now) {
  for (Closing& closing : closing_) {
    const bool due = closing.session->ClosedAt() || now - closing.added >= kReadsEnd;
    if (!due || !closing.end_reads) continue;
    std::exchange(closing.end_reads, nullptr)();
    closing.rests_from = now;
  }
}

std::vector<ComView> ShutdownQueue::TakeSessions(Clock::time_point now) {
  std::vector<ComView> sessions;
  for (Closing& closing : closing_) {
    const auto closed = closing.session->ClosedAt();
    if (!closed || closing.sessions.empty() || now - std::max(*closed, closing.rests_from) < kRest) continue;
    MoveTo(sessions, closing.sessions);
    closing.rests_from = now;
  }
  return sessions;
}

std::vector<ComView> ShutdownQueue::TakeSources(Clock::time_point now) {
  std::vector<ComView> sources;
  std::erase_if(closing_, [&](Closing& closing) {
    const auto closed = closing.session->ClosedAt();
    if (!closed || !closing.sessions.empty() || now - std::max(*closed, closing.rests_from) < kRest)
      return false;
    MoveTo(sources, closing.sources);
    return true;
  });
  return sources;
}

bool ShutdownQueue::Finish(std::chrono::milliseconds limit) {
  const auto until = Clock::now() + limit;
  const auto rests = [](const Closing& closing) { return closing.session->ClosedAt().has_value(); };
  for (auto now = Clock::now(); !closing_.empty(); now = Clock::now()) {
    Step(now);
    if (now >= until && std::none_of(closing_.begin(), closing_.end(), rests)) break;
    std::this_thread::sleep_for(kLook);
  }
  return closing_.empty();
}

}  // namespace platform::win32
