#include "platform/qt/x11_activation.h"

#include <gtest/gtest.h>

namespace platform::qt {
namespace {

TEST(X11Activation, TimeStandsAtTheEndOfAStartupId) {
  EXPECT_EQ(TimeOfStartupId("gnome-shell/Funkhausplayer/4711-0-host_TIME815"), 815U);
  EXPECT_EQ(TimeOfStartupId("_TIME4294967295"), 4294967295U);
  EXPECT_EQ(TimeOfStartupId("a_TIME1_TIME2"), 2U);
}

TEST(X11Activation, WhatHasNoTimeThereHasNone) {
  for (const char* id : {"", "token", "a_TIME", "a_TIME0", "a_TIME-1", "a_TIME12x", "a_TIME 1",
                         "a_TIME4294967296", "a_TIME99999999999999999999"}) {
    EXPECT_FALSE(TimeOfStartupId(id)) << id;
  }
}

TEST(X11Activation, NothingHappensOnAnotherKindOfDisplay) {
  QWidget window;
  ActivateOnX11(window, "a_TIME1");
}

}  // namespace
}  // namespace platform::qt
