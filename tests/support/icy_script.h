#pragma once
// What a scripted server does on one connection, step by step, and helpers that build the bytes of HTTP and
// ICY answers. Not the server: that is ScriptedIcyServer.

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_support {

/// The steps of one answer. A script that ends without an end of its own closes cleanly.
class Script {
 public:
  enum class Kind { kSend, kStall, kHold, kAwaitSignal, kMark, kFlood, kNextRequest, kClose, kReset };
  struct Step {
    Kind kind;
    std::string bytes;
    std::size_t piece = 0;
    std::chrono::milliseconds time{0};
  };

  Script() = default;
  explicit Script(std::vector<Step> steps) : steps_(std::move(steps)) {}

  /// All at once.
  Script& Send(std::string bytes);
  /// In packets of `piece` bytes, with a gap before every packet but the first.
  Script& SendInPieces(std::string bytes, std::size_t piece = 1,
                       std::chrono::milliseconds gap = std::chrono::milliseconds(0));
  /// Silent for a time, the connection stays open.
  Script& Stall(std::chrono::milliseconds time);
  /// Silent until the client closes or the server ends.
  Script& Hold();
  /// Silent until the test calls ScriptedIcyServer::Signal with this name (before or after).
  Script& AwaitSignal(std::string name);
  /// Notifies the test, in ScriptedIcyServer::WaitForMark, that every earlier step is done.
  Script& Mark(std::string name);
  /// Sends `pattern` again and again, as fast as the client takes it, until the client closes or the server
  /// ends. The send buffer is made small, so that the count of bytes shows what the client took.
  Script& Flood(std::string pattern);
  /// Reads another request on the same connection and answers it by its own script; ends this script.
  Script& NextRequest();
  /// The clean end.
  Script& Close();
  /// Cuts the connection with a reset, after what was sent has arrived.
  Script& Reset();

  [[nodiscard]] const std::vector<Step>& Steps() const { return steps_; }

 private:
  std::vector<Step> steps_;
};

/// The status line and header lines, each ended with CR LF, and the empty line.
std::string Header(std::string_view status_line, const std::vector<std::string>& lines = {});

/// `count` bytes of recognisable "audio"; the byte at position `start + n` of the whole is always the same,
/// and none is a letter, a quote or a line end.
std::string AudioBytes(std::size_t count, std::size_t start = 0);

/// One metadata block of an ICY stream: a length byte (in units of 16 bytes), the text, zero padding.
/// Empty text gives the single byte zero. Throws std::length_error above 255 * 16 bytes.
std::string MetadataBlock(std::string_view text);
/// MetadataBlock of "StreamTitle='...';StreamUrl='...';" (the second part only when there is a URL).
std::string TitleBlock(std::string_view title, std::string_view url = {});

/// A body as an ICY server sends it: `metaint` bytes of audio before every block.
std::string Interleave(std::size_t metaint, const std::vector<std::string>& blocks);

/// One chunk of the chunked transfer coding, RFC 9112 section 7.1; of empty bytes, the last one.
std::string Chunk(std::string_view bytes);

/// A redirect and its end, e.g. Redirect("302 Found", "/other?x=1").
Script Redirect(std::string_view status, std::string_view location);
/// "200 OK" with a content type, a true content length, the body, and the end.
Script Page(std::string_view content_type, std::string_view body);

}  // namespace test_support
