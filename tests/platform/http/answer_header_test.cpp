#include "platform/http/answer_header.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace platform::http {
namespace {

AnswerHeader Of(std::initializer_list<std::string_view> lines) {
  AnswerHeader header;
  for (const std::string_view line : lines) EXPECT_TRUE(header.AddLine(line));
  return header;
}

TEST(AnswerHeader, IsFinalWithTheEmptyLine) {
  AnswerHeader header = Of({"HTTP/1.1 200 OK\r\n", "icy-name: X\r\n"});
  EXPECT_FALSE(header.IsFinal());
  header.AddLine("\r\n");
  EXPECT_TRUE(header.IsFinal());
  EXPECT_EQ(header.Block(), "HTTP/1.1 200 OK\r\nicy-name: X\r\n\r\n");
  EXPECT_EQ(header.StatusCode(), "200");
}

TEST(AnswerHeader, BareLineFeedsBecomeCrLf) {
  EXPECT_EQ(Of({"ICY 200 OK\n", "icy-br:128\n", "\n"}).Block(), "ICY 200 OK\r\nicy-br:128\r\n\r\n");
}

TEST(AnswerHeader, LineThatBeginsWithACrEndsTheHeader) {
  const AnswerHeader header = Of({"HTTP/1.1 200 OK\r\n", "A: b\r\n", "\rC: d\r\n"});
  EXPECT_TRUE(header.IsFinal());
  EXPECT_EQ(header.Block(), "HTTP/1.1 200 OK\r\nA: b\r\n\r\n");
}

TEST(AnswerHeader, ARedirectIsNotTheFinalAnswer) {
  AnswerHeader header = Of({"HTTP/1.1 302 Found\r\n", "location: /x\r\n", "\r\n"});
  EXPECT_FALSE(header.IsFinal());
  for (const char* line : {"HTTP/1.0 200 Fine\r\n", "A: b\r\n", "\r\n"}) header.AddLine(line);
  EXPECT_TRUE(header.IsFinal());
  EXPECT_EQ(header.Block(), "HTTP/1.0 200 Fine\r\nA: b\r\n\r\n");
}

TEST(AnswerHeader, ARedirectWithoutALocationIsFinal) {
  EXPECT_TRUE(Of({"HTTP/1.1 304 Not Modified\r\n", "\r\n"}).IsFinal());
  EXPECT_TRUE(Of({"HTTP/1.1 301 Moved\r\n", "Location:\r\n", "\r\n"}).IsFinal());
}

TEST(AnswerHeader, AnInterimAnswerIsNotTheFinalOne) {
  EXPECT_FALSE(Of({"HTTP/1.1 100 Continue\r\n", "\r\n"}).IsFinal());
}

TEST(AnswerHeader, TrailersChangeNeitherStatusNorHeader) {
  AnswerHeader header = Of({"HTTP/1.1 200 OK\r\n", "A: b\r\n", "\r\n"});
  for (const char* line : {"X: 404 not\r\n", "icy-metaint: 1\r\n", "\r\n"}) EXPECT_TRUE(header.AddLine(line));
  EXPECT_TRUE(header.IsFinal());
  EXPECT_EQ(header.StatusCode(), "200");
  EXPECT_EQ(header.Block(), "HTTP/1.1 200 OK\r\nA: b\r\n\r\n");
}

TEST(AnswerHeader, TrailersOfARedirectAreNotTheFinalAnswer) {
  AnswerHeader header = Of({"HTTP/1.1 302 Found\r\n", "Location: /x\r\n", "\r\n", "X: 200 y\r\n", "\r\n"});
  EXPECT_FALSE(header.IsFinal());
  for (const char* line : {"http/1.1 404 Gone\r\n", "\r\n"}) header.AddLine(line);
  EXPECT_TRUE(header.IsFinal());
  EXPECT_EQ(header.StatusCode(), "404");
}

TEST(AnswerHeader, AStatusLineWithoutACodeHasNone) {
  EXPECT_EQ(Of({"HTTP/1.1\r\n", "\r\n"}).StatusCode(), "");
  EXPECT_EQ(Of({"HTTP/1.1 20\r\n", "\r\n"}).StatusCode(), "");
  EXPECT_EQ(Of({"HTTP/1.1 2x0 OK\r\n", "\r\n"}).StatusCode(), "");
}

TEST(AnswerHeader, GivesTheLastValueOfAName) {
  const AnswerHeader header = Of({"ICY 200 OK\r\n", "A: 1 \r\n", "a:\t2\r\n", "AB: 3\r\n", "\r\n"});
  EXPECT_EQ(header.Value("a"), "2");
  EXPECT_EQ(header.Value("b"), "");
}

TEST(AnswerHeader, IsBounded) {
  AnswerHeader header;
  header.AddLine("HTTP/1.1 200 OK\r\n");
  std::size_t lines = 0;
  while (header.AddLine("x: " + std::string(1000, 'x') + "\r\n")) ++lines;
  EXPECT_EQ(lines, (AnswerHeader::kLimit - 17) / 1005);
}

TEST(AnswerHeader, FindsLinesByTheBeginningOfTheirName) {
  AnswerHeader header;
  for (const std::string line : {"HTTP/1.1 200 icy-x:\r\n", "Icy-Name: X\r\n", "icy-bare\r\n", "\r\n"}) {
    header.AddLine(line);
  }
  EXPECT_TRUE(header.HasNameBeginning("icy-"));
  EXPECT_TRUE(header.HasNameBeginning("ICY-NAME:"));
  EXPECT_FALSE(header.HasNameBeginning("cy-"));
  EXPECT_FALSE(header.HasNameBeginning("HTTP/")) << "the status line is no field";
  EXPECT_FALSE(header.HasNameBeginning("icy-b")) << "nor is a line without a colon";
  EXPECT_FALSE(AnswerHeader().HasNameBeginning("icy-"));
}

TEST(AnswerHeader, ALengthIsANumberAndNothingElse) {
  const auto length_of = [](const std::string& value) {
    AnswerHeader header;
    header.AddLine("HTTP/1.1 200 OK\r\n");
    header.AddLine("content-length:" + value + "\r\n");
    return header.ContentLength();
  };
  EXPECT_EQ(length_of(" 0 "), 0U);
  EXPECT_EQ(length_of("18446744073709551615"), 18446744073709551615U);
  for (const char* value : {"", "-1", "1x", "0x10", "18446744073709551616", "1, 1"})
    EXPECT_EQ(length_of(value), std::nullopt) << value;
  EXPECT_EQ(AnswerHeader().ContentLength(), std::nullopt);
}

}  // namespace
}  // namespace platform::http
