#pragma once
// Adapter: opens addresses and starts programs as the desktop does. Not for waiting for what was started.

#include <functional>
#include <utility>

#include "platform/win32/base/handles.h"
#include "ports/shell.h"

namespace platform::win32 {

/// What the system is asked to open or start; null for no text. The result says whether it did.
struct ShellCall {
  HWND owner;
  const wchar_t* verb;
  const wchar_t* file;
  const wchar_t* parameters;
  const wchar_t* folder;
  int show;
};
bool CallShell(const ShellCall& call);

/// COM is initialised on the calling thread. The owner is always the window that is active on this thread:
/// what the system has to say or to ask is shown over that window, which takes no input meanwhile. The
/// thread's messages may be handled inside a call. The parameters of a program are its command line as it
/// stands, neither quoted nor escaped: the recording tool takes all of it as one link.
class Win32Shell final : public Shell {
 public:
  using Operation = std::function<bool(const ShellCall&)>;
  explicit Win32Shell(Operation operation = CallShell) : operation_(std::move(operation)) {}

  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override;

 private:
  const Operation operation_;
};

}  // namespace platform::win32
