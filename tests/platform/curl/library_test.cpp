#include "platform/curl/library.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <iostream>

#include "platform/curl/curl_xml_http_request.h"
#include "platform/curl/library_ahead.h"
#include "tests/contracts/internet/internet_rig.h"
#include "tests/support/temp_folder.h"

namespace platform::curl {
namespace {

TEST(LibraryTest, IsLoadedOnceForAllThreads) {
  auto other = std::async(std::launch::async, [] { return LoadedLibrary(); });
  const Library* const library = LoadedLibrary();
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(other.get(), library);
}

/// Asks in both ways and prints what came of it; ends the process.
[[noreturn]] void AskAndReport() {
  { const LibraryAhead ahead; }
  InternetRig rig;
  rig.server.OnAny(Script().Send(kOk).Send("text"));
  std::cerr << (LoadedLibrary() == nullptr ? "no library" : "library");
  std::cerr << (rig.Open() == InternetHandle::kNone ? ", no answer" : ", answer");
  std::cerr << (rig.internet.LastFailure() == InternetFailure::kOther ? ", other" : ", not other");
  CurlXmlHttpRequests requests(rig.conversion);
  const auto request = requests.CreateObject(u"MSXML2.ServerXMLHTTP.6.0");
  const bool sent = request->Open(u"GET", Wide(rig.server.Url()), true) && request->Send();
  std::cerr << (sent ? ", sent" : ", not sent") << ", state " << request->ReadyState();
  std::cerr << (request->ResponseText().empty() ? ", no text" : ", text") << std::endl;
  std::_Exit(0);
}

TEST(LibraryDeathTest, WithoutItEveryRequestFailsAndSaysSo) {
  // A new process looks for the library here first, and finds a file that is none.
  const test_support::TempFolder folder;
  folder.Write("libcurl.so.4", "no library");
  ::setenv("LD_LIBRARY_PATH", folder.Path().c_str(), 1);
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(AskAndReport(), testing::ExitedWithCode(0),
              "no library, no answer, other, sent, state 4, no text");
  ::unsetenv("LD_LIBRARY_PATH");
}

}  // namespace
}  // namespace platform::curl
