#include "platform/curl/library.h"

#include <gtest/gtest.h>

#include <future>

namespace platform::curl {
namespace {

TEST(LibraryTest, IsLoadedOnceForAllThreads) {
  auto other = std::async(std::launch::async, [] { return LoadedLibrary(); });
  const Library* const library = LoadedLibrary();
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(other.get(), library);
}

}  // namespace
}  // namespace platform::curl
