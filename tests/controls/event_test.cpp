#include "controls/event.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace controls {
namespace {

TEST(Event, CallsSubscribersInOrderUntilTheirSubscriptionEnds) {
  Event<int> event;
  std::vector<int> calls;
  Subscription first = event.Subscribe([&](int value) { calls.push_back(value); });
  Subscription second = event.Subscribe([&](int value) { calls.push_back(value * 10); });
  event.Raise(1);
  first.End();
  event.Raise(2);
  EXPECT_EQ(calls, (std::vector<int>{1, 10, 20}));
}

TEST(Event, EndOfASubscriptionReleasesItsHandler) {
  Event<> event;
  auto kept = std::make_shared<int>(0);
  Subscription subscription = event.Subscribe([kept] {});
  EXPECT_EQ(kept.use_count(), 2);
  subscription.End();
  EXPECT_EQ(kept.use_count(), 1);
}

TEST(Event, SubscriptionMayOutliveTheEvent) {
  auto event = std::make_unique<Event<>>();
  Subscription subscription = event->Subscribe([] {});
  event.reset();
  subscription.End();
}

TEST(Event, SubscriberMayEndALaterOneAndDestroyTheEvent) {
  auto event = std::make_unique<Event<>>();
  int later_calls = 0;
  Subscription later;
  Subscription first = event->Subscribe([&] {
    later.End();
    event.reset();
  });
  later = event->Subscribe([&] { ++later_calls; });
  event->Raise();
  EXPECT_EQ(later_calls, 0);
  EXPECT_EQ(event, nullptr);
}

TEST(Event, SubscriberThatComesDuringACallIsCalledFromTheNextOne) {
  Event<> event;
  int late_calls = 0;
  Subscription late;
  bool subscribed = false;
  Subscription first = event.Subscribe([&] {
    if (!std::exchange(subscribed, true)) late = event.Subscribe([&] { ++late_calls; });
  });
  event.Raise();
  EXPECT_EQ(late_calls, 0);
  event.Raise();
  EXPECT_EQ(late_calls, 1);
}

}  // namespace
}  // namespace controls
