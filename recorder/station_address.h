#pragma once
// From a link, as a station list has it, to the address of the stream itself, and what its headers say.
// Not for recording.

#include "ports/files.h"
#include "ports/text_conversion.h"
#include "stream/cls_funkhaus.h"

namespace recorder {

/// The first entry of a playlist file on the disk, or of a playlist at a server; otherwise the link itself.
/// The scheme of an http or https address is given in lower case, and its host is followed by "/". Waits up
/// to a second for the server.
[[nodiscard]] platform::Text AddressOf(stream::clsFunkhaus& cFunkhaus, platform::Files& files,
                                       platform::TextConversion& conversion, const platform::Text& link);

/// The host that an http or https address names, without port and user; empty when it names none.
[[nodiscard]] platform::Text HostOf(const platform::Text& address);

/// What the recorder needs to know about a stream, from its headers.
struct StreamFacts {
  platform::Text station;       ///< empty when the server does not name it
  platform::Text content_type;  ///< without parameters
  platform::Text metaint;       ///< empty when no titles are offered
  /// False for pages and playlists, which are not sound.
  bool is_sound = true;
  /// A file that ends, not a station's programme: the server gives its length and sends no station header.
  bool is_file = false;
};

/// From the headers of the last query of `cFunkhaus`.
[[nodiscard]] StreamFacts FactsOf(const stream::clsFunkhaus& cFunkhaus, platform::TextConversion& conversion);

}  // namespace recorder
