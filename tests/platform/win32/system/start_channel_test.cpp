#include "platform/win32/system/start_channel.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::win32 {
namespace {

/// Any program may send a message to the window that listens.
class Win32StartListenerTest : public testing::Test {
 protected:
  Win32StartListenerTest() {
    listener.Arrived = [this] {
      ++arrivals;
      if (!takes) return;
      while (const auto request = listener.Next()) arguments.push_back(request->argument);
      listener.Accept();
    };
  }
  LRESULT Send(ULONG_PTR mark, std::string bytes) {
    HWND const window = ::FindWindowExW(HWND_MESSAGE, nullptr, nullptr, kName);
    EXPECT_NE(window, nullptr);
    COPYDATASTRUCT data{mark, static_cast<DWORD>(bytes.size()), bytes.data()};
    return ::SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
  }

  static constexpr const wchar_t* kName = L"StartListenerTest";
  static constexpr ULONG_PTR kMark = 0x46505354;
  StartListener listener{kName};
  bool takes = true;
  int arrivals = 0;
  std::vector<std::string> arguments;
};

TEST_F(Win32StartListenerTest, MessageOfAnotherProgramIsRefused) {
  EXPECT_EQ(Send(kMark + 1, "a"), FALSE);
  EXPECT_EQ(arrivals, 0);
  EXPECT_EQ(Send(kMark, "a"), TRUE);
  EXPECT_EQ(arguments, std::vector<std::string>{"a"});
}

TEST_F(Win32StartListenerTest, RequestThatIsTooLongIsRefused) {
  EXPECT_EQ(Send(kMark, std::string(StartListener::kLongestRequest + 1, 'a')), FALSE);
  EXPECT_EQ(arrivals, 0);
  EXPECT_EQ(Send(kMark, std::string(StartListener::kLongestRequest, 'a')), TRUE);
  EXPECT_EQ(arrivals, 1);
}

TEST_F(Win32StartListenerTest, AcceptanceIsForTheRequestThatIsThere) {
  takes = false;
  listener.Accept();
  EXPECT_EQ(Send(kMark, "a"), FALSE);
}

TEST_F(Win32StartListenerTest, RequestThatNobodyTookIsGone) {
  takes = false;
  EXPECT_EQ(Send(kMark, "a"), FALSE);
  EXPECT_EQ(arrivals, 1);
  EXPECT_FALSE(listener.Next());
}

}  // namespace
}  // namespace platform::win32
