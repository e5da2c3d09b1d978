// The recording tool's files on this system's disk. Its rules have their tests in tests/recorder.

#include "recorder/kept_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "app/text/numbers.h"
#include "files_under_test.h"
#include "tests/support/temp_folder.h"

namespace platform {
namespace {

TEST(KeptFilesOnDisk, TwoRecordingsOfTheSameTitlesAtTheSameTimeNeverShareAFile) {
  constexpr int kTitles = 300;
  const test_support::TempFolder folder;
  const auto record = [&folder](char mark) {
    under_test::Disk disk;
    recorder::KeptFiles kept(disk.record_files, disk.files);
    for (int title = 0; title < kTitles; ++title) {
      const RecordFile file = kept.OpenBinary(folder.TextPath(), app::FormatNumber(title) + u".mp3");
      const std::string bytes(100, mark);
      kept.WriteBytes(file, std::as_bytes(std::span(bytes)));
      kept.Flush(file);
    }
  };
  std::thread other(record, 'b');
  record('a');
  other.join();
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    const std::string bytes = folder.Read(entry.path().filename().string());
    EXPECT_TRUE(bytes == std::string(100, 'a') || bytes == std::string(100, 'b')) << entry.path();
    ++files;
  }
  EXPECT_EQ(files, 2 * kTitles);
}

}  // namespace
}  // namespace platform
