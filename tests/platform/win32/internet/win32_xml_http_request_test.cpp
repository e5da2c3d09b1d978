#include "platform/win32/internet/win32_xml_http_request.h"

#include "platform/win32/base/windows_api.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "platform/win32/internet/request_object.h"
#include "platform/win32/text/text_conversion.h"
#include "tests/platform/win32/internet/scripted_class.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;
using test_support::ScriptedAnswers;
using test_support::ScriptedClass;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr auto kUrl = u"http://h/list";
/// In which every wait ends that ends at all.
constexpr auto kDeadline = 20s;
/// How long a member that is held up stays so, should nobody end that: far longer than the short limit.
constexpr auto kHeldUp = 60s;
constexpr auto kLongLimit = 60s;
constexpr auto kShortLimit = 3s;
constexpr auto kFound = u"Content-Type: text/plain\r\n\r\n";

class ScriptedXmlHttp : public testing::Test {
 protected:
  ScriptedXmlHttp() {
    answers_->headers = kFound;
    SetBody("[playlist]");
  }
  ~ScriptedXmlHttp() override {
    request_.reset();
    gate_.set_value();
    EXPECT_TRUE(AreGone()) << "each object is released, and its thread ends";
  }
  std::unique_ptr<XmlHttpRequest> Create() { return requests_.CreateObject(ScriptedClass::kName); }
  /// One with the short limit.
  std::unique_ptr<XmlHttpRequest> CreateImpatient() { return impatient_.CreateObject(ScriptedClass::kName); }
  void SetBody(const std::string& bytes) {
    answers_->body = [bytes](VARIANT& value) { test_support::SetBytes(value, bytes); };
  }
  /// What is called waits in `member` until the test ends.
  void HoldUpIn(const std::string& member) {
    answers_->SetOnCall([member, opened = opened_, held_up = held_up_](const std::string& called) {
      if (called != member) return true;
      ++*held_up;
      opened.wait_for(kHeldUp);
      --*held_up;
      return true;
    });
  }
  static bool Until(const std::function<bool()>& holds) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!holds()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::sleep_for(1ms);
    }
    return true;
  }
  bool AreGone() {
    return Until([this] { return answers_->objects == 0; });
  }
  static bool IsCompleted(XmlHttpRequest& request) {
    return Until([&request] { return request.ReadyState() == 4; });
  }
  /// The text of a request that completes.
  Text Fetch() {
    answers_->state = 4;
    request_ = Create();
    EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
    EXPECT_TRUE(request_->Send());
    EXPECT_TRUE(IsCompleted(*request_));
    return request_->ResponseText();
  }

  std::promise<void> gate_;
  std::shared_future<void> opened_ = gate_.get_future().share();
  /// How many calls are held up.
  std::shared_ptr<std::atomic<int>> held_up_ = std::make_shared<std::atomic<int>>(0);
  std::shared_ptr<ScriptedAnswers> answers_ = std::make_shared<ScriptedAnswers>();
  ScriptedClass class_{answers_};
  Win32TextConversion conversion_;
  Win32XmlHttpRequests requests_{conversion_, kLongLimit};
  Win32XmlHttpRequests impatient_{conversion_, kShortLimit};
  std::unique_ptr<XmlHttpRequest> request_;
};

TEST_F(ScriptedXmlHttp, MakesEachCallOnceAndWithItsArguments) {
  answers_->state = 4;
  request_ = Create();
  EXPECT_TRUE(request_->SetOption(2, 13056));
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_EQ(request_->ReadyState(), 1);
  EXPECT_TRUE(request_->Send());
  EXPECT_FALSE(request_->Send()) << "once";
  EXPECT_TRUE(IsCompleted(*request_));
  EXPECT_EQ(request_->ResponseText(), u"[playlist]");
  EXPECT_TRUE(AreGone());
  EXPECT_THAT(answers_->Calls(),
              ElementsAre("setOption 2 13056", "open GET http://h/list true", "send", "abort"));
}

