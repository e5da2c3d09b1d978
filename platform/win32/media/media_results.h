#pragma once
// Results of the media framework that the adapter itself gives or asks about. Not the results that the
// program knows (ports/interface_call.h).

#include <cstddef>
#include <cstdint>

#include "ports/interface_call.h"

namespace platform::win32 {

inline constexpr HResult kEAccessDenied = static_cast<HResult>(0x80070005u);
inline constexpr HResult kMfEUnsupportedScheme = static_cast<HResult>(0xC00D36C3u);
inline constexpr HResult kMfEBadStartupVersion = static_cast<HResult>(0xC00D36E3u);
inline constexpr HResult kMfEAttributeNotFound = static_cast<HResult>(0xC00D36E6u);
inline constexpr HResult kMfETopologyNoDecryptor = static_cast<HResult>(0xC00D5211u);
inline constexpr HResult kMfETopologyCodecNotFound = static_cast<HResult>(0xC00D5212u);
inline constexpr HResult kMfENoAudioPlaybackDevice = static_cast<HResult>(0xC00D4E84u);
inline constexpr HResult kMfEAudioPlaybackDeviceInvalidated = static_cast<HResult>(0xC00D4E86u);
/// AUDCLNT_E_DEVICE_INVALIDATED.
inline constexpr HResult kAudioDeviceInvalidated = static_cast<HResult>(0x88890004u);
inline constexpr HResult kMfENetWrite = static_cast<HResult>(0xC00D4269u);
inline constexpr HResult kMfENetRead = static_cast<HResult>(0xC00D426Au);
/// ERROR_INTERNET_NAME_NOT_RESOLVED, _CONNECTION_ABORTED and _CONNECTION_RESET as results.
inline constexpr HResult kInternetNameNotResolved = static_cast<HResult>(0x80072EE7u);
inline constexpr HResult kInternetConnectionAborted = static_cast<HResult>(0x80072EFEu);
inline constexpr HResult kInternetConnectionReset = static_cast<HResult>(0x80072EFFu);
inline constexpr HResult kMfENetTimeout = static_cast<HResult>(0xC00D4278u);

/// Whether a result is one of `first` to `last`, by its bits.
constexpr bool IsWithin(HResult result, std::uint32_t first, std::uint32_t last) {
  const auto code = static_cast<std::uint32_t>(result);
  return code >= first && code <= last;
}

/// From the first to the last.
struct ResultRange {
  std::uint32_t first;
  std::uint32_t last;
};

template <std::size_t Count>
constexpr bool IsWithinAny(HResult result, const ResultRange (&ranges)[Count]) {
  for (const ResultRange& range : ranges) {
    if (IsWithin(result, range.first, range.last)) return true;
  }
  return false;
}

/// What the network or a server has done, as opposed to a device, a decoder or the data: a result of the
/// framework's network sources, old ones and new ones, of Windows' sockets, monikers or Internet libraries,
/// or a status of HTTP.
constexpr bool IsNetworkFailure(HResult result) {
  constexpr ResultRange kRanges[] = {
      {0xC00D0005u, 0xC00D0006u},  // NS_E_NOCONNECTION, _CANNOTCONNECT
      {0xC00D000Eu, 0xC00D000Eu},  // NS_E_NETWORK_BUSY
      {0xC00D0013u, 0xC00D0015u},  // NS_E_TIMEOUT, _NET_WRITE, _NET_READ
      {0xC00D0027u, 0xC00D0029u},  // NS_E_NETWORK_SERVICE_FAILURE to _CONNECTION_FAILURE
      {0xC00D2EE0u, 0xC00D2F0Cu},  // NS_E_UNKNOWN_PROTOCOL to _INCOMPATIBLE_PUSH_SERVER
      {0xC00D4268u, 0xC00D4295u},  // MF_E_NET_...
      {0x800C0000u, 0x800C00FFu},  // INET_E_...
      {0x8007003Bu, 0x8007003Bu},  // ERROR_UNEXP_NET_ERR
      {0x80070040u, 0x80070040u},  // ERROR_NETNAME_DELETED
      {0x80070079u, 0x80070079u},  // ERROR_SEM_TIMEOUT
      {0x800704CAu, 0x800704D4u},  // ERROR_ADDRESS_NOT_ASSOCIATED to ERROR_CONNECTION_ABORTED
      {0x80072710u, 0x80072F9Cu},  // WSAE..., ERROR_INTERNET_..., ERROR_WINHTTP_...
      {0x80190000u, 0x8019FFFFu},  // HTTP_E_STATUS_...
  };
  return IsWithinAny(result, kRanges);
}

/// What the sound's device or the way to it has done. The only sinks here are its renderers.
constexpr bool IsDeviceFailure(HResult result) {
  constexpr ResultRange kRanges[] = {
      {0xC00D36FAu, 0xC00D36FAu},  // MF_E_CANNOT_CREATE_SINK
      {0xC00D4E84u, 0xC00D4E89u},  // MF_E_NO_AUDIO_PLAYBACK_DEVICE to _AUDIO_CLIENT_WRAPPER_SPOOF_ERROR
      {0x88890000u, 0x8889FFFFu},  // AUDCLNT_E_...
  };
  return IsWithinAny(result, kRanges);
}

/// No decoder, or one that refuses: the same sound would not be decoded another time either.
constexpr bool IsDecoderFailure(HResult result) {
  constexpr ResultRange kRanges[] = {
      {0xC00D36B4u, 0xC00D36B4u},  // MF_E_INVALIDMEDIATYPE
      {0xC00D36C4u, 0xC00D36C4u},  // MF_E_UNSUPPORTED_BYTESTREAM_TYPE
      {0xC00D3AA0u, 0xC00D3AA0u},  // MF_E_ASF_UNSUPPORTED_STREAM_TYPE
      {0xC00D3E89u, 0xC00D3E89u},  // MF_E_MP3_NOTSUPPORTED
      {0xC00D3E98u, 0xC00D3E98u},  // MF_E_UNSUPPORTED_FORMAT
      {0xC00D5211u, 0xC00D5214u},  // MF_E_TOPO_CANNOT_FIND_DECRYPTOR to _UNSUPPORTED
      {0xC00D6D60u, 0xC00D6D7Cu},  // MF_E_TRANSFORM_...
  };
  return IsWithinAny(result, kRanges);
}

/// Data that is damaged, no sound, or of another format than before: another connection may bring better.
constexpr bool IsDataFailure(HResult result) {
  constexpr ResultRange kRanges[] = {
      {0xC00D36BEu, 0xC00D36BEu},  // MF_E_INVALID_FILE_FORMAT
      {0xC00D36CBu, 0xC00D36CBu},  // MF_E_INVALID_STREAM_DATA
      {0xC00D36F0u, 0xC00D36F0u},  // MF_E_CANNOT_PARSE_BYTESTREAM
      {0xC00D36FEu, 0xC00D36FEu},  // MF_E_FORMAT_CHANGE_NOT_SUPPORTED
      {0xC00D3A98u, 0xC00D3A9Bu},  // MF_E_ASF_PARSINGINCOMPLETE to _OPAQUEPACKET
      {0xC00D3E86u, 0xC00D3E88u},  // MF_E_MP3_NOTFOUND to _NOTMP3
      {0xC00D3E8Cu, 0xC00D3E8Cu},  // MF_E_INVALID_FORMAT
      {0xC00D3E99u, 0xC00D3E99u},  // MF_E_MP3_BAD_CRC
  };
  return IsWithinAny(result, kRanges);
}

}  // namespace platform::win32
