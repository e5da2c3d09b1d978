#pragma once
// A system's disk under the INI engine, watched by a test, which can also let it be full.
// Not a disk of its own (tests/support/plain_disk.h).

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ports/profile_files.h"

namespace test_support {

template <typename Disk>
class WatchedDisk final : public platform::ProfileFiles {
 public:
  std::pair<platform::ProfileReading, platform::FileStamp> Stamp(const std::string& name) override {
    return disk_.Stamp(name);
  }
  platform::ProfileBytes Read(const std::string& name, std::size_t limit) override {
    return disk_.Read(name, limit);
  }
  std::optional<platform::FileState> Replace(const std::string& name, std::string_view bytes) override {
    ++replacements;
    if (open_locks != 1) ++unlocked_replacements;
    return is_full ? std::nullopt : disk_.Replace(name, bytes);
  }
  platform::ProfileLocking Lock(const std::string& name) override {
    ++open_locks;
    return disk_.Lock(name);
  }
  void Unlock(platform::ProfileLock lock) override {
    --open_locks;
    disk_.Unlock(lock);
  }

  bool is_full = false;  ///< no file can be replaced
  int replacements = 0;
  int open_locks = 0;
  int unlocked_replacements = 0;

 private:
  Disk disk_;
};

}  // namespace test_support