TEST_F(ScriptedXmlHttp, ACallThatFailsIsReported) {
  for (const std::string failing : {"setOption", "open", "send"}) {
    answers_->SetOnCall([failing](const std::string& called) { return called != failing; });
    const auto request = Create();
    EXPECT_EQ(request->SetOption(2, 13056), failing != "setOption");
    EXPECT_EQ(request->Open(u"GET", kUrl, true), failing != "open");
    EXPECT_EQ(request->Send(), failing == "setOption") << failing;
  }
  EXPECT_TRUE(AreGone());
}

TEST_F(ScriptedXmlHttp, ALateCallEndsItAndTheObjectIsReplacedByTheNextRequest) {
  for (const std::string slow : {"setOption", "open", "send"}) {
    HoldUpIn(slow);
    const auto request = CreateImpatient();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(request->SetOption(2, 13056), slow != "setOption");
    EXPECT_EQ(request->Open(u"GET", kUrl, true), slow == "send");
    EXPECT_FALSE(request->Send());
    EXPECT_GE(std::chrono::steady_clock::now() - start, kShortLimit - 100ms) << slow;
    EXPECT_GT(*held_up_, 0) << slow << " still hangs";
    EXPECT_EQ(request->ReadyState(), 0) << slow;
    EXPECT_EQ(request->ResponseText(), u"");
    answers_->SetOnCall(nullptr);
    answers_->state = 4;
    EXPECT_TRUE(request->Open(u"GET", kUrl, true)) << slow;
    EXPECT_TRUE(request->Send()) << slow;
    EXPECT_TRUE(IsCompleted(*request)) << slow;
    EXPECT_EQ(request->ResponseText(), u"[playlist]");
    answers_->state = 0;
  }
}

TEST_F(ScriptedXmlHttp, CallsThatAreSlowTogetherAreLateToo) {
  constexpr auto kSlow = 300ms;
  answers_->SetOnCall([=](const std::string& called) {
    if (called == "setOption") std::this_thread::sleep_for(kSlow);
    return true;
  });
  request_ = CreateImpatient();
  EXPECT_TRUE(request_->SetOption(2, 1));
  int in_time = 1;
  while (in_time <= kShortLimit / kSlow && request_->SetOption(2, 1)) ++in_time;
  EXPECT_LE(in_time, kShortLimit / kSlow);
  EXPECT_FALSE(request_->Send());
}

TEST_F(ScriptedXmlHttp, AFailureAndAnAbortGiveTheNextRequestAllOfItsTime) {
  // Two of them are longer than the short limit.
  constexpr auto kSlow = 1700ms;
  const auto spend_and_end = [&](const std::string& failing) {
    answers_->SetOnCall([=](const std::string& called) {
      if (called == "setOption") std::this_thread::sleep_for(kSlow);
      return called != failing;
    });
    const auto request = CreateImpatient();
    EXPECT_TRUE(request->SetOption(2, 1));
    EXPECT_EQ(request->Open(u"GET", kUrl, true), failing != "open");
    EXPECT_EQ(request->Send(), failing.empty());
    if (failing.empty()) request->Abort();
    // After an abort another object is given the option first.
    EXPECT_TRUE(failing.empty() ? request->Open(u"GET", kUrl, true) : request->SetOption(2, 1)) << failing;
  };
  for (const char* failing : {"open", "send", ""}) spend_and_end(failing);
}

TEST_F(ScriptedXmlHttp, ACallThatMeetsTheEndFailsAtOnce) {
  std::promise<void> ends;
  std::atomic<bool> is_at_its_end = false;
  answers_->SetOnCall([&, end = ends.get_future().share()](const std::string& called) {
    if (called != "responseBody") return true;
    is_at_its_end = true;
    end.wait();
    return true;
  });
  answers_->state = 4;
  const auto object = RequestObject::Start(ScriptedClass::kName);
  ASSERT_NE(object, nullptr);
  RequestObject::Clock::duration left = kLongLimit;
  EXPECT_EQ(object->Send(left), CallResult::kDone);
  EXPECT_TRUE(Until([&] { return is_at_its_end.load(); }));
  auto call = std::async(std::launch::async, [&] {
    RequestObject::Clock::duration limit = kLongLimit;
    return object->Run([](ScriptObject&) { return true; }, limit);
  });
  EXPECT_EQ(call.wait_for(50ms), std::future_status::timeout);
  ends.set_value();
  EXPECT_EQ(call.wait_for(kDeadline), std::future_status::ready);
  EXPECT_EQ(call.get(), CallResult::kFailed);
}

