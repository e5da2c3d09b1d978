#include "platform/win32/system/whole_file.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <future>
#include <string>

#include "tests/platform/win32/replaced_import.h"
#include "tests/support/temp_folder.h"

/// Where this program finds the system's function.
extern "C" decltype(&ReadFile) __imp_ReadFile;

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

/// The system's steps.
using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
constexpr Ticks kSimpleDisksStep = 2s;

Ticks Moment() {
  FILETIME now{};
  ::GetSystemTimeAsFileTime(&now);
  return Ticks((std::int64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime);
}

class WholeFileTest : public testing::Test {
 protected:
  [[nodiscard]] std::wstring Path() const { return (folder_.Path() / "a.ini").wstring(); }
  void SetWritten(Ticks time) const {
    const FILETIME written{static_cast<DWORD>(time.count()), static_cast<DWORD>(time.count() >> 32)};
    const OwnedHandle file(
        ::CreateFileW(Path().c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_NE(::SetFileTime(file.Get(), nullptr, nullptr, &written), 0);
  }
  /// Whether its state is fresh, asked for by its name or with its bytes.
  [[nodiscard]] bool IsFreshByName() const { return StateOf(Path()).second.is_fresh; }
  [[nodiscard]] bool IsFreshWithBytes() const { return ReadRegularFile(Path(), 100).state.is_fresh; }

  const test_support::TempFolder folder_;
};

TEST_F(WholeFileTest, AStateIsFreshWhileTheNextChangeMayHaveTheSameTime) {
  folder_.Write("a.ini", "x");
  // That is for a tenth of a second only, which a busy machine may miss.
  bool by_name = false;
  bool with_bytes = false;
  for (int tries = 0; tries < 100 && !(by_name && with_bytes); ++tries) {
    SetWritten(Moment());
    by_name = by_name || IsFreshByName();
    with_bytes = with_bytes || IsFreshWithBytes();
  }
  EXPECT_TRUE(by_name);
  EXPECT_TRUE(with_bytes);
}

TEST_F(WholeFileTest, AStateOfAnotherTimeIsNotFresh) {
  folder_.Write("a.ini", "x");
  for (const Ticks difference : {Ticks(-1h), Ticks(1h)}) {
    SetWritten(Moment() + difference);
    EXPECT_FALSE(IsFreshByName());
    EXPECT_FALSE(IsFreshWithBytes());
  }
}

TEST_F(WholeFileTest, ATimeThatIsAWholeStepOfASimpleDiskIsFreshForThatStep) {
  folder_.Write("a.ini", "x");
  const auto time_of_step = [] { return Moment() % kSimpleDisksStep; };
  while (time_of_step() < 300ms || time_of_step() > 1s) ::Sleep(10);
  const Ticks now = Moment();
  const Ticks whole = now - now % kSimpleDisksStep;
  SetWritten(whole);
  EXPECT_TRUE(IsFreshByName());
  SetWritten(whole + Ticks(1));
  EXPECT_FALSE(IsFreshByName()) << "no simple disk gave that time";
  SetWritten(whole - 2 * kSimpleDisksStep);
  EXPECT_FALSE(IsFreshByName());
}

TEST_F(WholeFileTest, APipeIsNoFileAndItsOtherEndIsNotWaitedFor) {
  const std::wstring name = L"\\\\.\\pipe\\funkhaus-test-" + std::to_wstring(::GetCurrentProcessId());
  OwnedHandle pipe(
      ::CreateNamedPipeW(name.c_str(), PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr));
  ASSERT_TRUE(pipe.IsOpen());
  auto read = std::async(std::launch::async, [&name] { return ReadRegularFile(name, 100).reading; });
  const bool waits = read.wait_for(10s) == std::future_status::timeout;
  pipe.Close();
  EXPECT_FALSE(waits);
  EXPECT_EQ(read.get(), ProfileReading::kUnreadable);
}

/// What is appended to a file when it is about to be read, once.
struct Growth {
  std::wstring path;
  std::string bytes;
};
Growth growth;

const auto original_read = __imp_ReadFile;

BOOL WINAPI GrowAndRead(HANDLE file, void* buffer, DWORD size, DWORD* count, OVERLAPPED* place) {
  if (!growth.bytes.empty()) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const OwnedHandle end(
        ::CreateFileW(growth.path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    std::size_t written = 0;
    EXPECT_TRUE(WriteAll(end.Get(), growth.bytes, written));
    growth.bytes.clear();
  }
  return original_read(file, buffer, size, count, place);
}

ProfileBytes ReadWhileItGrows(const std::wstring& path, std::size_t limit) {
  const test_support::ReplacedImport replaced(__imp_ReadFile, &GrowAndRead);
  return ReadRegularFile(path, limit);
}

TEST_F(WholeFileTest, AFileThatGrowsMeanwhileIsReadToItsEndButNotBeyondTheLimit) {
  folder_.Write("a.ini", "begun, ");
  const std::string end = std::string(10'000, 'x') + "ended";
  growth = {Path(), end};
  const auto read = ReadWhileItGrows(Path(), 7 + end.size());
  EXPECT_EQ(read.reading, ProfileReading::kRead);
  EXPECT_EQ(read.bytes, "begun, " + end);
  for (const std::size_t added : {std::size_t{1}, end.size()}) {
    folder_.Write("a.ini", "begun, ");
    growth = {Path(), end.substr(0, added)};
    EXPECT_EQ(ReadWhileItGrows(Path(), 7).reading, ProfileReading::kUnreadable) << added;
    EXPECT_EQ(growth.bytes, "");
  }
}

}  // namespace
}  // namespace platform::win32
