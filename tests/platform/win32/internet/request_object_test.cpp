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
  for (int refused = 0; refused < RequestObject::kMostThreads; ++refused)
    EXPECT_EQ(RequestObject::Start(kClass), nullptr) << "and takes no place";
  for (const auto& each : objects) each->End();
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (!object && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::yield();
    object = RequestObject::Start(kClass);
  }
  ASSERT_NE(object, nullptr);
  object->End();
}

CallResult RunSoon(RequestObject& object, const RequestObject::Task& task) {
  RequestObject::Clock::duration left = 10s;
  return object.Run(task, left);
}

TEST(RequestObject, AClassThatCannotBeMadeFailsInEveryCall) {
  const auto object = RequestObject::Start(u"No.Such.Class");
  ASSERT_NE(object, nullptr);
  const auto open = [](ScriptObject& script) {
    return script.Call(u"open", {Text(u"GET"), Text(u"http://h/"), true}).has_value();
  };
  EXPECT_EQ(RunSoon(*object, open), CallResult::kFailed);
  RequestObject::Clock::duration left = 10s;
  EXPECT_EQ(object->Send(left), CallResult::kFailed);
  object->End();
}

TEST(RequestObject, AMemberThatDoesNotExistFails) {
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  const auto call = [&object](const Text& name) {
    return RunSoon(*object, [name](ScriptObject& script) { return script.Call(name).has_value(); });
  };
  EXPECT_EQ(call(u"noSuchMember"), CallResult::kFailed);
  EXPECT_EQ(call(u"open"), CallResult::kFailed) << "without its arguments";
  const auto has_state = [](ScriptObject& script) {
    const auto state = script.Get(u"readyState");
    return state && *state == ScriptValue(std::int32_t{0});
  };
  EXPECT_EQ(RunSoon(*object, has_state), CallResult::kDone);
  object->End();
}

TEST(RequestObject, CallsThatAreLateAreWaitedForOnceAndEndTheObject) {
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  const auto gate = std::make_shared<std::promise<void>>();
  const auto has_run = std::make_shared<std::atomic<bool>>(false);
  const auto has_started = std::make_shared<std::promise<void>>();
  RequestObject::Clock::duration left = 300ms;
  const auto late = object->Run(
      [gate, has_started](ScriptObject&) {
        has_started->set_value();
        gate->get_future().wait();
        return true;
      },
      left);
  EXPECT_EQ(late, CallResult::kLate);
  EXPECT_EQ(left, 0s);
  const auto next = [has_run](ScriptObject&) { return *has_run = true; };
  EXPECT_EQ(RunSoon(*object, next), CallResult::kFailed) << "the object has ended: there is no wait";
  EXPECT_EQ(has_started->get_future().wait_for(10s), std::future_status::ready);
  gate->set_value();
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  while (object.use_count() > 1 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  EXPECT_EQ(object.use_count(), 1) << "the thread's";
  EXPECT_FALSE(*has_run) << "for nobody waits for it";
}

TEST(RequestObject, ACallTakesItsTimeFromWhatIsLeft) {
  const auto object = RequestObject::Start(kClass);
  ASSERT_NE(object, nullptr);
  RequestObject::Clock::duration left = 10s;
  const auto slow = [](ScriptObject&) {
    std::this_thread::sleep_for(50ms);
    return true;
  };
  EXPECT_EQ(object->Run(slow, left), CallResult::kDone);
  EXPECT_LE(left, 9950ms);
  EXPECT_GT(left, 0s);
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
  const auto open = [url](ScriptObject& script) {
    return script.Call(u"open", {Text(u"GET"), url, true}).has_value();
  };
  EXPECT_EQ(RunSoon(*object, open), CallResult::kDone);
  RequestObject::Clock::duration left = 10s;
  EXPECT_EQ(object->Send(left), CallResult::kDone);
  const auto deadline = std::chrono::steady_clock::now() + 10s;
  RequestProgress progress;
  while (progress.state != kCompleted && std::chrono::steady_clock::now() < deadline)
    progress = object->Progress(1h);
  EXPECT_LT(std::chrono::steady_clock::now(), deadline) << "news end the wait";
  EXPECT_TRUE(progress.has_body);
  EXPECT_TRUE(progress.body == "a" || progress.body == packed);
  object->End();
}

}  // namespace
}  // namespace platform::win32