TEST_F(ScriptedXmlHttp, OptionsAreGivenToEachObject) {
  answers_->state = 4;
  request_ = Create();
  request_->SetOption(2, 1);
  request_->SetOption(2, 13056);
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
    EXPECT_TRUE(request_->Send());
    EXPECT_TRUE(IsCompleted(*request_));
  }
  EXPECT_TRUE(AreGone());
  EXPECT_THAT(answers_->Calls(),
              ElementsAre("setOption 2 1", "setOption 2 13056", "open GET http://h/list true", "send",
                          "abort", "setOption 2 13056", "open GET http://h/list true", "send", "abort"));
}

TEST_F(ScriptedXmlHttp, AnOptionAfterTheEndIsForTheNextRequest) {
  EXPECT_EQ(Fetch(), u"[playlist]");
  EXPECT_TRUE(request_->SetOption(2, 13056));
  EXPECT_EQ(request_->ReadyState(), 4);
  EXPECT_EQ(request_->ResponseText(), u"[playlist]");
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_EQ(request_->ResponseText(), u"");
  EXPECT_TRUE(request_->Send());
}

TEST_F(ScriptedXmlHttp, AFailureHasNotTheTextOfTheAnswerBefore) {
  EXPECT_EQ(Fetch(), u"[playlist]");
  answers_->headers = u"Content-Length: 11\r\n\r\n";
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  EXPECT_TRUE(IsCompleted(*request_));
  EXPECT_EQ(request_->ResponseText(), u"");
}

TEST_F(ScriptedXmlHttp, AskingOneThatWasNotSentDoesNotSpin) {
  request_ = Create();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 10; ++i) EXPECT_EQ(request_->ReadyState(), 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 45ms);
}

TEST_F(ScriptedXmlHttp, AbortEndsItAtEveryMoment) {
  answers_->state = 4;
  for (int calls = 0; calls < 4; ++calls) {
    request_ = Create();
    if (calls > 0) request_->SetOption(2, 13056);
    if (calls > 1) request_->Open(u"GET", kUrl, true);
    if (calls > 2) request_->Send();
    request_->Abort();
    EXPECT_EQ(request_->ReadyState(), 0) << calls;
    EXPECT_TRUE(AreGone()) << calls;
    EXPECT_FALSE(request_->Send()) << calls;
    EXPECT_TRUE(request_->Open(u"GET", kUrl, true)) << calls;
    EXPECT_TRUE(request_->Send()) << calls;
    EXPECT_TRUE(IsCompleted(*request_)) << calls;
  }
}

TEST_F(ScriptedXmlHttp, AbortAndTheEndDoNotWaitForAnObjectThatHangs) {
  HoldUpIn("readyState");
  request_ = Create();
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  ASSERT_TRUE(Until([this] { return *held_up_ == 1; }));
  request_->Abort();
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  ASSERT_TRUE(Until([this] { return *held_up_ == 2; }));
  request_.reset();
  EXPECT_EQ(*held_up_, 2) << "they still hang";
}

TEST_F(ScriptedXmlHttp, AnOptionThatIsLateWhileTheBodyArrivesEndsTheRequest) {
  answers_->state = 3;
  request_ = CreateImpatient();
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  ASSERT_TRUE(Until([this] { return request_->ReadyState() == 3; }));
  HoldUpIn("setOption");
  EXPECT_FALSE(request_->SetOption(2, 13056));
  EXPECT_EQ(request_->ReadyState(), 0);
}

TEST_F(ScriptedXmlHttp, LettersOfAHeaderAreNoLineEnds) {
  answers_->headers = u"X: a\u010Aicy-name: b\u010D\r\n\r\n";
  EXPECT_EQ(Fetch(), u"[playlist]");
  answers_->headers = u"X: a\r\nicy-name: b\r\n\r\n";
  EXPECT_EQ(Fetch(), u"");
}

