#include "platform/disk/buffered_record_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <string>

namespace platform::disk {
namespace {

constexpr std::size_t kBuffer = 64 * 1024;

/// What a test sees of a recording, and says to it.
struct FakeRecording {
  std::string bytes;
  std::size_t room = std::numeric_limits<std::size_t>::max();
  bool has_name = true;
  bool is_closed = false;
};

class FakeOpenRecording final : public OpenRecording {
 public:
  explicit FakeOpenRecording(FakeRecording& recording) : recording_(recording) {}
  ~FakeOpenRecording() override { recording_.is_closed = true; }
  bool Write(std::string_view bytes, std::size_t& written) override {
    const std::size_t taken = std::min(bytes.size(), recording_.room);
    recording_.bytes += bytes.substr(0, taken);
    recording_.room -= taken;
    written += taken;
    return taken == bytes.size();
  }
  [[nodiscard]] bool HasName() const override { return recording_.has_name; }

 private:
  FakeRecording& recording_;
};

class FakeRecordFiles final : public BufferedRecordFiles {
 public:
  RecordFile Open(FakeRecording& recording) { return Keep(std::make_unique<FakeOpenRecording>(recording)); }
  RecordFile OpenBinary(const Text&, const Text&) override { return RecordFile::kNone; }
  NewRecordFile CreateBinary(const Text&, const Text&) override { return {}; }
  std::size_t LongestFileName(const Text&) override { return 255; }
};

class BufferedRecordFilesTest : public testing::Test {
 protected:
  bool Write(RecordFile file, std::string_view bytes) {
    return files->WriteBytes(file, std::as_bytes(std::span(bytes)));
  }

  FakeRecording first;
  FakeRecording second;
  std::unique_ptr<FakeRecordFiles> files = std::make_unique<FakeRecordFiles>();
};

TEST_F(BufferedRecordFilesTest, EachRecordingGetsItsOwnBytes) {
  const RecordFile one = files->Open(first);
  const RecordFile other = files->Open(second);
  EXPECT_TRUE(Write(one, "ab"));
  EXPECT_TRUE(Write(other, "x"));
  EXPECT_TRUE(Write(one, "c"));
  EXPECT_EQ(first.bytes, "");
  EXPECT_TRUE(files->Flush(one));
  EXPECT_EQ(first.bytes, "abc");
  files->Close(other);
  EXPECT_EQ(second.bytes, "x");
  EXPECT_TRUE(second.is_closed);
  EXPECT_FALSE(first.is_closed);
}

TEST_F(BufferedRecordFilesTest, WhatIsBufferedIsWrittenAndClosedAtTheEnd) {
  EXPECT_TRUE(Write(files->Open(first), "abc"));
  files.reset();
  EXPECT_EQ(first.bytes, "abc");
  EXPECT_TRUE(first.is_closed);
}

TEST_F(BufferedRecordFilesTest, AFullDiskTakesNoMoreAndKeepsTheOrder) {
  first.room = 3;
  const RecordFile file = files->Open(first);
  EXPECT_TRUE(Write(file, std::string(kBuffer, 'a')));
  EXPECT_FALSE(Write(file, "bbbb"));
  EXPECT_FALSE(files->Flush(file));
  EXPECT_EQ(first.bytes, "aaa");
  first.room = kBuffer;
  EXPECT_TRUE(Write(file, "cc"));
  EXPECT_TRUE(files->Flush(file));
  EXPECT_EQ(first.bytes, std::string(kBuffer, 'a') + "cc");
}

TEST_F(BufferedRecordFilesTest, AFileThatIsGoneIsReportedByFlush) {
  const RecordFile file = files->Open(first);
  EXPECT_TRUE(files->Flush(file));
  first.has_name = false;
  EXPECT_FALSE(files->Flush(file));
}

TEST_F(BufferedRecordFilesTest, NoRecordingAndAClosedOneTakeNothing) {
  const RecordFile file = files->Open(first);
  files->Close(file);
  files->Close(file);
  files->Close(RecordFile::kNone);
  for (const RecordFile none : {file, RecordFile::kNone}) {
    EXPECT_FALSE(Write(none, "a"));
    EXPECT_FALSE(files->Flush(none));
  }
  EXPECT_NE(files->Open(second), file);
}

}  // namespace
}  // namespace platform::disk
