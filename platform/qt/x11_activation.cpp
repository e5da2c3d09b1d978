#include "platform/qt/x11_activation.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace platform::qt {
namespace {

struct Freer {
  void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t Atom(xcb_connection_t* display, std::string_view name) {
  const auto asked = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const std::unique_ptr<xcb_intern_atom_reply_t, Freer> reply(xcb_intern_atom_reply(display, asked, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t Root(xcb_connection_t* display) {
  return xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
}

xcb_client_message_event_t Message(xcb_window_t window, xcb_atom_t type, std::uint8_t format) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = format;
  message.window = window;
  message.type = type;
  return message;
}

void Send(xcb_connection_t* display, std::uint32_t mask, const xcb_client_message_event_t& message) {
  xcb_send_event(display, 0, Root(display), mask, reinterpret_cast<const char*>(&message));
}

void AskForKeyboard(xcb_connection_t* display, xcb_window_t window, std::uint32_t time) {
  constexpr std::uint32_t kFromApplication = 1;
  auto message = Message(window, Atom(display, "_NET_ACTIVE_WINDOW"), 32);
  message.data.data32[0] = kFromApplication;
  message.data.data32[1] = time;
  Send(display, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, message);
}

/// `remove: ID="..."` with its NUL, in pieces of twenty bytes.
void ReportComplete(xcb_connection_t* display, xcb_window_t window, const std::string& startup_id) {
  std::string text = "remove: ID=\"";
  for (const char byte : startup_id) {
    if (byte == '"' || byte == '\\') text += '\\';
    text += byte;
  }
  text += "\"";
  text += '\0';
  const xcb_atom_t more = Atom(display, "_NET_STARTUP_INFO");
  auto message = Message(window, Atom(display, "_NET_STARTUP_INFO_BEGIN"), 8);
  constexpr std::size_t kPiece = std::size(decltype(message.data.data8){});
  for (std::size_t begin = 0; begin < text.size(); begin += kPiece) {
    std::fill(std::begin(message.data.data8), std::end(message.data.data8), std::uint8_t{0});
    const std::string_view piece = std::string_view(text).substr(begin, kPiece);
    std::copy(piece.begin(), piece.end(), message.data.data8);
    Send(display, XCB_EVENT_MASK_PROPERTY_CHANGE, message);
    message.type = more;
  }
}

}  // namespace

std::optional<std::uint32_t> TimeOfStartupId(const std::string& startup_id) {
  constexpr std::string_view kMark = "_TIME";
  const auto mark = startup_id.rfind(kMark);
  if (mark == std::string::npos) return std::nullopt;
  const char* const begin = startup_id.data() + mark + kMark.size();
  const char* const end = startup_id.data() + startup_id.size();
  std::uint32_t time = 0;
  const auto [stop, error] = std::from_chars(begin, end, time);
  if (error != std::errc() || stop != end || time == 0) return std::nullopt;
  return time;
}

void ActivateOnX11(const QWidget& window, const std::string& startup_id) {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* const display = x11 == nullptr ? nullptr : x11->connection();
  const auto id = static_cast<xcb_window_t>(window.effectiveWinId());
  if (display == nullptr || id == XCB_WINDOW_NONE || startup_id.empty()) return;
  if (const auto time = TimeOfStartupId(startup_id)) AskForKeyboard(display, id, *time);
  ReportComplete(display, id, startup_id);
  xcb_flush(display);
}

}  // namespace platform::qt
