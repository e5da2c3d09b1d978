// The whole program where no window can be shown.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

#include "programs/linux/program.h"

namespace {

TEST(DisplayTest, WithoutADisplayTheProgramSaysSoAndEndsAsFailed) {
  const auto start = [] {
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    ::setenv("DISPLAY", ":nonexistent", 1);
    std::string name = "funkhausplayer";
    std::array<char*, 2> arguments = {name.data(), nullptr};
    int count = 1;
    const Program program(count, arguments.data());
  };
  EXPECT_EXIT(start(), ::testing::ExitedWithCode(EXIT_FAILURE), "could not connect to display :nonexistent");
}

}  // namespace
