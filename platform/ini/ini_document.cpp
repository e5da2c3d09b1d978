#include "platform/ini/ini_document.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace platform::ini {

IniDocument::IniDocument(TextConversion& conversion, std::string bytes)
    : conversion_(&conversion), codec_(conversion, bytes), buffer_(std::move(bytes)), size_(buffer_.size()) {
  FindSections();
}

void IniDocument::FindSections() {
  sections_.emplace_back();
  Text content;
  std::size_t at = codec_.MarkSize();
  sections_.back().header.begin = static_cast<std::uint32_t>(at);
  while (const std::size_t line_size = codec_.LineSize(buffer_, at)) {
    const Piece line{static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(line_size)};
    at += line_size;
    if (line_end_.empty()) {
      line_end_ = View(line).substr(line_size - codec_.LineEndSize(View(line)));
    }
    if (codec_.StartsWithBracket(View(line))) {
      const IniLine header = Read(line, content);
      if (header.kind == IniLineKind::kSection) {
        sections_.emplace_back().header = line;
        Link(names_, codec_.Fold(Text(header.name)), sections_, sections_.size() - 1);
        continue;
      }
    }
    sections_.back().body_size += line.size;
  }
  if (line_end_.empty()) line_end_ = codec_.Encode(u"\r\n");
}

IniDocument::Body& IniDocument::LoadBody(Section& section) {
  if (section.body) return *section.body;
  constexpr std::size_t kLinesOfAStation = 8;
  auto body = std::make_unique<Body>();
  body->items.reserve(kLinesOfAStation);
  Text content;
  std::size_t at = section.header.begin + section.header.size;
  const std::string_view bytes = std::string_view(buffer_).substr(0, at + section.body_size);
  while (const std::size_t line_size = codec_.LineSize(bytes, at)) {
    const Piece line{static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(line_size)};
    AddLine(*body, line, Read(line, content));
    at += line_size;
  }
  section.body_size = 0;
  section.body = std::move(body);
  return *section.body;
}

void IniDocument::AddLine(Body& body, Piece line, const IniLine& read) const {
  if (read.kind == IniLineKind::kKey) {
    body.items.push_back({line, kNoIndex, ItemKind::kKey});
    Link(body.keys, codec_.Fold(Text(read.name)), body.items, body.items.size() - 1);
    return;
  }
  const ItemKind kind = read.kind == IniLineKind::kBlank ? ItemKind::kBlank : ItemKind::kOther;
  if (!body.items.empty() && body.items.back().kind == kind) {
    body.items.back().piece.size += line.size;
  } else {
    body.items.push_back({line, kNoIndex, kind});
  }
}

IniDocument::Section* IniDocument::FindSection(const Text& name) {
  if (last_section_ != kNoIndex && name == last_name_) return &sections_[last_section_];
  const auto place = names_.find(codec_.Fold(name));
  if (place == names_.end()) return nullptr;
  last_name_ = name;
  last_section_ = place->second.first;
  return &sections_[last_section_];
}

IniDocument::Item* IniDocument::FindKey(Section& section, Text key) {
  Body& body = LoadBody(section);
  const auto place = body.keys.find(codec_.Fold(std::move(key)));
  return place == body.keys.end() ? nullptr : &body.items[place->second.first];
}

/// The part of a text that one line can hold.
Text IniDocument::OneLine(TextView text) {
  Text line(text.substr(0, text.find(u'\0')));
  std::erase_if(line, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
  return line;
}

/// Such a text is one line that every encoding has.
bool IniDocument::IsPlain(TextView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit >= u' ' && unit < 0x7F; });
}

Text IniDocument::Name(TextView asked) const {
  if (IsPlain(asked)) return Text(TrimBlanks(asked));
  const Text line = OneLine(asked);
  return codec_.AsStored(TrimBlanks(line));
}

std::optional<Text> IniDocument::Value(TextView section, TextView key) {
  Section* const found = FindSection(Name(section));
  if (found == nullptr) return std::nullopt;
  const Item* const item = FindKey(*found, Name(key));
  if (item == nullptr) return std::nullopt;
  Text value = codec_.Decode(codec_.ValuePart(View(item->piece)));
  const TextView bare = RemoveQuotes(value);
  return bare.size() == value.size() ? std::move(value) : Text(bare);
}

std::vector<Text> IniDocument::SectionNames() const {
  std::vector<Text> names;
  Text content;
  for (std::size_t index = 1; index < sections_.size(); ++index) {
    const Piece header = sections_[index].header;
    if (header.size == 0) continue;
    names.emplace_back(Read(header, content).name);
  }
  return names;
}

std::string IniDocument::Bytes() const {
  std::string bytes;
  bytes.append(buffer_, 0, codec_.MarkSize());
  for (const Section& section : sections_) bytes.append(BytesOf(section));
  assert(bytes.size() == size_);
  return bytes;
}

std::string IniDocument::BytesOf(const Section& section) const {
  std::string bytes(View(section.header));
  if (!section.body)
    return bytes.append(buffer_, section.header.begin + section.header.size, section.body_size);
  for (const Item& item : section.body->items) bytes.append(View(item.piece));
  return bytes;
}

std::optional<ProfileSection> IniDocument::CopySection(TextView section) {
  const Section* const found = FindSection(Name(section));
  if (found == nullptr) return std::nullopt;
  ProfileSection copy{codec_.Decode(BytesOf(*found)), std::nullopt};
  const auto next = std::find_if(sections_.begin() + (found - sections_.data()) + 1, sections_.end(),
                                 [](const Section& behind) { return behind.header.size > 0; });
  if (next == sections_.end()) return copy;
  Text header;
  copy.next = Read(next->header, header).name;
  return copy;
}

std::string_view IniDocument::View(Piece piece) const {
  return std::string_view(buffer_).substr(piece.begin, piece.size);
}

/// The line's text goes into `content`, which what is returned points into.
IniLine IniDocument::Read(Piece line, Text& content) const {
  const std::string_view bytes = View(line);
  codec_.Decode(bytes.substr(0, bytes.size() - codec_.LineEndSize(bytes)), content);
  return ReadIniLine(content);
}

}  // namespace platform::ini
