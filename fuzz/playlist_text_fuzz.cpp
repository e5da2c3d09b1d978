// Feeds arbitrary answers to the playlist rules: what they make of them stays bounded, and every entry that
// is announced can be asked for.

#include "app/text/text_helpers.h"
#include "fuzz/fuzz_input.h"
#include "stream/playlist_text.h"

namespace {

using fuzz::Require;
using stream::Text;

// A conversion adds a fixed text and less than 64 characters for each two lines of the answer.
constexpr std::size_t kAdded = 128;
constexpr std::size_t kAddedPerUnit = 32;

void CheckEntry(const std::vector<Text>& lines, std::int32_t index) {
  const stream::PlaylistEntry entry = stream::FindPlaylistEntry(lines, index);
  Require(entry.address.find(u'=') == Text::npos);
  Require(entry.title.find(u'=') == Text::npos);
  const bool is_announced = index >= 0 && index < stream::AnnouncedEntries(lines);
  Require(is_announced || (entry.address.empty() && entry.title.empty()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Text response = fuzz::AsText(fuzz::AsBytes(data, size));
  const auto lines = stream::PlaylistLinesFromResponse(response);
  if (!lines) return 0;
  Require(!lines->empty());
  Require(app::Join(*lines, stream::kCrLf).size() <= kAdded + response.size() * kAddedPerUnit);
  for (const Text& line : *lines) Require(line.find(stream::kCrLf) == Text::npos);
  for (const std::int32_t index : {-2147483647 - 1, -1, 0, 1, 7, 2147483647}) CheckEntry(*lines, index);
  CheckEntry(*lines, stream::AnnouncedEntries(*lines) - 1);
  return 0;
}
