#include "stream/playlist_fetch.h"

#include <cstdint>
#include <memory>

namespace stream {
namespace {

constexpr std::int32_t kCompleted = 4;

// A stream never completes and only a small document is there in time, so the wait is short: it ends when the
// whole-second clock has advanced by one, which can be almost at once.
void WaitForCompletion(const StreamState& state, platform::XmlHttpRequest& request) {
  const std::int64_t deadline = state.ports.clock.WholeSeconds() + 1;
  while (request.ReadyState() != kCompleted) {
    state.ports.message_loop.ProcessPendingMessages();
    if (state.abort_flag || state.ports.clock.WholeSeconds() >= deadline) return;
  }
}

}  // namespace

std::optional<Text> FetchPlaylistText(const StreamState& state, const Text& address) {
  const std::unique_ptr<platform::XmlHttpRequest> request =
      state.ports.xml_http_requests.CreateObject(u"MSXML2.ServerXMLHTTP.6.0");
  if (!request) return std::nullopt;
  // A failing step is ignored: a request that was never sent just does not complete in time.
  request->SetOption(platform::kSxhOptionIgnoreServerSslCertErrorFlags,
                     platform::kSxhServerCertIgnoreAllServerErrors);
  request->Open(u"GET", address, true);
  request->Send();
  WaitForCompletion(state, *request);
  std::optional<Text> text;
  if (request->ReadyState() == kCompleted) text = request->ResponseText();
  request->Abort();
  return text;
}

}  // namespace stream
