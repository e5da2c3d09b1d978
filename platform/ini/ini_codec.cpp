#include "platform/ini/ini_codec.h"

#include <algorithm>

namespace platform::ini {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

bool IsLineEnd(char16_t unit) { return unit == u'\n' || unit == u'\r'; }

/// Most names and values are plain ASCII, and a catalogue has a hundred thousand of them: they are copied and
/// checked at the same time. False when there was another byte; the text means nothing then.
bool CopyAscii(std::string_view bytes, Text& text) {
  text.resize(bytes.size());
  unsigned char all_bits = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    all_bits |= byte;
    text[at] = byte;
  }
  return all_bits < 0x80;
}

bool IsAscii(TextView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

}  // namespace

IniCodec::IniCodec(TextConversion& conversion, std::string_view file)
    : conversion_(&conversion), encoding_(Detect(file)) {}

IniCodec::Encoding IniCodec::Detect(std::string_view file) {
  if (file.starts_with(kUtf16Mark)) return Encoding::kUtf16;
  if (file.starts_with(kUtf8Mark)) return Encoding::kUtf8;
  return Encoding::kCodePage;
}

std::size_t IniCodec::MarkSize() const {
  if (encoding_ == Encoding::kUtf16) return kUtf16Mark.size();
  return encoding_ == Encoding::kUtf8 ? kUtf8Mark.size() : 0;
}

CodePage IniCodec::Page() const { return encoding_ == Encoding::kUtf8 ? CodePage::kUtf8 : CodePage::kAnsi; }

char16_t IniCodec::UnitAt(std::string_view bytes, std::size_t position) const {
  const auto low = static_cast<unsigned char>(bytes[position]);
  if (UnitSize() == 1) return low;
  const auto high = static_cast<unsigned char>(bytes[position + 1]);
  return static_cast<char16_t>(high << 8 | low);
}

std::size_t IniCodec::LineSize(std::string_view bytes, std::size_t begin) const {
  const std::size_t unit = UnitSize();
  std::size_t at = begin;
  if (unit == 1) {
    while (at < bytes.size() && !IsLineEnd(static_cast<unsigned char>(bytes[at]))) ++at;
  } else {
    while (at + unit <= bytes.size() && !IsLineEnd(UnitAt(bytes, at))) at += unit;
  }
  if (at + unit > bytes.size()) return bytes.size() - begin;
  const bool pair =
      UnitAt(bytes, at) == u'\r' && at + 2 * unit <= bytes.size() && UnitAt(bytes, at + unit) == u'\n';
  return at + (pair ? 2 : 1) * unit - begin;
}

std::size_t IniCodec::LineEndSize(std::string_view line) const {
  const std::size_t unit = UnitSize();
  if (line.size() < unit || line.size() % unit != 0) return 0;
  const char16_t last = UnitAt(line, line.size() - unit);
  if (last == u'\r') return unit;
  if (last != u'\n') return 0;
  const bool pair = line.size() >= 2 * unit && UnitAt(line, line.size() - 2 * unit) == u'\r';
  return pair ? 2 * unit : unit;
}

bool IniCodec::StartsWithBracket(std::string_view line) const {
  const std::size_t unit = UnitSize();
  for (std::size_t at = 0; at + unit <= line.size(); at += unit) {
    const char16_t value = UnitAt(line, at);
    if (!IsBlank(value)) return value == u'[';
  }
  return false;
}

std::string_view IniCodec::KeyPart(std::string_view line) const {
  const std::size_t unit = UnitSize();
  std::size_t end = 0;
  for (std::size_t at = 0; at + unit <= line.size() && UnitAt(line, at) != u'='; at += unit) {
    if (!IsBlank(UnitAt(line, at))) end = at + unit;
  }
  return line.substr(0, end);
}

std::string_view IniCodec::ValuePart(std::string_view line) const {
  const std::size_t unit = UnitSize();
  std::size_t begin = 0;
  while (begin + unit <= line.size() && UnitAt(line, begin) != u'=') begin += unit;
  begin = std::min(begin + unit, line.size());
  std::size_t end = line.size() - line.size() % unit - LineEndSize(line);
  while (begin < end && IsBlank(UnitAt(line, begin))) begin += unit;
  while (begin < end && IsBlank(UnitAt(line, end - unit))) end -= unit;
  return line.substr(begin, begin < end ? end - begin : 0);
}

Text IniCodec::Decode(std::string_view bytes) const {
  Text text;
  Decode(bytes, text);
  return text;
}

void IniCodec::Decode(std::string_view bytes, Text& text) const {
  if (encoding_ == Encoding::kUtf16) {
    text.resize(bytes.size() / 2);
    for (std::size_t at = 0; at < text.size(); ++at) text[at] = UnitAt(bytes, 2 * at);
  } else if (!CopyAscii(bytes, text)) {
    text = conversion_->MultiByteToWideChar(Page(), bytes);
  }
}

std::string IniCodec::Encode(TextView text) const {
  if (encoding_ == Encoding::kUtf16) {
    std::string bytes;
    for (const char16_t unit : text) {
      bytes.push_back(static_cast<char>(unit & 0xFF));
      bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
  }
  if (!IsAscii(text)) return conversion_->WideCharToMultiByte(Page(), text);
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  return bytes;
}

Text IniCodec::AsStored(TextView text) const {
  if (encoding_ == Encoding::kUtf16 || IsAscii(text)) return Text(text);
  return Decode(Encode(text));
}

Text IniCodec::Fold(Text name) const {
  for (char16_t& unit : name) {
    if (unit >= 0x80) return conversion_->CharLowerW(name);
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
  }
  return name;
}

}  // namespace platform::ini
