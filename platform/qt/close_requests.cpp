#include "platform/qt/close_requests.h"

#include <fcntl.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSessionManager>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace platform::qt {
namespace {

constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};

// A signal handler has no other way to reach anything than what is known program-wide.
volatile std::sig_atomic_t wake_descriptor = -1;
std::array<int, 2> descriptors = {-1, -1};
std::array<struct sigaction, kSignals.size()> former{};

/// The C library's raise(), which the system calls a signal to one thread.
bool IsRaisedHere(const siginfo_t& signal) {
  return signal.si_code == SI_TKILL && signal.si_pid == ::getpid();
}

void OnSignal(int /*number*/, siginfo_t* signal, void* /*context*/) {
  if (IsRaisedHere(*signal)) return;
  const int error = errno;
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = ::write(wake_descriptor, &byte, 1);
  errno = error;
}

bool OpenPipe() { return ::pipe2(descriptors.data(), O_CLOEXEC | O_NONBLOCK) == 0; }

}  // namespace

CloseRequests::CloseRequests(controls::Form& form, QtMessageLoop& loop) : form_(form), loop_(loop) {
  connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) {
    // Closing may ask whether to save, which the session has to allow first.
    const bool may_ask = manager.allowsInteraction();
    EndSession(may_ask ? Interaction::kAllowed : Interaction::kRefused);
    if (may_ask) manager.release();
  });
  if (!OpenPipe()) return;
  wake_descriptor = descriptors[1];
  notifier_ = std::make_unique<QSocketNotifier>(descriptors[0], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { ReadSignals(); });
  struct sigaction action {};
  action.sa_sigaction = OnSignal;
  action.sa_flags = SA_RESTART | SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    ::sigaction(kSignals[index], &action, &former[index]);
  }
}

CloseRequests::~CloseRequests() {
  if (!notifier_) return;
  for (std::size_t index = 0; index < kSignals.size(); ++index) {
    ::sigaction(kSignals[index], &former[index], nullptr);
  }
  notifier_.reset();
  wake_descriptor = -1;
  for (int& descriptor : descriptors) ::close(std::exchange(descriptor, -1));
}

void CloseRequests::EndSession(Interaction interaction) {
  if (loop_.PaintingOnly()) {
    HandOverSessionEnd();
    return;
  }
  CloseForm(interaction == Interaction::kAllowed ? controls::CloseReason::kUser
                                                 : controls::CloseReason::kSessionEnd);
}

void CloseRequests::ReadSignals() {
  std::array<char, 16> bytes{};
  while (::read(descriptors[0], bytes.data(), bytes.size()) > 0) {
  }
  HandOverSessionEnd();
}

void CloseRequests::HandOverSessionEnd() {
  loop_.HandOver(
      *this, [this] { CloseForm(controls::CloseReason::kSessionEnd); }, OnWait::kEndsWait);
}

void CloseRequests::CloseForm(controls::CloseReason reason) {
  form_.Close(reason);
  const bool stuck = !form_.IsClosed() && reason == controls::CloseReason::kSessionEnd;
  // The form is already being closed further up the stack, where it waits for an answer. Leaving every event
  // loop dismisses whatever is open, and the closing continues.
  if (stuck) QCoreApplication::exit();
}

}  // namespace platform::qt
