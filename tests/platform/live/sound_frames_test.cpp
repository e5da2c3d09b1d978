#include "platform/live/sound_frames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace live_test {
namespace {

using namespace std::chrono_literals;
using platform::live::SoundFormat;
using platform::live::SoundFrames;

std::string Frame(const std::vector<unsigned char>& header, std::size_t size) {
  std::string frame(header.begin(), header.end());
  frame.resize(size, '\0');
  return frame;
}
std::string Times(int count, const std::string& frame) {
  std::string frames;
  for (int at = 0; at < count; ++at) frames += frame;
  return frames;
}
std::chrono::milliseconds InMilliseconds(SoundFrames::Length length) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(length);
}

/// 128 kbit/s at 48 kHz: 24 ms each.
const std::string kMp3 = Frame({0xFF, 0xFB, 0x94, 0, 0, 0, 0}, 384);
/// 1,024 samples at 32 kHz: 32 ms each.
const std::string kAac = Frame({0xFF, 0xF1, 0x54, 0x80, 256 >> 3, 0, 0}, 256);

struct HeaderCase {
  std::vector<unsigned char> header;
  std::size_t size;
  SoundFormat format;
  std::chrono::milliseconds hundred_frames;
};
struct EachHeader : testing::TestWithParam<HeaderCase> {};

TEST_P(EachHeader, IsMeasured) {
  SoundFrames frames;
  frames.Append(Times(100, Frame(GetParam().header, GetParam().size)));
  EXPECT_EQ(frames.Format(), GetParam().format);
  EXPECT_EQ(InMilliseconds(frames.Sound() + 1us), GetParam().hundred_frames);
}

INSTANTIATE_TEST_SUITE_P(
    SoundFrames, EachHeader,
    testing::Values(HeaderCase{{0xFF, 0xFB, 0x90}, 417, SoundFormat::kMp3, 2612ms},   // 44.1 kHz
                    HeaderCase{{0xFF, 0xFB, 0x92}, 418, SoundFormat::kMp3, 2612ms},   // padded
                    HeaderCase{{0xFF, 0xFB, 0xE8}, 1440, SoundFormat::kMp3, 3600ms},  // 320 kbit/s, 32 kHz
                    HeaderCase{{0xFF, 0xF3, 0x80}, 208, SoundFormat::kMp3, 2612ms},   // MPEG 2, 64 kbit/s
                    HeaderCase{{0xFF, 0xE3, 0x48}, 288, SoundFormat::kMp3, 7200ms},   // MPEG 2.5, 8 kHz
                    HeaderCase{{0xFF, 0xFD, 0x84}, 384, SoundFormat::kMp3, 2400ms},   // layer II
                    HeaderCase{{0xFF, 0xF9, 0x50, 0x80, 0x10, 0x1F, 0xFC}, 128, SoundFormat::kAac, 2321ms},
                    HeaderCase{{0xFF, 0xF1, 0x4C, 0x81, 0x00, 0x00, 0x01}, 2048, SoundFormat::kAac, 4266ms}));

TEST(SoundFramesTest, EverySplittingGivesTheSame) {
  const std::string stream = Times(12, kMp3);
  for (std::size_t piece = 1; piece < 900; piece += 7) {
    SoundFrames frames;
    for (std::size_t at = 0; at < stream.size(); at += piece) frames.Append(stream.substr(at, piece));
    ASSERT_EQ(InMilliseconds(frames.Sound()), 12 * 24ms) << piece;
  }
}

TEST(SoundFramesTest, TheRateIsTheAverage) {
  SoundFrames frames;
  EXPECT_EQ(frames.BitRate(), 0);
  frames.Append(Times(10, kMp3));
  EXPECT_EQ(frames.BitRate(), 128000);
  frames.Append(Times(10, Frame({0xFF, 0xFB, 0x54}, 192)));
  EXPECT_EQ(frames.BitRate(), 96000);
}

TEST(SoundFramesTest, AStreamMayBeginAndBreakInTheMiddleOfAFrame) {
  SoundFrames frames;
  frames.Append(kMp3.substr(100) + Times(5, kMp3) + kMp3.substr(0, 50));
  EXPECT_EQ(InMilliseconds(frames.Sound()), 5 * 24ms);
  frames.Append(Times(20, kMp3));
  // The frame that broke is counted with what came in its place, and the one that is cut by that is not.
  EXPECT_EQ(InMilliseconds(frames.Sound()), 25 * 24ms);
}

TEST(SoundFramesTest, AnotherFormatIsFollowed) {
  SoundFrames frames;
  frames.Append(Times(10, kMp3) + Times(10, kAac));
  EXPECT_EQ(frames.Format(), SoundFormat::kAac);
  EXPECT_EQ(InMilliseconds(frames.Sound()), 10 * 24ms + 10 * 32ms);
}

TEST(SoundFramesTest, WhatIsNoSoundHasNone) {
  for (const std::string& bytes :
       {std::string(30000, '\xFF'), std::string(30000, '\0'), Times(1000, "OggS and more of it "),
        Times(300, "<html>\xFF\xFB\x90 a header by chance</html>")}) {
    SoundFrames frames;
    frames.Append(bytes);
    EXPECT_EQ(frames.Format(), SoundFormat::kUnknown);
    EXPECT_EQ(frames.Sound(), 0ns);
  }
}

TEST(SoundFramesTest, ReservedValuesAreNoHeaders) {
  for (const std::vector<unsigned char>& header :
       std::vector<std::vector<unsigned char>>{{0xFF, 0xEB, 0x90},
                                               {0xFF, 0xFF, 0x90},
                                               {0xFF, 0xFB, 0x00},
                                               {0xFF, 0xFB, 0xF0},
                                               {0xFF, 0xFB, 0x9C},
                                               {0xFF, 0xF1, 0x74, 0x80, 0x34, 0x20},
                                               {0xFF, 0xE1, 0x4C, 0x80, 0x34, 0x20},
                                               {0xFF, 0xF1, 0x4C, 0x80, 0x00, 0xC0}}) {
    SoundFrames frames;
    frames.Append(Times(100, Frame(header, 417)));
    EXPECT_EQ(frames.Format(), SoundFormat::kUnknown) << int{header[1]} << ' ' << int{header[2]};
  }
}

}  // namespace
}  // namespace live_test
