#include "platform/win32/system/single_start.h"

#include "platform/win32/base/windows_api.h"

#include <utility>

#include "platform/win32/system/system_path.h"

namespace platform::win32 {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr DWORD kPauseBetweenTries = 20;

/// Nothing when an object of this name exists.
OwnedHandle TakeRight(const std::wstring& name) {
  OwnedHandle right(::CreateMutexW(nullptr, FALSE, (L"Local\\" + name).c_str()));
  if (!right.IsOpen() || ::GetLastError() == ERROR_ALREADY_EXISTS) return {};
  return right;
}

}  // namespace

SingleStart::SingleStart(const Text& place, const StartRequest& request, milliseconds limit)
    : name_(L"Funkhausplayer-start-" + NumberOf({place.begin(), place.end()})),
      outcome_(Settle(request, limit)) {
  if (outcome_ == Outcome::kRuns) listener_ = std::make_unique<StartListener>(name_);
}

SingleStart::Outcome SingleStart::Settle(const StartRequest& request, milliseconds limit) {
  const auto deadline = Clock::now() + limit;
  while (true) {
    right_ = TakeRight(name_);
    if (right_.IsOpen()) return Outcome::kRuns;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
    if (left <= milliseconds(0)) return Outcome::kUnanswered;
    if (AskRunningStart(name_, request, left)) return Outcome::kHandedOver;
    ::Sleep(kPauseBetweenTries);
  }
}

}  // namespace platform::win32
