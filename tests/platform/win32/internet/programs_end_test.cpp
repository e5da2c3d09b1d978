// How a program ends while the system cannot release what it was asked for.

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/win32/internet/request_object.h"
#include "platform/win32/internet/request_thread.h"
#include "platform/win32/internet/web_exchange.h"
#include "platform/win32/internet/win32_xml_http_request.h"
#include "tests/contracts/internet/internet_rig.h"

namespace platform::win32 {
namespace {

constexpr const char* kAddressOfSilence = "FUNKHAUS_SILENT_ADDRESS";

/// In the program that ends: as many requests as there can be, all given up while the server is silent.
void AskAndGiveUp(const std::string& address) {
  http::ExchangeOptions options;
  options.address = address;
  std::vector<std::unique_ptr<WebExchange>> exchanges;
  for (int i = 0; i < kMostRequests; ++i) exchanges.push_back(std::make_unique<WebExchange>(options));
  Win32TextConversion conversion;
  Win32XmlHttpRequests requests(conversion);
  std::vector<std::unique_ptr<XmlHttpRequest>> playlists;
  for (int i = 0; i < RequestObject::kMostThreads; ++i) {
    playlists.push_back(requests.CreateObject(u"MSXML2.ServerXMLHTTP.6.0"));
    playlists.back()->Open(u"GET", platform::Wide(address), true);
    playlists.back()->Send();
  }
  const auto deadline = std::chrono::steady_clock::now() + kDeadline;
  for (const auto& exchange : exchanges) {
    while (!exchange->AnswerOwedFor() && std::chrono::steady_clock::now() < deadline) exchange->Work(10ms);
    EXPECT_TRUE(exchange->AnswerOwedFor());
  }
}

TEST(ProgramsEnd, IsNotHeldUpBySilentServers) {
  if (const char* const address = std::getenv(kAddressOfSilence); address != nullptr)
    return AskAndGiveUp(address);
  under_test::IcyServer server;
  server.OnAny(Script().Hold());
  ::SetEnvironmentVariableA(kAddressOfSilence, server.Url().c_str());
  std::wstring program(MAX_PATH, L'\0');
  program.resize(::GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
  std::wstring line = L"\"" + program + L"\" --gtest_filter=ProgramsEnd.IsNotHeldUpBySilentServers";
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(
      ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process));
  ::SetEnvironmentVariableA(kAddressOfSilence, nullptr);
  EXPECT_TRUE(server.WaitForRequests(kMostRequests, 2 * kDeadline));
  EXPECT_EQ(::WaitForSingleObject(process.hProcess, 30'000), WAIT_OBJECT_0) << "it has ended";
  DWORD result = 1;
  ::GetExitCodeProcess(process.hProcess, &result);
  EXPECT_EQ(result, 0U);
  ::TerminateProcess(process.hProcess, 1);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
}

}  // namespace
}  // namespace platform::win32
