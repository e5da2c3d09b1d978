// The recording tool as the player starts it.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "platform/win32/system/environment.h"
#include "platform/win32/system/shell.h"
#include "tests/programs/windows/program_process.h"
#include "tests/support/remote/remote_servers.h"

namespace {

using namespace std::chrono_literals;
using platform::Text;

constexpr auto kStartLimit = 30s;

/// Closes the tool's window, as its user does, once there is one, and waits for the tool's end.
bool CloseTool() {
  const auto deadline = std::chrono::steady_clock::now() + kStartLimit;
  while (std::chrono::steady_clock::now() < deadline) {
    DWORD id = 0;
    const HWND window = ::FindWindowW(nullptr, L"OZRecordFunkhaus");
    if (window == nullptr || ::GetWindowThreadProcessId(window, &id) == 0) {
      ::SleepEx(20, FALSE);
      continue;
    }
    const HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, id);
    ::PostMessageW(window, WM_CLOSE, 0, 0);
    const bool ended = ::WaitForSingleObject(process, 20'000) == WAIT_OBJECT_0;
    ::CloseHandle(process);
    return ended;
  }
  return false;
}

/// A path without the system's own ways to write a blank, a mark and a backslash.
std::string Plain(std::string path) {
  for (const auto& [written, meant] : {std::pair("%20", ' '), std::pair("%22", '"'), std::pair("\\", '/')}) {
    const std::string_view code = written;
    for (std::size_t at = path.find(code); at != std::string::npos; at = path.find(code, at + 1))
      path.replace(at, code.size(), 1, meant);
  }
  return path;
}

class RecordingTool : public testing::Test {
 protected:
  void Start(const std::string& link) {
    const Text program = platform::win32::Win32Environment().ProgramFolder() + u"\\OZRecordFunkhaus.exe";
    platform::win32::Win32Shell shell;
    ASSERT_TRUE(shell.ShellExecuteW(0, u"", program, Text(link.begin(), link.end()), u"", SW_SHOWNORMAL));
  }

  test_support::RemoteIcyServer server_;
};

TEST_F(RecordingTool, TakesTheWholeCommandLineAsItsLink) {
  for (const std::string target : {"/plain", "/a  b", "/a\"b c\"", "/back\\\\\"slash \\"}) {
    const std::size_t before = server_.Requests().size();
    Start(server_.Url(target));
    EXPECT_TRUE(server_.WaitForRequests(before + 1, kStartLimit)) << target;
    EXPECT_TRUE(CloseTool()) << target;
    const auto requests = server_.Requests();
    ASSERT_GT(requests.size(), before) << target;
    EXPECT_EQ(Plain(requests[before].target), Plain(target));
  }
}

TEST_F(RecordingTool, ShowsInABoxHowItIsCalled) {
  const program_test::ProgramProcess help(L"OZRecordFunkhaus.exe", L"--help", L"C:\\");
  EXPECT_EQ(program_test::ShownIn(help.Box()), L"OZRecordFunkhaus");
  EXPECT_TRUE(help.AnswerBox().starts_with(L"Aufruf: "));
  EXPECT_EQ(help.ExitCode(), 0U);
}

TEST_F(RecordingTool, WithoutALinkItAsksNobody) {
  Start("");
  EXPECT_TRUE(CloseTool());
  EXPECT_EQ(server_.Connections(), 0);
}

}  // namespace
