#pragma once
// Adapter: what the process knows about its environment. Not for files or settings.

#include "ports/environment.h"

namespace platform::win32 {

/// Files of state are in the folder "Funkhausplayer" in the user's folder for data of this machine.
class Win32Environment final : public Environment {
 public:
  Text GetEnvironmentVariableW(const Text& name) override;
  Text ProgramFolder() override;
  Text MusicFolder() override;
  Text StateFile(const Text& path, const Text& extension) override;
  std::uint32_t GetCurrentProcessId() override;
};

}  // namespace platform::win32
