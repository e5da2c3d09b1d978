#include "stream/header_lines.h"

#include <array>
#include <cstddef>
#include <optional>

#include "app/text/text_helpers.h"

namespace stream {
namespace {

constexpr std::array<TextView, kHeaderNameCount> kHeaderNames = {
    u"icy-name", u"ice-audio-info", u"icy-audio-info", u"icy-description", u"icy-br", u"icy-sr", u"icy-genre",
    u"icy-url",  u"icy-pub",        u"icy-metaint",    u"Content-Type",    u"Server", u"Date",   u"Expires"};

std::optional<Text> ValueOf(TextView line, std::int32_t eQueryData) {
  const std::optional<TextView> second = PieceOf(line, u':', 1);
  if (!second) return std::nullopt;
  Text value(app::Trim(*second));
  if (eQueryData != kIcyUrl) return value;
  const std::optional<TextView> third = PieceOf(line, u':', 2);
  if (!third) return std::nullopt;
  return value + u":" + Text(app::Trim(*third));
}

}  // namespace

TextView HeaderName(std::int32_t eQueryData) {
  if (eQueryData < 0 || eQueryData >= kHeaderNameCount) return {};
  return kHeaderNames[static_cast<std::size_t>(eQueryData)];
}

Text HeaderValues(const std::vector<Text>& lines, std::int32_t eQueryData) {
  const TextView name = HeaderName(eQueryData);
  if (name.empty()) return {};
  Text values;
  for (const Text& line : lines) {
    const std::optional<TextView> line_name = PieceOf(line, u':', 0);
    if (!line_name || !EqualsIgnoringCase(*line_name, name)) continue;
    const std::optional<Text> value = ValueOf(line, eQueryData);
    if (!value) return {};
    values += *value + u",";
  }
  if (values.ends_with(u',')) values.pop_back();
  return values;
}

}  // namespace stream
