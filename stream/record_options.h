#pragma once
// What the holder of a stream client may ask of its recorders beyond their usual rules.
// Not for where the files go (clsFunkhaus::Options).

#include "app/text.h"

namespace stream {

using app::Text;

/// Made without a choice it says the recorders' usual rules.
struct RecordOptions {
  /// What the plain recorder appends for a read that brought bytes.
  enum class PlainWrites {
    kWholeBuffer,  ///< all 512 bytes of the buffer, stale ones included
    kBytesRead     ///< just the bytes that came
  };
  /// The characters of a title block.
  enum class TitleCharacters {
    kByteValues,  ///< each byte is the character of its value
    kDecoded      ///< UTF-8 where the block is UTF-8, otherwise the ANSI code page
  };

  PlainWrites plain_writes = PlainWrites::kWholeBuffer;
  TitleCharacters title_characters = TitleCharacters::kByteValues;
  /// What the file of a stream without titles is named after, in place of "record" and "unknown"; empty:
  /// those.
  Text untitled_name;
};

}  // namespace stream
