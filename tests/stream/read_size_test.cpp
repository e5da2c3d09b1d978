#include "stream/read_size.h"

#include <gtest/gtest.h>

namespace stream {
namespace {

using Writes = RecordOptions::Writes;

TEST(ReadSize, IsAlways512BytesByTheUsualRule) {
  ReadSize size(Writes::kUsual);
  EXPECT_EQ(size.Largest(), 512U);
  EXPECT_EQ(size.Next(), 512U);
  size.Came(512);
  EXPECT_EQ(size.Next(), 512U);
}

TEST(ReadSize, DoublesUpTo32KilobytesWhileReadsComeBackFull) {
  ReadSize size(Writes::kReceived);
  for (const std::size_t expected : {512U, 1024U, 2048U, 4096U, 8192U, 16384U, 32768U, 32768U}) {
    EXPECT_EQ(size.Next(), expected);
    EXPECT_LE(size.Next(), size.Largest());
    size.Came(size.Next());
  }
}

TEST(ReadSize, Is512BytesAgainAfterAReadThatDidNot) {
  for (const std::size_t came : {std::size_t{0}, std::size_t{2047}}) {
    ReadSize size(Writes::kReceived);
    size.Came(512);
    size.Came(1024);
    size.Came(came);
    EXPECT_EQ(size.Next(), 512U);
  }
}

}  // namespace
}  // namespace stream
