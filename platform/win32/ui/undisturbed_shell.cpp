#include "platform/win32/ui/undisturbed_shell.h"

#include "platform/win32/ui/tab_stops.h"

namespace platform::win32 {

bool UndisturbedShell::ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file,
                                     const Text& parameters, const Text& folder, std::int32_t show) {
  bool started = false;
  KeepFocus();
  loop_.CallWithoutProcedures(
      [&] { started = shell_.ShellExecuteW(owner, verb, file, parameters, folder, show); });
  return started;
}

}  // namespace platform::win32
