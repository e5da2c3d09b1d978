#include "platform/win32/system/clock.h"

#include "platform/win32/base/windows_api.h"

namespace platform::win32 {
namespace {

SYSTEMTIME Local() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now;
}

}  // namespace

double Win32Clock::SecondsSinceMidnight() {
  const SYSTEMTIME now = Local();
  return (now.wHour * 60 + now.wMinute) * 60 + now.wSecond + now.wMilliseconds / 1000.0;
}

std::int64_t Win32Clock::WholeSeconds() {
  // The system counts steps of 100 ns from the beginning of 1601.
  constexpr std::int64_t kStepsInSecond = 10'000'000;
  constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
  FILETIME now{};
  ::GetSystemTimeAsFileTime(&now);
  const auto steps = static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32U | now.dwLowDateTime);
  return steps / kStepsInSecond - kSecondsTo1970;
}

DateTime Win32Clock::LocalTime() {
  const SYSTEMTIME now = Local();
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

}  // namespace platform::win32
