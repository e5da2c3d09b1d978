#include "app/state/scoped_flag.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace app {
namespace {

TEST(ScopedFlagTest, IsSetForTheScopeOnly) {
  bool flag = false;
  {
    const ScopedFlag scope(flag);
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(ScopedFlagTest, AnInnerScopeLeavesTheFlagToTheOuterOne) {
  bool flag = false;
  const ScopedFlag outer(flag);
  { const ScopedFlag inner(flag); }
  EXPECT_TRUE(flag);
}

TEST(ScopedFlagTest, IsTakenBackWhenTheScopeIsLeftByAnError) {
  bool flag = false;
  try {
    const ScopedFlag scope(flag);
    throw std::runtime_error("an error");
  } catch (const std::runtime_error&) {
    EXPECT_FALSE(flag);
  }
}

}  // namespace
}  // namespace app
