#include "platform/win32/internet/stray_header.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace platform::win32 {
namespace {

using State = StrayHeader::State;

TEST(StrayHeader, IsWhatStandsBeforeTheSound) {
  StrayHeader header;
  EXPECT_EQ(header.Add("icy-name:X\r\nicy-metaint:8192\r\n\r\nsound"), State::kWhole);
  EXPECT_EQ(header.Header().Block(), "ICY 200 OK\r\nicy-name:X\r\nicy-metaint:8192\r\n\r\n");
  EXPECT_EQ(header.Header().StatusCode(), "200");
  EXPECT_TRUE(header.Header().IsFinal());
  EXPECT_EQ(header.Rest(), "sound");
}

TEST(StrayHeader, MayHaveItsStatusLine) {
  StrayHeader header;
  EXPECT_EQ(header.Add("ICY 404 Not Found\r\nicy-name:X\r\n\r\nsound"), State::kWhole);
  EXPECT_EQ(header.Header().StatusCode(), "404");
  EXPECT_EQ(header.Header().Value("icy-name"), "X");
  EXPECT_EQ(header.Rest(), "sound");
}

TEST(StrayHeader, MayComeByteByByteAndWithBareLineFeeds) {
  for (const auto& [line_end, last] :
       {std::pair<std::string, std::string>("\r\n", "\r\n"), {"\n", "\n"}, {"\n", "\r\n"}, {"\r\n", "\n"}}) {
    const std::string bytes = "Content-Type:audio/mpeg" + line_end + "ICY-br:128" + line_end + last;
    StrayHeader header;
    for (std::size_t at = 0; at + 1 < bytes.size(); ++at)
      ASSERT_EQ(header.Add(bytes.substr(at, 1)), State::kUnknown) << at;
    EXPECT_EQ(header.Add(bytes.substr(bytes.size() - 1)), State::kWhole);
    EXPECT_EQ(header.Header().Value("icy-br"), "128");
    EXPECT_EQ(header.Rest(), "");
  }
}

TEST(StrayHeader, AnyOtherBodyStaysWhole) {
  for (const std::string body : {"http://h/stream", "[playlist]\r\n\r\n", "icx", "\xFF\xFB\x90", "s"}) {
    StrayHeader header;
    State state = State::kUnknown;
    for (const char byte : body) state = header.Add(std::string(1, byte));
    if (state == State::kUnknown) state = header.Add("");
    EXPECT_EQ(state, State::kNone) << body;
  }
  StrayHeader header;
  EXPECT_EQ(header.Add("http://h/"), State::kNone);
  EXPECT_EQ(header.Rest(), "http://h/");
}

TEST(StrayHeader, ALineEndAloneWasNoAnswer) {
  StrayHeader header;
  EXPECT_EQ(header.Add("\r\n"), State::kGarbage);
}

TEST(StrayHeader, ThatIsCutWasNoAnswer) {
  StrayHeader header;
  EXPECT_EQ(header.Add("icy-name:X\r\n"), State::kUnknown);
  EXPECT_EQ(header.Add(""), State::kGarbage);
}

TEST(StrayHeader, IsBounded) {
  StrayHeader header;
  State state = header.Add("icy-name:");
  int pieces = 0;
  while (state == State::kUnknown && ++pieces < 1000) state = header.Add(std::string(1024, 'x'));
  EXPECT_EQ(state, State::kTooLong);
  EXPECT_LE(pieces, 257);
}

TEST(StrayHeader, IsOnlyLookedForBehindAHeaderThatMayBeMadeUp) {
  http::AnswerHeader made_up;
  made_up.AddLine("HTTP/1.0 200 OK\r\n");
  made_up.AddLine("\r\n");
  EXPECT_TRUE(StrayHeader::MayBeBehind(made_up));
  http::AnswerHeader real;
  real.AddLine("HTTP/1.0 200 OK\r\n");
  real.AddLine("Server: x\r\n");
  real.AddLine("\r\n");
  EXPECT_FALSE(StrayHeader::MayBeBehind(real));
}

}  // namespace
}  // namespace platform::win32
