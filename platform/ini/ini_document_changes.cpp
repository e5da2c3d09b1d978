// The changing half of IniDocument; finding and reading are in ini_document.cpp.

#include <algorithm>
#include <utility>

#include "platform/ini/ini_document.h"

namespace platform::ini {
namespace {

TextView DropLeadingBlanks(TextView text) {
  return text.substr(std::min(text.find_first_not_of(u" \t"), text.size()));
}

/// The lost high byte of a UTF-16 unit: that of a letter or digit where the low byte is one, else one that
/// makes no bracket, equals sign or other mark of the format of it, so that the line stays what it was.
char OtherHalf(char low) {
  const bool is_letter = (low >= 'a' && low <= 'z') || (low >= 'A' && low <= 'Z');
  const bool is_digit = low >= '0' && low <= '9';
  return is_letter || is_digit ? '\0' : '\xFF';
}

}  // namespace

IniChange IniDocument::SetValue(TextView section, TextView key, TextView value) {
  if (!HasRoomFor(section.size() + key.size() + value.size())) return IniChange::kRefused;
  CompactIfWasteful();
  const Text section_name = Name(section);
  const Text key_name = Name(key);
  const Text stored = codec_.AsStored(DropLeadingBlanks(OneLine(value)));
  Section* const found = FindSection(section_name);
  Item* const item = found == nullptr ? nullptr : FindKey(*found, key_name);
  if (item != nullptr) return ReplaceValue(*item, stored);

  const Text line = key_name + u"=" + stored;
  const IniLine read_back = ReadIniLine(line);
  if (read_back.kind != IniLineKind::kKey || read_back.name != key_name) return IniChange::kRefused;
  AddKey(found == nullptr ? AddSection(section_name) : *found, key_name, line);
  return IniChange::kMade;
}

IniChange IniDocument::ReplaceValue(Item& item, const Text& value) {
  Text content;
  const IniLine before = Read(item.piece, content);
  if (RemoveQuotes(before.value) == RemoveQuotes(TrimBlanks(value))) return IniChange::kNone;

  const std::string_view old_line = View(item.piece);
  std::string line(codec_.KeyPart(old_line));
  line += codec_.Encode(u"=" + value);
  const Text new_content = codec_.Decode(line);
  const IniLine after = ReadIniLine(new_content);
  if (after.kind != IniLineKind::kKey || after.name != before.name) return IniChange::kRefused;
  line += old_line.substr(old_line.size() - codec_.LineEndSize(old_line));
  Replace(item.piece, line);
  return IniChange::kMade;
}

void IniDocument::AddKey(Section& section, const Text& key, const Text& line) {
  Body& body = LoadBody(section);
  const std::optional<Item> blank_tail = TakeBlankTail(body);
  EndLine(body.items.empty() ? section.header : body.items.back().piece);
  body.items.push_back({Store(codec_.Encode(line) + line_end_), kNoIndex, ItemKind::kKey});
  size_ += body.items.back().piece.size;
  Link(body.keys, codec_.Fold(key), body.items, body.items.size() - 1);
  if (blank_tail) body.items.push_back(*blank_tail);
}

/// Takes the blank lines (and what was deleted among them) off a section's end. They come back as one item,
/// so that the next key finds the end again at once.
std::optional<IniDocument::Item> IniDocument::TakeBlankTail(Body& body) {
  std::vector<Item> blanks;
  while (!body.items.empty()) {
    const Item& last = body.items.back();
    if (last.kind != ItemKind::kBlank && last.kind != ItemKind::kGone) break;
    if (last.kind == ItemKind::kBlank) blanks.push_back(last);
    body.items.pop_back();
  }
  if (blanks.empty()) return std::nullopt;
  if (blanks.size() == 1) return blanks.front();
  std::string bytes;
  for (auto blank = blanks.rbegin(); blank != blanks.rend(); ++blank) bytes += View(blank->piece);
  return Item{Store(bytes), kNoIndex, ItemKind::kBlank};
}

IniDocument::Section& IniDocument::AddSection(const Text& name) {
  EndLastLine(LastSection());
  Section& section = sections_.emplace_back();
  section.header = Store(codec_.Encode(u"[" + name + u"]") + line_end_);
  size_ += section.header.size;
  Link(names_, codec_.Fold(name), sections_, sections_.size() - 1);
  return section;
}

/// The last section that is still there; those after it, which are deleted, are dropped.
IniDocument::Section& IniDocument::LastSection() {
  while (sections_.size() > 1 && sections_.back().header.size == 0) sections_.pop_back();
  return sections_.back();
}

void IniDocument::EndLastLine(Section& section) {
  Body& body = LoadBody(section);
  const auto last = std::find_if(body.items.rbegin(), body.items.rend(),
                                 [](const Item& item) { return item.kind != ItemKind::kGone; });
  EndLine(last == body.items.rend() ? section.header : last->piece);
}

/// Gives a line that lacks it a line end; in a torn UTF-16 file the lone byte becomes a unit first.
void IniDocument::EndLine(Piece& piece) {
  std::string line(View(piece));
  if (line.empty() || codec_.LineEndSize(line) > 0) return;
  if (line.size() % codec_.UnitSize() != 0) line.push_back(OtherHalf(line.back()));
  Replace(piece, line + line_end_);
}

IniChange IniDocument::DeleteKey(TextView section, TextView key) {
  const Text key_name = Name(key);
  Section* const found = FindSection(Name(section));
  Item* const item = found == nullptr ? nullptr : FindKey(*found, key_name);
  if (item == nullptr) return IniChange::kNone;
  UnlinkFirst(found->body->keys, codec_.Fold(key_name), found->body->items);
  size_ -= item->piece.size;
  *item = {{}, kNoIndex, ItemKind::kGone};
  return IniChange::kMade;
}

IniChange IniDocument::DeleteSection(TextView section) {
  const Text name = Name(section);
  Section* const found = FindSection(name);
  if (found == nullptr) return IniChange::kNone;
  UnlinkFirst(names_, codec_.Fold(name), sections_);
  last_section_ = kNoIndex;
  size_ -= found->header.size + found->body_size;
  if (found->body) {
    for (const Item& item : found->body->items) size_ -= item.piece.size;
  }
  *found = {};
  return IniChange::kMade;
}

IniChange IniDocument::InsertSection(const ProfileSection& section) {
  if (!HasRoomFor(section.lines.size())) return IniChange::kRefused;
  const TextView header = TextView(section.lines).substr(0, section.lines.find_first_of(u"\r\n"));
  if (ReadIniLine(header).kind != IniLineKind::kSection) return IniChange::kRefused;
  std::string lines = codec_.Encode(section.lines);

  const Section* const next = section.next ? FindSection(Name(*section.next)) : nullptr;
  if (next == nullptr) {
    EndLastLine(LastSection());
    MakeAnew(Bytes() + lines);
    return IniChange::kMade;
  }
  if (codec_.LineEndSize(lines) == 0) lines += line_end_;
  std::string behind;
  for (const Section* at = next; at != sections_.data() + sections_.size(); ++at) behind += BytesOf(*at);
  std::string bytes = Bytes();
  bytes.insert(bytes.size() - behind.size(), lines);
  MakeAnew(std::move(bytes));
  return IniChange::kMade;
}

bool IniDocument::HasRoomFor(std::size_t units) const {
  constexpr std::size_t kMostBytesOfAUnit = 3;
  constexpr std::size_t kBracketsAndLineEnds = 16;
  return units < kLargestIniFile &&
         size_ + kMostBytesOfAUnit * units + kBracketsAndLineEnds <= kLargestIniFile;
}

IniDocument::Piece IniDocument::Store(std::string_view bytes) {
  const Piece piece{static_cast<std::uint32_t>(buffer_.size()), static_cast<std::uint32_t>(bytes.size())};
  buffer_ += bytes;
  return piece;
}

void IniDocument::Replace(Piece& piece, std::string_view bytes) {
  size_ = size_ - piece.size + bytes.size();
  piece = Store(bytes);
}

/// Replaced lines stay in the buffer. It is rebuilt before they outweigh the document, and long before its
/// 32-bit offsets end; the more there is to copy, the rarer this is.
void IniDocument::CompactIfWasteful() {
  constexpr std::size_t kSmall = std::size_t{1024} * 1024;
  if (buffer_.size() <= 3 * size_ + kSmall) return;
  MakeAnew(Bytes());
}

void IniDocument::MakeAnew(std::string bytes) {
  const std::string line_end = line_end_;
  *this = IniDocument(*conversion_, std::move(bytes));
  line_end_ = line_end;
}

}  // namespace platform::ini
