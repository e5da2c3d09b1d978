#include "platform/win32/media/shutdown_queue.h"

#include "platform/win32/base/windows_api.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "platform/win32/base/com_pointer.h"
#include "ports/media_interfaces.h"
#include "tests/platform/win32/media/slot_object.h"

namespace platform::win32 {
namespace {

using namespace std::chrono_literals;

/// What was shut down, in its order, and on which thread the last of it.
struct ShutdownNotes {
  std::string order;
  std::thread::id thread;
};

HRESULT STDMETHODCALLTYPE NoteShutdown(SlotObject* self) {
  auto& notes = *static_cast<ShutdownNotes*>(self->pointer);
  notes.order.append(self->text.begin(), self->text.end());
  notes.thread = std::this_thread::get_id();
  return S_OK;
}

struct ClosingSession : testing::Test {
  ClosingSession() {
    source.pointer = session.pointer = &notes;
    source.text = L"source ";
    session.text = L"session ";
    source.Answer(static_cast<std::size_t>(IMFMediaSource::Shutdown.slot), &NoteShutdown);
    session.Answer(static_cast<std::size_t>(IMFMediaSession::Shutdown.slot), &NoteShutdown);
  }
  void AddBoth() {
    queue.Add(watch, {ComPointer<::IUnknown>(source.Reference()), Interface::kMediaSource});
    queue.Add(watch, {ComPointer<::IUnknown>(session.Reference()), Interface::kMediaSession});
  }
  ShutdownNotes notes;
  SlotObject source;
  SlotObject session;
  const std::shared_ptr<SessionWatch> watch = std::make_shared<SessionWatch>();
  ShutdownQueue queue;
};

TEST_F(ClosingSession, IsNotShutDownBeforeItHasClosed) {
  AddBoth();
  queue.Step(ShutdownQueue::Clock::now() + 1h);
  EXPECT_EQ(notes.order, "");
  EXPECT_EQ(source.references, 1);
  EXPECT_EQ(session.references, 1);
}

// Its source may still be stopping when the session reports that it has closed.
TEST_F(ClosingSession, IsShutDownOnceItHasRestedForAMoment) {
  AddBoth();
  watch->Closed();
  EXPECT_EQ(notes.order, "");
  queue.Step(*watch->ClosedAt() + ShutdownQueue::kRest - 1ns);
  EXPECT_EQ(notes.order, "");
  const auto rested = *watch->ClosedAt() + ShutdownQueue::kRest;
  queue.Step(rested);
  EXPECT_EQ(notes.order, "session ");
  queue.Step(rested + ShutdownQueue::kRest - 1ns);
  EXPECT_EQ(notes.order, "session ");
  queue.Step(rested + ShutdownQueue::kRest);
  EXPECT_EQ(notes.order, "session source ");
  EXPECT_EQ(source.references + session.references, 0);
  queue.Step(*watch->ClosedAt() + 1h);
  EXPECT_EQ(notes.order, "session source ");
}

// The caller shuts the source down first, and what it does before it shuts the session down may be a step.
TEST_F(ClosingSession, IsShutDownBeforeItsSourceHoweverLateTheyAreAdded) {
  queue.Add(watch);
  watch->Closed();
  const auto late = *watch->ClosedAt() + 1h;
  queue.Step(late);
  auto before = ShutdownQueue::Clock::now();
  for (; before < *watch->ClosedAt() + ShutdownQueue::kRest; before = ShutdownQueue::Clock::now())
    std::this_thread::sleep_for(1ms);
  queue.Add(watch, {ComPointer<::IUnknown>(source.Reference()), Interface::kMediaSource});
  queue.Step(before);
  EXPECT_EQ(notes.order, "");
  queue.Add(watch, {ComPointer<::IUnknown>(session.Reference()), Interface::kMediaSession});
  queue.Step(before);
  EXPECT_EQ(notes.order, "");
  EXPECT_TRUE(queue.Finish(0ms));
  EXPECT_EQ(notes.order, "session source ");
}

TEST_F(ClosingSession, IsShutDownOnTheThreadThatAsks) {
  AddBoth();
  std::thread([this] { watch->Closed(); }).join();
  EXPECT_EQ(notes.order, "");
  EXPECT_TRUE(queue.Finish(0ms));
  EXPECT_EQ(notes.order, "session source ");
  EXPECT_EQ(notes.thread, std::this_thread::get_id());
}

TEST_F(ClosingSession, IsWaitedForAtTheEnd) {
  AddBoth();
  auto closing = std::async(std::launch::async, [this] { watch->Closed(); });
  EXPECT_TRUE(queue.Finish(30s));
  EXPECT_EQ(notes.order, "session source ");
  EXPECT_GE(ShutdownQueue::Clock::now(), *watch->ClosedAt() + ShutdownQueue::kRest);
  closing.get();
}

TEST_F(ClosingSession, IsNotShutDownWhenItDoesNotClose) {
  AddBoth();
  EXPECT_FALSE(queue.Finish(1ms));
  EXPECT_EQ(notes.order, "");
}

TEST_F(ClosingSession, IsWaitedForWithoutAnyObject) {
  queue.Add(watch);
  EXPECT_FALSE(queue.Finish(1ms));
  watch->Closed();
  EXPECT_TRUE(queue.Finish(0ms));
}

/// The same with reads that end.
struct ReadingSession : ClosingSession {
  ReadingSession() {
    AddBoth();
    queue.Add(watch, [this] { notes.order += "reads "; });
    added = ShutdownQueue::Clock::now();
  }
  ShutdownQueue::Clock::time_point added;
};

// A source that waits for a server does not stop, so its session does not close.
TEST_F(ReadingSession, ReadsOnUntilItHasClosedOrCannot) {
  queue.Step(added);
  EXPECT_EQ(notes.order, "");
  queue.Step(added + ShutdownQueue::kReadsEnd);
  EXPECT_EQ(notes.order, "reads ");
  queue.Step(added + 1h);
  EXPECT_EQ(notes.order, "reads ");
  watch->Closed();
  queue.Step(added + 1h + ShutdownQueue::kRest);
  EXPECT_EQ(notes.order, "reads session ");
}

TEST_F(ReadingSession, RestsFromTheEndOfItsReads) {
  watch->Closed();
  const auto late = *watch->ClosedAt() + ShutdownQueue::kRest;
  queue.Step(late);
  EXPECT_EQ(notes.order, "reads ");
  queue.Step(late + ShutdownQueue::kRest - 1ns);
  EXPECT_EQ(notes.order, "reads ");
  queue.Step(late + ShutdownQueue::kRest);
  EXPECT_EQ(notes.order, "reads session ");
  queue.Step(late + 2 * ShutdownQueue::kRest);
  EXPECT_EQ(notes.order, "reads session source ");
}

TEST_F(ReadingSession, IsFinishedInTheSameOrder) {
  watch->Closed();
  EXPECT_TRUE(queue.Finish(0ms));
  EXPECT_EQ(notes.order, "reads session source ");
}

TEST_F(ReadingSession, IsNotShutDownAtTheEndWhenItDoesNotClose) {
  EXPECT_FALSE(queue.Finish(ShutdownQueue::kReadsEnd));
  EXPECT_EQ(notes.order, "reads ");
}

TEST_F(ClosingSession, LeavesOthersAlone) {
  const auto open = std::make_shared<SessionWatch>();
  queue.Add(open, {ComPointer<::IUnknown>(session.Reference()), Interface::kMediaSession});
  queue.Add(watch, {ComPointer<::IUnknown>(source.Reference()), Interface::kMediaSource});
  watch->Closed();
  queue.Step(*watch->ClosedAt() + 1h);
  EXPECT_EQ(notes.order, "source ");
  open->Closed();
  queue.Step(*open->ClosedAt() + ShutdownQueue::kRest);
  EXPECT_EQ(notes.order, "source session ");
}

TEST_F(ClosingSession, IsShutDownAtTheEndBesideOneThatStaysOpen) {
  queue.Add(std::make_shared<SessionWatch>());
  AddBoth();
  watch->Closed();
  EXPECT_FALSE(queue.Finish(1ms));
  EXPECT_EQ(notes.order, "session source ");
}

TEST(ShutdownQueue, ThatIsEmptyWaitsForNothing) {
  ShutdownQueue queue;
  EXPECT_TRUE(queue.Finish(0ms));
}

}  // namespace
}  // namespace platform::win32
