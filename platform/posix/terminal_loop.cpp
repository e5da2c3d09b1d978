#include "platform/posix/terminal_loop.h"

#include <array>
#include <csignal>
#include <ctime>

namespace platform::posix {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

// A signal handler can report only through program-wide variables.
volatile std::sig_atomic_t end_asked = 0;
std::array<struct sigaction, kSignals.size()> former{};

void OnSignal(int /*signal*/) { end_asked = 1; }

}  // namespace

TerminalLoop::TerminalLoop() {
  end_asked = 0;
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    ::sigaction(kSignals[index], &action, &former[index]);
  }
}

TerminalLoop::~TerminalLoop() {
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    ::sigaction(kSignals[index], &former[index], nullptr);
  }
}

void TerminalLoop::ProcessPendingMessages() {
  if (end_asked == 0) return;
  end_asked = 0;
  if (EndAsked) EndAsked();
}

bool TerminalLoop::InputEndsWait() const { return end_asked != 0; }

void TerminalLoop::Sleep(std::uint32_t milliseconds) {
  constexpr std::uint32_t kPerSecond = 1000;
  constexpr long kNanoseconds = 1'000'000;
  const timespec time{static_cast<std::time_t>(milliseconds / kPerSecond),
                      static_cast<long>(milliseconds % kPerSecond) * kNanoseconds};
  ::nanosleep(&time, nullptr);
}

}  // namespace platform::posix
