#pragma once
// Adapter: starts programs and opens addresses on a desktop that follows freedesktop.org.
// Not for windows, the clipboard, or waiting for what was started.

#include <optional>
#include <string>

#include "platform/posix/process.h"
#include "ports/native_paths.h"
#include "ports/shell.h"

namespace platform::posix {

/// `file` is one of three things: an address ("scheme://..."), opened by xdg-open; "sndvol.exe", for which
/// the first sound mixer found in PATH is started; or a program file, started directly. A program that does
/// not exist under a name ending in ".exe" is tried without that ending; a bare name is searched in PATH.
/// Owner and show mode have no meaning here. The paths must outlive the object.
class PosixShell final : public Shell {
 public:
  explicit PosixShell(NativePaths& paths);

  bool ShellExecuteW(std::uint32_t owner, const Text& verb, const Text& file, const Text& parameters,
                     const Text& folder, std::int32_t show) override;

 private:
  [[nodiscard]] std::optional<Launch> Plan(const Text& file, const Text& parameters);
  [[nodiscard]] std::string ToArgument(const Text& text);

  NativePaths& paths_;
};

}  // namespace platform::posix
