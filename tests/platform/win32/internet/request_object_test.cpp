#include "platform/win32/internet/request_object.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "tests/contracts/internet/internet_rig.h"

namespace platform::win32 {
namespace {

constexpr auto kClass = u"MSXML2.ServerXMLHTTP.6.0";

TEST(RequestObject, ThereAreNoMoreThreadsThanAllowedAndAgainSomeLater) {
  std::vector<std::shared_ptr<RequestObject>> objects;
  auto object = RequestObject::Start(kClass);
  for (int started = 0; object && started <= RequestObject::kMostThreads; ++started) {
    objects.push_back(std::move(object));
    object = RequestObject::Start(kClass);
  }
  EXPECT_EQ(object, nullptr);
  EXPECT_GT(objects.size(), RequestObject::kMostThreads / 2U);
  for (const auto& each : objects) each->End();
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!object && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
    object = RequestObject::Start(kClass);
  }
  ASSERT_NE(object, nullptr);
  object->End();
}

TEST(RequestObject, AClassThatCannotBeMadeFailsInEveryCall) {
  const auto object = RequestObject::Start(u"No.Such.Class");
  ASSERT_NE(object, nullptr);
  const auto open = [](ScriptObject& script) {
    return script.Call(u"open", {Text(u"GET"), Text(u"http://h/"), true}).has_value();
  };
  EXPECT_FALSE(object->Run(open));
  EXPECT_FALSE(object->Send());
  object->End();
}

TEST(RequestObject, AMemberThatDoesNotExistFails) {
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  EXPECT_FALSE(object->Run([](ScriptObject& script) { return script.Call(u"noSuchMember").has_value(); }));
  EXPECT_FALSE(object->Run([](ScriptObject& script) { return script.Call(u"open").has_value(); }))
      << "without its arguments";
  EXPECT_TRUE(object->Run([](ScriptObject& script) {
    const auto state = script.Get(u"readyState");
    return state && *state == ScriptValue(std::int32_t{0});
  }));
  object->End();
}

TEST(RequestObject, ATaskThatIsLateIsNotWaitedFor) {
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  const auto finished = std::make_shared<std::atomic<bool>>(false);
  const auto gate = std::make_shared<std::promise<void>>();
  EXPECT_FALSE(object->Run([gate, finished](ScriptObject&) {
    gate->get_future().wait();
    *finished = true;
    return true;
  }));
  EXPECT_FALSE(*finished);
  gate->set_value();
  EXPECT_TRUE(object->Run([](ScriptObject&) { return true; })) << "in its turn";
  EXPECT_TRUE(*finished);
  object->End();
}

TEST(RequestObject, APackedBodyMayBeShorterThanItsLength) {
  under_test::IcyServer server;
  const std::string packed("\x1F\x8B\x08\0\0\0\0\0\0\x03\x4B\x04\0\x43\xBE\xB7\xE8\x01\0\0\0", 21);  // "a"
  server.OnAny(
      Script().Send(Header("HTTP/1.1 200 OK", {"Content-Encoding: gzip", "Content-Length: 21"}) + packed));
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  const Text url = platform::Wide(server.Url());
  EXPECT_TRUE(object->Run([url](ScriptObject& script) {
    return script.Call(u"open", {Text(u"GET"), url, true}).has_value();
  }));
  EXPECT_TRUE(object->Send());
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  RequestProgress progress;
  while (progress.state != kCompleted && std::chrono::steady_clock::now() < deadline)
    progress = object->Progress(5ms);
  EXPECT_TRUE(progress.has_body);
  EXPECT_TRUE(progress.body == "a" || progress.body == packed);
  object->End();
}

}  // namespace
}  // namespace platform::win32
