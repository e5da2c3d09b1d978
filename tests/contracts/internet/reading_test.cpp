#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/contracts/internet/internet_rig.h"

namespace platform {
namespace {

using test_support::AudioBytes;
using test_support::Chunk;

class InternetReading : public testing::Test {
 protected:
  static under_test::InternetSettings Settings() {
    under_test::InternetSettings settings;
    settings.quiet_before_short_read = 200ms;
    return settings;
  }

  InternetRig rig_{Settings()};
};

TEST_F(InternetReading, FillsTheBufferHoweverTheServerSends) {
  const std::string body = AudioBytes(5000);
  rig_.server.OnAny(Script().Send(kOk).SendInPieces(body, 100, 1ms));
  const InternetHandle request = rig_.Open();
  for (std::size_t at = 0; at + 512 <= body.size(); at += 512) {
    EXPECT_EQ(rig_.ReadSomething(request, 512), body.substr(at, 512)) << at;
  }
  EXPECT_EQ(rig_.ReadSomething(request, 512), body.substr(4608)) << "what is left at the end";
  EXPECT_EQ(rig_.Read(request), "<end>") << "a clean end is a success";
}

TEST_F(InternetReading, AQuietServerGivesLessThanTheBuffer) {
  rig_.server.OnAny(Script().Send(kOk).Send("few").Hold());
  const InternetHandle request = rig_.Open();
  EXPECT_EQ(rig_.ReadSomething(request), "few");
}

TEST_F(InternetReading, OneReadWaitsForAShortSliceOnly) {
  rig_.server.OnAny(Script().Send(kOk).Hold());
  const InternetHandle request = rig_.Open();
  for (int i = 0; i < 5; ++i) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(rig_.Read(request), "<nothing>");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 15ms) << "so that a loop of reads does not spin";
    EXPECT_LE(std::chrono::steady_clock::now() - start, 2s);
  }
}

TEST_F(InternetReading, ReadingPastTheEndDoesNotSpinEither) {
  rig_.server.OnAny(Script().Send(kOk).Send("end"));
  const InternetHandle request = rig_.Open();
  EXPECT_EQ(rig_.ReadSomething(request), "end");
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 5; ++i) EXPECT_EQ(rig_.Read(request), "<end>");
  EXPECT_GE(std::chrono::steady_clock::now() - start, 75ms);
}

TEST_F(InternetReading, ACutStreamGivesItsBytesAndThenFails) {
  const std::string promised = Header("HTTP/1.1 200 OK", {"Content-Length: 1000"});
  rig_.server.On("/short", Script().Send(promised).Send("bytes"));
  rig_.server.On("/reset", Script().Send(kOk).Send("bytes").AwaitSignal("/reset").Reset());
  for (const char* target : {"/short", "/reset"}) {
    const InternetHandle request = rig_.Open(target);
    EXPECT_EQ(rig_.ReadSomething(request), "bytes") << target;
    rig_.server.Signal(target);
    EXPECT_EQ(rig_.ReadSomething(request), "<failed>") << target;
    EXPECT_EQ(rig_.Read(request), "<failed>") << target;
  }
}

TEST_F(InternetReading, ChunkedBodiesAreDecodedAndTheirTrailersAreNoHeaders) {
  const std::string header = Header("HTTP/1.1 200 OK", {"Transfer-Encoding: chunked", "Trailer: X"});
  rig_.server.OnAny(Script().Send(header).Send(Chunk("one") + Chunk("two") + "0\r\nX: late\r\n\r\n"));
  const InternetHandle request = rig_.Open();
  EXPECT_EQ(rig_.ReadSomething(request), "onetwo");
  EXPECT_EQ(rig_.Headers(request), header);
}

TEST_F(InternetReading, CompressedBodiesAreGivenAsTheyCome) {
  const std::string packed("\x1F\x8B\x08\0\0\0\0\0\0\x03\x4B\x04\0\x43\xBE\xB7\xE8\x01\0\0\0", 21);  // "a"
  rig_.server.OnAny(Script().Send(Header("HTTP/1.1 200 OK", {"Content-Encoding: gzip"})).Send(packed));
  EXPECT_EQ(rig_.ReadAll(rig_.Open(), 100), packed + "<end>");
}

TEST_F(InternetReading, AContentLengthEndsTheBody) {
  rig_.server.OnAny(Script().Send(Header("HTTP/1.0 200 OK", {"Content-Length: 3"})).Send("onemore").Hold());
  const InternetHandle request = rig_.Open();
  EXPECT_EQ(rig_.ReadSomething(request), "one");
  EXPECT_EQ(rig_.Read(request), "<end>");
}

TEST_F(InternetReading, BytesStayInOrderWhileTheServerHasToWait) {
  constexpr std::size_t kSize = 3'000'000;
  const std::string body = AudioBytes(kSize);
  rig_.server.OnAny(Script().Send(kOk).Send(body));
  const InternetHandle request = rig_.Open();
  EXPECT_TRUE(rig_.ReadAll(request, kSize, 1000) == body);
}

TEST_F(InternetReading, ALargeBufferIsNotWaitedForUntilItIsFull) {
  rig_.server.OnAny(Script().Send(kOk).Flood(AudioBytes(1024)));
  const InternetHandle request = rig_.Open();
  EXPECT_GE(rig_.ReadSomething(request, 1'000'000).size(), 32U * 1024);
}

TEST_F(InternetReading, ClosingTheHandleReleasesTheServer) {
  rig_.server.OnAny(Script().Send(kOk).Flood(AudioBytes(1024)));
  const InternetHandle request = rig_.Open();
  rig_.Read(request);
  EXPECT_TRUE(rig_.internet.InternetCloseHandle(request));
  EXPECT_TRUE(rig_.server.WaitForAllClosed(kDeadline));
}

TEST_F(InternetReading, TwoStreamsAreReadSideBySide) {
  rig_.server.On("/a", Script().Send(kOk).Send(std::string(3000, 'a')));
  rig_.server.On("/b", Script().Send(kOk).Send(std::string(3000, 'b')));
  const InternetHandle a = rig_.Open("/a");
  const InternetHandle b = rig_.Open("/b");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(rig_.ReadAll(a, 1000), std::string(1000, 'a'));
    EXPECT_EQ(rig_.ReadAll(b, 1000), std::string(1000, 'b'));
  }
}

}  // namespace
}  // namespace platform
