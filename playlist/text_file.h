#pragma once
// Text files in the ANSI code page, as wholes and line by line.
// Not for what the lines mean (playlist/m3u_export.h, playlist/m3u_import.h).

#include <cstddef>
#include <optional>

#include "app/text/text.h"
#include "ports/files.h"
#include "ports/text_conversion.h"

namespace playlist {

using app::Text;
using app::TextView;

/// The largest file that is read, in bytes.
inline constexpr std::size_t kLargestTextFile = std::size_t{64} << 20U;

/// Creates or replaces a file with the text followed by CR LF. What the code page lacks becomes "?". False
/// when the file could not be written; an existing file is then as it was.
[[nodiscard]] bool WriteTextFile(platform::Files& files, platform::TextConversion& conversion,
                                 const Text& path, const Text& text);

/// The whole file. Nothing when it is not a readable file or is larger than kLargestTextFile.
[[nodiscard]] std::optional<Text> ReadTextFile(platform::Files& files, platform::TextConversion& conversion,
                                               const Text& path);

/// Walks through the lines of a text, which must outlive it and the lines that it returns.
class LineReader {
 public:
  /// `separator` must not be empty.
  LineReader(TextView text, TextView separator) : rest_(text), separator_(separator) {}

  /// The next line without its separator; nothing after the last. A text that ends in a separator has an
  /// empty last line.
  std::optional<TextView> Next();

 private:
  std::optional<TextView> rest_;
  TextView separator_;
};

}  // namespace playlist
