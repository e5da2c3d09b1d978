#include "platform/disk/profile_locks.h"

#include <gtest/gtest.h>

#include <memory>

namespace platform::disk {
namespace {

/// A lock that is held for as long as `holder` has a second owner.
struct FakeFolderLock {
  FolderLocking result;
  std::shared_ptr<int> holder;
  [[nodiscard]] FolderLocking Get() const { return result; }
};

TEST(ProfileLocksTest, ALockIsHeldUntilItIsReleased) {
  ProfileLocks<FakeFolderLock> locks;
  const auto first = std::make_shared<int>();
  const auto second = std::make_shared<int>();
  const ProfileLocking locking = locks.Keep({FolderLocking::kHeld, first});
  const ProfileLocking other = locks.Keep({FolderLocking::kHeld, second});
  EXPECT_EQ(locking.result, ProfileLocking::Result::kHeld);
  EXPECT_NE(locking.lock, ProfileLock::kNone);
  EXPECT_NE(locking.lock, other.lock);
  EXPECT_EQ(first.use_count(), 2);
  locks.Release(locking.lock);
  EXPECT_EQ(first.use_count(), 1);
  EXPECT_EQ(second.use_count(), 2);
}

TEST(ProfileLocksTest, WhatIsNotHeldHasNoLock) {
  ProfileLocks<FakeFolderLock> locks;
  const auto holder = std::make_shared<int>();
  const ProfileLocking busy = locks.Keep({FolderLocking::kBusy, holder});
  EXPECT_EQ(busy.result, ProfileLocking::Result::kFailed);
  EXPECT_EQ(busy.lock, ProfileLock::kNone);
  const ProfileLocking missing = locks.Keep({FolderLocking::kNoFolder, holder});
  EXPECT_EQ(missing.result, ProfileLocking::Result::kNoFolder);
  EXPECT_EQ(missing.lock, ProfileLock::kNone);
  EXPECT_EQ(holder.use_count(), 1);
}

}  // namespace
}  // namespace platform::disk
