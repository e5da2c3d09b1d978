#include "platform/win32/media/icy_filter.h"

#include <gtest/gtest.h>

#include <string>

namespace platform::win32 {
namespace {

/// The sound in `body`, which comes in pieces of that size.
std::string SoundIn(IcyFilter& filter, const std::string& body, std::size_t piece) {
  std::string sound;
  for (std::size_t at = 0; at < body.size(); at += piece) sound += filter.Sound(body.substr(at, piece));
  return sound;
}

std::string Block(const std::string& title, char units) {
  std::string block(1 + static_cast<std::size_t>(units) * 16, '\0');
  block[0] = units;
  return block.replace(1, title.size(), title);
}

TEST(IcyFilter, BlocksOfTitlesAreNoSound) {
  const std::string body = "abcde" + Block("StreamTitle='x';", 1) + "fghij" + Block("", 0) + "klm";
  for (std::size_t piece = 1; piece <= body.size(); ++piece) {
    IcyFilter filter(5);
    EXPECT_EQ(SoundIn(filter, body, piece), "abcdefghijklm") << piece;
  }
}

TEST(IcyFilter, WithoutAnIntervalEverythingIsSound) {
  IcyFilter filter(0);
  EXPECT_EQ(SoundIn(filter, "\xFF\xFBsound", 3), "\xFF\xFBsound");
}

}  // namespace
}  // namespace platform::win32
