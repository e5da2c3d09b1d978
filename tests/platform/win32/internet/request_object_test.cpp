#include "platform/win32/internet/request_object.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

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

}  // namespace
}  // namespace platform::win32
