#include "ui/playback_sentence.h"

#include <cstdint>

#include "app/state/status_sentences.h"
#include "app/text/numbers.h"

namespace ui {

using app::FormatNumber;
using app::Text;
using platform::PlaybackFailure;
using platform::PlaybackState;
using platform::PlaybackStatus;
namespace sentences = app::sentences;

namespace {

/// Encoders are set to multiples of 8 kbit/s; a measured rate varies around what was set.
Text KilobitsPerSecond(int bits_per_second) {
  return FormatNumber((std::int64_t{bits_per_second} + 4000) / 8000 * 8);
}

Sentence Playing(const PlaybackStatus& status, const Text& station) {
  const Text rate = KilobitsPerSecond(status.bit_rate);
  const bool has_rate = rate != u"0";
  if (status.codec.empty() && !has_rate) return {sentences::kPlaying, {station}};
  if (status.codec.empty()) return {sentences::kPlayingRate, {station, rate}};
  if (!has_rate) return {sentences::kPlayingCodec, {station, status.codec}};
  return {sentences::kPlayingCodecAndRate, {station, status.codec, rate}};
}

Sentence Reconnecting(const PlaybackStatus& status, const Text& station) {
  if (status.seconds_to_next_try == 0) return {sentences::kReconnecting, {station}};
  return {sentences::kReconnectingIn, {station, FormatNumber(status.seconds_to_next_try)}};
}

Sentence BadHttpStatus(int code, const Text& station) {
  switch (code) {
    case 401:
      return {sentences::kLoginWanted, {station}};
    case 403:
      return {sentences::kForbidden, {station}};
    case 404:
    case 410:
      return {sentences::kUnknownAddress, {station}};
    default:
      return {code / 100 == 5 ? sentences::kServerTrouble : sentences::kHttpStatus,
              {station, FormatNumber(code)}};
  }
}

Sentence NoDecoder(const PlaybackStatus& status, const Text& station) {
  if (status.package.empty()) return {sentences::kNoDecoder, {station, status.format}};
  return {sentences::kNoDecoderPackage, {station, status.format, status.package}};
}

app::TextView PlainFailure(PlaybackFailure failure) {
  switch (failure) {
    case PlaybackFailure::kBadAddress:
      return sentences::kBadAddress;
    case PlaybackFailure::kUnknownHost:
      return sentences::kUnknownHost;
    case PlaybackFailure::kNoAnswer:
      return sentences::kNoAnswer;
    case PlaybackFailure::kRefused:
      return sentences::kRefused;
    case PlaybackFailure::kHungUp:
      return sentences::kHungUp;
    case PlaybackFailure::kTooManyRedirects:
      return sentences::kTooManyRedirects;
    case PlaybackFailure::kCertificateExpired:
      return sentences::kCertificateExpired;
    case PlaybackFailure::kCertificateNotYetValid:
      return sentences::kCertificateNotYetValid;
    case PlaybackFailure::kCertificateOtherName:
      return sentences::kCertificateOtherName;
    case PlaybackFailure::kCertificateUnknownIssuer:
      return sentences::kCertificateUnknownIssuer;
    case PlaybackFailure::kNoSecureConnection:
      return sentences::kNoSecureConnection;
    case PlaybackFailure::kWebPage:
      return sentences::kWebPage;
    case PlaybackFailure::kNotFound:
      return sentences::kFileNotFound;
    case PlaybackFailure::kNoAccess:
      return sentences::kFileNoAccess;
    case PlaybackFailure::kUnreadable:
      return sentences::kUnreadable;
    case PlaybackFailure::kNoSoundDevice:
      return sentences::kNoSoundDevice;
    case PlaybackFailure::kConnectionLost:
      return sentences::kConnectionLost;
    default:
      return sentences::kCannotPlay;
  }
}

Sentence Failed(const PlaybackStatus& status, const Text& station) {
  if (status.failure == PlaybackFailure::kHttpStatus) return BadHttpStatus(status.http_status, station);
  if (status.failure == PlaybackFailure::kNoDecoder) return NoDecoder(status, station);
  return {PlainFailure(status.failure), {station}};
}

}  // namespace

Sentence SentenceOf(const PlaybackStatus& status, const Text& station) {
  switch (status.state) {
    case PlaybackState::kConnecting:
      return {sentences::kConnecting, {station}};
    case PlaybackState::kBuffering:
      return {sentences::kBuffering, {station, FormatNumber(status.buffered_percent)}};
    case PlaybackState::kPlaying:
      return Playing(status, station);
    case PlaybackState::kPaused:
      return {sentences::kPaused, {station}};
    case PlaybackState::kReconnecting:
      return Reconnecting(status, station);
    case PlaybackState::kNoDevice:
      return {sentences::kNoDevice, {station}};
    case PlaybackState::kEnded:
      return {sentences::kEnded, {station}};
    case PlaybackState::kFailed:
      return Failed(status, station);
    case PlaybackState::kStopped:
      break;
  }
  return {sentences::kStopped, {}};
}

}  // namespace ui
