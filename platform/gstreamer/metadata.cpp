#include "platform/gstreamer/metadata.h"

#include <array>
#include <string_view>

#include "platform/gstreamer/address.h"
#include "platform/gstreamer/gst_pointers.h"

namespace platform::gstreamer {
namespace {

struct TagName {
  const char* tag;
  const char16_t* property;
};

/// Of several tags for one property the first that is present counts. An Icecast stream names its station
/// in the tag "organization" and the station's page in "location".
constexpr std::array kTextTags = {
    TagName{GST_TAG_TITLE, u"Title"},
    TagName{GST_TAG_ARTIST, u"Author"},
    TagName{GST_TAG_ALBUM, u"Album"},
    TagName{GST_TAG_GENRE, u"Genre"},
    TagName{GST_TAG_ORGANIZATION, u"StationName"},
    TagName{GST_TAG_LOCATION, u"StationUrl"},
    TagName{GST_TAG_COMMENT, u"Comment"},
    TagName{GST_TAG_COPYRIGHT, u"Copyright"},
    TagName{GST_TAG_AUDIO_CODEC, u"AudioCodec"},
};
constexpr std::array<std::u16string_view, 12> kOrder = {
    u"Title",   u"Author",    u"Album",      u"Genre",   u"StationName", u"StationUrl",
    u"Comment", u"Copyright", u"AudioCodec", u"BitRate", u"SampleRate",  u"Channels"};

constexpr std::array<std::u16string_view, 5> kShortCodecNames = {u"MP3", u"AAC", u"Vorbis", u"Opus", u"FLAC"};

void MergeText(const GstTagList& tags, const TagName& name, Properties& properties) {
  gchar* raw = nullptr;
  if (!gst_tag_list_get_string_index(&tags, name.tag, 0, &raw)) return;
  const GStringPointer text(raw);
  properties[name.property] = {PropertyType::kWideString, TextFromUtf8(text.get())};
}

}  // namespace

void MergeTags(const GstTagList& tags, Properties& properties) {
  for (const TagName& name : kTextTags) MergeText(tags, name, properties);
  guint bit_rate = 0;
  const bool known = gst_tag_list_get_uint(&tags, GST_TAG_NOMINAL_BITRATE, &bit_rate) ||
                     gst_tag_list_get_uint(&tags, GST_TAG_BITRATE, &bit_rate);
  if (known && bit_rate > 0) properties[u"BitRate"] = NumberProperty(bit_rate);
}

std::vector<Text> OrderedNames(const Properties& properties) {
  std::vector<Text> names;
  for (const auto name : kOrder) {
    if (properties.contains(Text(name))) names.emplace_back(name);
  }
  return names;
}

int BitRate(const Properties& properties) {
  const auto found = properties.find(u"BitRate");
  return found == properties.end() ? 0 : static_cast<int>(std::get<std::int64_t>(found->second.payload));
}

Text ShortCodecName(const Properties& properties) {
  const auto found = properties.find(u"AudioCodec");
  if (found == properties.end()) return {};
  const Text& name = std::get<Text>(found->second.payload);
  for (const std::u16string_view known : kShortCodecNames) {
    if (name.find(known) != Text::npos) return Text(known);
  }
  return name;
}

PropertyValue NumberProperty(std::uint32_t number) {
  return {PropertyType::kUInt32, static_cast<std::int64_t>(number)};
}

}  // namespace platform::gstreamer
