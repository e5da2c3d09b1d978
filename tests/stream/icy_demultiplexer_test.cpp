#include "stream/icy_demultiplexer.h"

#include <gtest/gtest.h>

#include <limits>

namespace stream {
namespace {

// One letter for each byte: audio, empty block, length, block byte, complete.
std::string Walk(IcyDemultiplexer& demultiplexer, const std::string& bytes) {
  std::string letters;
  for (const char byte : bytes) {
    letters += "aELbC"[static_cast<int>(demultiplexer.Take(static_cast<std::byte>(byte)))];
  }
  return letters;
}

TEST(IcyDemultiplexer, TheLengthByteComesAfterTheInterval) {
  IcyDemultiplexer demultiplexer(3);
  EXPECT_EQ(Walk(demultiplexer, "xyz\1" + std::string(16, 'b') + "xyz"),
            "aaaL" + std::string(15, 'b') + "Caaa");
  EXPECT_EQ(demultiplexer.Block(), std::string(16, 'b'));
}

TEST(IcyDemultiplexer, ALengthOfZeroIsNoBlock) {
  IcyDemultiplexer demultiplexer(2);
  EXPECT_EQ(Walk(demultiplexer, std::string("xx\0xx\0x", 7)), "aaEaaEa");
}

TEST(IcyDemultiplexer, TheLongestBlockHas4080Bytes) {
  IcyDemultiplexer demultiplexer(1);
  const std::string block(4080, 'm');
  EXPECT_EQ(Walk(demultiplexer, "x\xFF" + block), "aL" + std::string(4079, 'b') + "C");
  EXPECT_EQ(demultiplexer.Block(), block);
}

TEST(IcyDemultiplexer, ANewBlockStartsEmpty) {
  IcyDemultiplexer demultiplexer(1);
  Walk(demultiplexer, "x\1" + std::string(16, 'm') + "x\1" + std::string(16, 'n'));
  EXPECT_EQ(demultiplexer.Block(), std::string(16, 'n'));
}

TEST(IcyDemultiplexer, AnIntervalOfZeroOrLessMakesEveryByteALengthByte) {
  for (const std::int32_t interval : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    IcyDemultiplexer demultiplexer(interval);
    EXPECT_EQ(Walk(demultiplexer, std::string("\0\0\1", 3) + std::string(16, 'm') + "\1"),
              "EEL" + std::string(15, 'b') + "CL");
  }
}

TEST(IcyDemultiplexer, TheLargestIntervalIsJustAudio) {
  IcyDemultiplexer demultiplexer(std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(Walk(demultiplexer, std::string(5000, '\1')), std::string(5000, 'a'));
}

TEST(IcyDemultiplexer, AudioCanBeTakenInOnePieceUpToTheNextLengthByte) {
  IcyDemultiplexer demultiplexer(10);
  EXPECT_EQ(demultiplexer.TakeAudio(4), 4U);
  EXPECT_EQ(demultiplexer.TakeAudio(0), 0U);
  EXPECT_EQ(Walk(demultiplexer, "x"), "a");
  EXPECT_EQ(demultiplexer.TakeAudio(100), 5U);
  EXPECT_EQ(demultiplexer.TakeAudio(100), 0U) << "the length byte is next";
  EXPECT_EQ(Walk(demultiplexer, "\1"), "L");
  EXPECT_EQ(demultiplexer.TakeAudio(100), 0U) << "a block is next";
  EXPECT_EQ(Walk(demultiplexer, std::string(16, 'b')), std::string(15, 'b') + "C");
  EXPECT_EQ(demultiplexer.TakeAudio(100), 10U);
}

TEST(IcyDemultiplexer, AnIntervalOfZeroOrLessHasNoAudioToTake) {
  for (const std::int32_t interval : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(IcyDemultiplexer(interval).TakeAudio(100), 0U);
  }
}

}  // namespace
}  // namespace stream
