#pragma once
// What the owner of a stream client may ask of its recorders beyond their usual rules.
// Not for where the files go (clsFunkhaus::Options).

#include "app/text/text.h"

namespace stream {

using app::Text;

/// The defaults are the recorders' usual rules.
struct RecordOptions {
  /// How the bytes of a stream get into the files.
  enum class Writes {
    kUsual,    ///< in reads of 512 bytes: the plain recorder appends all 512, stale ones included, and the
               ///< recorder by title writes byte by byte
    kReceived  ///< just the bytes that came, in pieces as large as they came (stream/read_size.h)
  };
  /// The characters of a title block.
  enum class TitleCharacters {
    kByteValues,  ///< each byte is the character of its value
    kDecoded      ///< UTF-8 where the block is UTF-8, otherwise the ANSI code page
  };

  Writes writes = Writes::kUsual;
  TitleCharacters title_characters = TitleCharacters::kByteValues;
  /// What the file of a stream without titles is named after, in place of "record" and "unknown"; empty:
  /// those.
  Text untitled_name;
};

}  // namespace stream
