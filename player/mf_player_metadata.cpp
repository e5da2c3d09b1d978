// The playback position, the item's length, and its named properties as texts.
#include <cstdlib>
#include <string>
#include <variant>

#include "app/text/numbers.h"
#include "player/mf_player.h"
#include "ports/media_interfaces.h"

namespace player {

namespace {

constexpr double kUnitsPerSecond = 10'000'000.0;

/// At least two digits, with a minus sign in front of them for a number below zero.
void AppendTwoDigits(Text& text, std::int64_t number) {
  const std::string digits = std::to_string(std::abs(number));
  if (number < 0) text += u'-';
  if (digits.size() < 2) text += u'0';
  text.append(digits.begin(), digits.end());
}

std::vector<Text> SplitAtSemicolons(const Text& text) {
  std::vector<Text> parts;
  if (text.empty()) return parts;
  std::size_t begin = 0;
  for (std::size_t end = text.find(u';'); end != Text::npos; end = text.find(u';', begin)) {
    parts.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  parts.push_back(text.substr(begin));
  return parts;
}

Text JoinedBySemicolons(const std::vector<Text>& parts) {
  Text text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) text += u';';
    text += parts[i];
  }
  return text;
}

/// The types whose values are changed into one string.
bool IsSingleValue(platform::PropertyType type) {
  using enum platform::PropertyType;
  switch (type) {
    case kBoolean:
    case kString:
    case kAnsiString:
    case kWideString:
    case kInt:
    case kUInt:
    case kInt8:
    case kUInt8:
    case kInt16:
    case kUInt16:
    case kInt32:
    case kUInt32:
    case kInt64:
    case kUInt64:
    case kFloat:
    case kDouble:
    case kGuid:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::int64_t clsMFPlayer::CurrentPlayPosition() {
  std::int64_t clock_time = 0;
  std::int64_t system_time = 0;
  const CallResult result = caller_.CallInterface(clock_.Get(), platform::IMFClock::GetCorrelatedTime,
                                                  std::int32_t{0}, &clock_time, &system_time);
  return IsOk(result) ? clock_time : 0;
}

Text clsMFPlayer::CurrentPlayPositionHMS() { return CurrencyTime2HMS(CurrentPlayPosition()); }

std::int64_t clsMFPlayer::Duration() const { return duration_.value; }

Text clsMFPlayer::DurationHMS() const { return CurrencyTime2HMS(duration_.value); }

Text clsMFPlayer::CurrencyTime2HMS(std::int64_t time) {
  const auto seconds =
      static_cast<std::int64_t>(app::RoundTiesToEven(static_cast<double>(time) / kUnitsPerSecond));
  const std::int64_t rest = seconds % 3600;
  Text text;
  AppendTwoDigits(text, seconds / 3600);
  text += u':';
  AppendTwoDigits(text, rest / 60);
  text += u':';
  AppendTwoDigits(text, rest % 60);
  return text;
}

std::int32_t clsMFPlayer::GetAllMetadataNames(std::vector<Text>& names) {
  if (!metadata_) return 0;
  platform::PropertyValue value;
  if (!IsOk(caller_.CallInterface(metadata_.Get(), platform::IMFMetadata::GetAllPropertyNames, &value))) {
    return 1;
  }
  Text text;
  PropVariantToText(value, text);
  names = SplitAtSemicolons(text);
  return static_cast<std::int32_t>(names.size());
}

std::int32_t clsMFPlayer::GetMetadata(const Text& StrName, Text& strWert) {
  if (!metadata_) return 0;
  platform::PropertyValue value;
  if (!IsOk(caller_.CallInterface(metadata_.Get(), platform::IMFMetadata::GetProperty, &StrName, &value))) {
    return 0;
  }
  PropVariantToText(value, strWert);
  return 1;
}

void clsMFPlayer::PropVariantToText(platform::PropertyValue& value, Text& text) {
  text.clear();
  platform::PropertyValue changed;
  if (IsSingleValue(value.type)) {
    const bool ok =
        IsOk(ports_.values.PropVariantChangeType(changed, value, 0, platform::PropertyType::kString));
    if (const auto* string = std::get_if<Text>(&changed.payload); ok && string != nullptr) text = *string;
  } else if (value.type == platform::PropertyType::kWideStringVector) {
    const bool ok =
        IsOk(ports_.values.PropVariantChangeType(changed, value, 0, platform::PropertyType::kStringArray));
    const auto* list = std::get_if<std::vector<Text>>(&changed.payload);
    if (ok && list != nullptr) text = JoinedBySemicolons(*list);
  }
  ports_.values.PropVariantClear(changed);
  ports_.values.PropVariantClear(value);
}

}  // namespace player