TEST_F(ScriptedXmlHttp, AHeaderThatIsTooLongIsAFailure) {
  answers_->headers = u"X: " + Text(256 * 1024, u'x') + u"\r\n\r\n";
  EXPECT_EQ(Fetch(), u"");
}

TEST_F(ScriptedXmlHttp, ABodyThatIsShorterThanItsLengthIsAFailure) {
  answers_->headers = u"Content-Length: 11\r\n\r\n";
  EXPECT_EQ(Fetch(), u"");
  answers_->headers = u"Content-Length: 10\r\n\r\n";
  EXPECT_EQ(Fetch(), u"[playlist]");
}

TEST_F(ScriptedXmlHttp, ABodyThatIsNoArrayOfBytesIsEmpty) {
  answers_->body = [](VARIANT& value) {
    V_VT(&value) = VT_ARRAY | VT_UI1;
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    V_ARRAY(&value) = ::SafeArrayCreate(VT_UI1, 2, bounds);
  };
  EXPECT_EQ(Fetch(), u"");
  answers_->body = [](VARIANT& value) {
    V_VT(&value) = VT_ARRAY | VT_UI1;
    V_ARRAY(&value) = nullptr;
  };
  EXPECT_EQ(Fetch(), u"");
  answers_->body = nullptr;
  EXPECT_EQ(Fetch(), u"");
  SetBody("");
  EXPECT_EQ(Fetch(), u"");
}

/// Of no use as a body.
class CountedObject final : public ::IUnknown {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*id*/, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  std::atomic<ULONG> references = 0;
};

TEST_F(ScriptedXmlHttp, AValueThatIsAnObjectIsReleased) {
  CountedObject object;
  std::atomic<int> given = 0;
  answers_->body = [&](VARIANT& value) {
    object.AddRef();
    ++given;
    V_VT(&value) = VT_UNKNOWN;
    V_UNKNOWN(&value) = &object;
  };
  EXPECT_EQ(Fetch(), u"");
  EXPECT_TRUE(AreGone());
  EXPECT_GT(given, 0);
  EXPECT_EQ(object.references, 0U);
}

TEST_F(ScriptedXmlHttp, AnArrayMayBeginAnywhere) {
  answers_->body = [](VARIANT& value) {
    SAFEARRAYBOUND bound = {3, 7};
    V_VT(&value) = VT_ARRAY | VT_UI1;
    V_ARRAY(&value) = ::SafeArrayCreate(VT_UI1, 1, &bound);
    BYTE byte = 'a';
    for (LONG at = 7; at < 10; ++at, ++byte) ::SafeArrayPutElement(V_ARRAY(&value), &at, &byte);
  };
  EXPECT_EQ(Fetch(), u"abc");
}

/// Completes the request when its message is dispatched.
LRESULT CALLBACK CompleteOnMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message != WM_APP) return ::DefWindowProcW(window, message, w, l);
  reinterpret_cast<ScriptedAnswers*>(l)->state = 4;
  return 0;
}

TEST_F(ScriptedXmlHttp, TheMessagesThatAnObjectNeedsArriveThere) {
  answers_->SetOnCall([answers = answers_.get()](const std::string& called) {
    if (called != "send") return true;
    const HWND window =
        ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CompleteOnMessage));
    return ::PostMessageW(window, WM_APP, 0, reinterpret_cast<LPARAM>(answers)) != FALSE;
  });
  request_ = Create();
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  EXPECT_TRUE(IsCompleted(*request_));
}

TEST_F(ScriptedXmlHttp, AStateThatIsNoneIsTakenToTheNearest) {
  answers_->state = 0;
  request_ = Create();
  EXPECT_TRUE(request_->Open(u"GET", kUrl, true));
  EXPECT_TRUE(request_->Send());
  EXPECT_EQ(request_->ReadyState(), 1);
  EXPECT_EQ(request_->ReadyState(), 1);
  answers_->state = 9;
  EXPECT_TRUE(IsCompleted(*request_));
}

}  // namespace
}  // namespace platform::win32
