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
  constexpr std::uint64_t kMillisecondsInSecond = 1000;
  return static_cast<std::int64_t>(::GetTickCount64() / kMillisecondsInSecond);
}

DateTime Win32Clock::LocalTime() {
  const SYSTEMTIME now = Local();
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

}  // namespace platform::win32
