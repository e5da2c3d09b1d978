#include "platform/win32/system/whole_file.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <future>
#include <string>
#include <thread>

#include "tests/support/temp_folder.h"

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
  /// Whether its state is fresh, asked for by its name and with its bytes.
  [[nodiscard]] bool IsFresh() const {
    const bool by_name = StateOf(Path()).second.is_fresh;
    EXPECT_EQ(ReadRegularFile(Path(), 100).state.is_fresh, by_name);
    return by_name;
  }

  const test_support::TempFolder folder_;
};

TEST_F(WholeFileTest, AStateIsFreshWhileTheNextChangeMayHaveTheSameTime) {
  folder_.Write("a.ini", "x");
  EXPECT_TRUE(IsFresh());
  SetWritten(Moment() - 1h);
  EXPECT_FALSE(IsFresh());
  SetWritten(Moment() + 1h);
  EXPECT_FALSE(IsFresh()) << "by another machine's clock";
}

TEST_F(WholeFileTest, ATimeThatIsAWholeStepOfASimpleDiskIsFreshForThatStep) {
  folder_.Write("a.ini", "x");
  const Ticks now = Moment();
  const Ticks whole = now - now % kSimpleDisksStep;
  SetWritten(whole);
  EXPECT_TRUE(IsFresh());
  SetWritten(whole - 2 * kSimpleDisksStep);
  EXPECT_FALSE(IsFresh());
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

/// Appends `block` again and again, in one step each, while it lives.
class Growth {
 public:
  Growth(const std::wstring& path, const std::string& block) : thread_([=, this] { Grow(path, block); }) {}
  ~Growth() {
    ends_ = true;
    thread_.join();
  }
  Growth(const Growth&) = delete;
  Growth& operator=(const Growth&) = delete;

 private:
  void Grow(const std::wstring& path, const std::string& block) const {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const OwnedHandle file(
        ::CreateFileW(path.c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    std::size_t written = 0;
    while (!ends_ && WriteAll(file.Get(), block, written)) continue;
  }

  std::atomic<bool> ends_ = false;
  std::thread thread_;
};

TEST_F(WholeFileTest, AFileThatGrowsMeanwhileIsReadToItsEndButNotBeyondTheLimit) {
  constexpr std::size_t kBlock = 64;
  constexpr int kRounds = 1500;
  folder_.Write("a.ini", "");
  const Growth growth(Path(), std::string(kBlock, 'x'));
  int read = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::size_t size = std::filesystem::file_size(Path());
    const ProfileBytes exactly = ReadRegularFile(Path(), size);
    EXPECT_LE(exactly.bytes.size(), size);
    const ProfileBytes all = ReadRegularFile(Path(), size + 1'000'000);
    EXPECT_EQ(all.bytes.size() % kBlock, 0U) << "cut where it ended when the reading began";
    if (all.reading == ProfileReading::kRead) ++read;
    if (size > 100'000) std::filesystem::resize_file(Path(), 0);
  }
  EXPECT_GT(read, 0);
}

}  // namespace
}  // namespace platform::win32
