// What a window manager on the display hears when a window is to get the keyboard.

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QWidget>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/x11_activation.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Listens on the display as a window manager and a desktop do.
class DesktopEar {
 public:
  DesktopEar() : display_(xcb_connect(nullptr, nullptr)) {
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display_)).data->root;
    xcb_change_window_attributes(display_, root, XCB_CW_EVENT_MASK, &events);
    Name("the display has taken the wish");
  }
  ~DesktopEar() { xcb_disconnect(display_); }
  DesktopEar(const DesktopEar&) = delete;
  DesktopEar& operator=(const DesktopEar&) = delete;

  /// The messages that came since the last call.
  std::vector<xcb_client_message_event_t> Messages() {
    std::vector<xcb_client_message_event_t> messages;
    while (xcb_generic_event_t* event = xcb_poll_for_event(display_)) {
      if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE) {
        messages.push_back(*reinterpret_cast<xcb_client_message_event_t*>(event));
      }
      std::free(event);
    }
    return messages;
  }
  xcb_atom_t Name(const std::string& name) {
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        display_, xcb_intern_atom(display_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr);
    const xcb_atom_t atom = reply->atom;
    std::free(reply);
    return atom;
  }

 private:
  xcb_connection_t* display_;
};

class DisplayActivation : public ::testing::Test {
 protected:
  void SetUp() override {
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    ear_.Messages();
  }
  /// The messages after an activation, collected until the last one expected has come.
  std::vector<xcb_client_message_event_t> Heard(const std::string& startup_id, std::size_t count) {
    ActivateOnX11(window_, startup_id);
    std::vector<xcb_client_message_event_t> heard;
    WaitFor([&] {
      for (const auto& message : ear_.Messages()) heard.push_back(message);
      return heard.size() >= count;
    });
    return heard;
  }
  std::string TextOf(const std::vector<xcb_client_message_event_t>& messages) {
    std::string text;
    for (const auto& message : messages) {
      text.append(reinterpret_cast<const char*>(message.data.data8), sizeof(message.data.data8));
    }
    return text.substr(0, text.find('\0'));
  }

  DesktopEar ear_;
  QWidget window_;
};

TEST_F(DisplayActivation, AsksForTheKeyboardWithTheTimeOfTheUsersAction) {
  const auto heard = Heard("desktop_TIME4711", 3);
  ASSERT_EQ(heard.size(), 3U);
  EXPECT_EQ(heard[0].type, ear_.Name("_NET_ACTIVE_WINDOW"));
  EXPECT_EQ(heard[0].format, 32);
  EXPECT_EQ(heard[0].window, window_.winId());
  EXPECT_EQ(heard[0].data.data32[0], 1U) << "a program asks, not a pager";
  EXPECT_EQ(heard[0].data.data32[1], 4711U);
}

TEST_F(DisplayActivation, ReportsTheLaterStartAsComplete) {
  const auto heard = Heard("a \"quoted\" \\ token that is long", 3);
  ASSERT_EQ(heard.size(), 3U) << "no request for the keyboard: there is no time";
  EXPECT_EQ(heard[0].type, ear_.Name("_NET_STARTUP_INFO_BEGIN"));
  EXPECT_EQ(heard[1].type, ear_.Name("_NET_STARTUP_INFO"));
  EXPECT_EQ(heard[2].type, ear_.Name("_NET_STARTUP_INFO"));
  EXPECT_EQ(heard[0].format, 8);
  EXPECT_EQ(TextOf(heard), "remove: ID=\"a \\\"quoted\\\" \\\\ token that is long\"");
}

TEST_F(DisplayActivation, WithoutAnIdNothingIsSent) {
  ActivateOnX11(window_, "");
  const auto heard = Heard("x_TIME1", 3);
  ASSERT_EQ(heard.size(), 3U);
  EXPECT_EQ(heard[0].data.data32[1], 1U) << "the first message is that of the second call";
}

}  // namespace
}  // namespace platform::qt
