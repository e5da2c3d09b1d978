#pragma once
// The encoding of one INI file: its mark, its units, its line ends, and the conversion to and from text.
// Not for the meaning of a line (platform/ini/ini_line.h).

#include <cstddef>
#include <string>
#include <string_view>

#include "ports/text.h"
#include "ports/text_conversion.h"

namespace platform::ini {

/// A file that begins with FF FE is UTF-16LE, one that begins with EF BB BF is UTF-8, any other is code
/// page 1252. The conversion must outlive the codec.
class IniCodec {
 public:
  IniCodec(TextConversion& conversion, std::string_view file);

  /// Bytes of the mark at the file's beginning, 0 without one.
  [[nodiscard]] std::size_t MarkSize() const;
  /// Bytes of one unit, 1 or 2. A line's size is a multiple of it, except for a file's torn last line.
  [[nodiscard]] std::size_t UnitSize() const { return encoding_ == Encoding::kUtf16 ? 2 : 1; }

  /// Bytes of the line that starts at `begin`, with its end (CR LF, LF or CR); 0 at the file's end.
  [[nodiscard]] std::size_t LineSize(std::string_view bytes, std::size_t begin) const;
  /// Bytes of the end of `line`, 0 when it lacks one.
  [[nodiscard]] std::size_t LineEndSize(std::string_view line) const;
  /// True when the first unit that is neither a blank nor a tab is "[".
  [[nodiscard]] bool StartsWithBracket(std::string_view line) const;
  /// The part of a key's line before its first "=", without the blanks and tabs at its end.
  [[nodiscard]] std::string_view KeyPart(std::string_view line) const;
  /// The part of a key's line after its first "=", without the line's end and the blanks and tabs around it.
  [[nodiscard]] std::string_view ValuePart(std::string_view line) const;

  [[nodiscard]] Text Decode(std::string_view bytes) const;
  /// The same into a text whose memory is used again.
  void Decode(std::string_view bytes, Text& text) const;
  [[nodiscard]] std::string Encode(TextView text) const;
  /// `text` as the file would return it: what the encoding lacks is replaced.
  [[nodiscard]] Text AsStored(TextView text) const;
  /// The form in which names are compared, so that letter case makes no difference.
  [[nodiscard]] Text Fold(Text name) const;

 private:
  enum class Encoding { kCodePage, kUtf8, kUtf16 };
  static Encoding Detect(std::string_view file);
  [[nodiscard]] char16_t UnitAt(std::string_view bytes, std::size_t position) const;
  [[nodiscard]] CodePage Page() const;

  TextConversion* conversion_;
  Encoding encoding_;
};

}  // namespace platform::ini
