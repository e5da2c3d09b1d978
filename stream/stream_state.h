#pragma once
// What clsFunkhaus remembers, in an object that outlives it while one of its calls still runs.
// Not for what a single call keeps: that is local to the call, because calls nest.

#include <cstdint>
#include <vector>

#include "ports/clock.h"
#include "ports/environment.h"
#include "ports/internet.h"
#include "ports/message_loop.h"
#include "ports/record_files.h"
#include "ports/text_conversion.h"
#include "ports/xml_http_request.h"
#include "stream/query_failure.h"
#include "stream/silent_addresses.h"
#include "stream/text_pieces.h"

namespace stream {

/// What the stream client needs from the system. All of it outlives the client and its running calls.
struct Ports {
  platform::Internet& internet;
  platform::XmlHttpRequests& xml_http_requests;
  platform::RecordFiles& record_files;
  platform::Environment& environment;
  platform::Clock& clock;
  platform::MessageLoop& message_loop;
  platform::TextConversion& text_conversion;
};

struct StreamState {
  explicit StreamState(const Ports& system, Patience patience = Patience::kOfAWindow)
      : ports(system), silent_addresses(system.clock, patience) {}

  const Ports ports;
  Text address;
  std::uint32_t open_flags = 0;
  std::vector<Text> playlist_lines;
  std::vector<Text> header_lines;
  /// Of the latest header query.
  QueryFailure query_failure;
  SilentAddresses silent_addresses;
  /// Ends a recording and GetActiveMeta after their current read.
  bool stop_flag = false;
  /// Ends the timed readers and a playlist fetch after their current look. No operation sets it; it is set
  /// only when the owner has released the client.
  bool abort_flag = false;
};

}  // namespace stream
