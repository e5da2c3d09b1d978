#include "platform/gstreamer/missing_decoder.h"

#include <gst/pbutils/pbutils.h>

#include <array>
#include <string_view>

#include "platform/gstreamer/address.h"
#include "platform/gstreamer/gst_pointers.h"

namespace platform::gstreamer {
namespace {

constexpr std::u16string_view kBase = u"gstreamer1.0-plugins-base";
constexpr std::u16string_view kGood = u"gstreamer1.0-plugins-good";
constexpr std::u16string_view kBad = u"gstreamer1.0-plugins-bad";
constexpr std::u16string_view kUgly = u"gstreamer1.0-plugins-ugly";
constexpr std::u16string_view kLibav = u"gstreamer1.0-libav";

struct Provider {
  std::string_view type;
  std::u16string_view package;
};

/// From the field "Gstreamer-Decoders" of Debian's packages; of several the smallest one.
constexpr std::array kProviders = {
    Provider{"application/ogg", kBase},
    Provider{"audio/ogg", kBase},
    Provider{"audio/x-opus", kBase},
    Provider{"audio/x-vorbis", kBase},
    Provider{"application/x-apetag", kGood},
    Provider{"application/x-icy", kGood},
    Provider{"application/x-id3", kGood},
    Provider{"audio/webm", kGood},
    Provider{"audio/x-alaw", kGood},
    Provider{"audio/x-au", kGood},
    Provider{"audio/x-flac", kGood},
    Provider{"audio/x-m4a", kGood},
    Provider{"audio/x-matroska", kGood},
    Provider{"audio/x-mulaw", kGood},
    Provider{"audio/x-speex", kGood},
    Provider{"audio/x-wav", kGood},
    Provider{"audio/x-wavpack", kGood},
    Provider{"video/quicktime", kGood},
    Provider{"video/webm", kGood},
    Provider{"video/x-flv", kGood},
    Provider{"video/x-matroska", kGood},
    Provider{"video/x-msvideo", kGood},
    Provider{"application/dash+xml", kBad},
    Provider{"application/vnd.ms-sstr+xml", kBad},
    Provider{"application/x-hls", kBad},
    Provider{"audio/midi", kBad},
    Provider{"audio/riff-midi", kBad},
    Provider{"audio/x-aiff", kBad},
    Provider{"audio/x-dts", kBad},
    Provider{"audio/x-gsm", kBad},
    Provider{"audio/x-mod", kBad},
    Provider{"audio/x-musepack", kBad},
    Provider{"video/mpegts", kBad},
    Provider{"application/vnd.rn-realmedia", kUgly},
    Provider{"application/x-pn-realaudio", kUgly},
    Provider{"audio/AMR", kUgly},
    Provider{"audio/AMR-WB", kUgly},
    Provider{"audio/ac3", kUgly},
    Provider{"audio/x-ac3", kUgly},
    Provider{"audio/x-lpcm", kUgly},
    Provider{"audio/x-sid", kUgly},
    Provider{"video/x-ms-asf", kUgly},
    Provider{"application/x-ape", kLibav},
    Provider{"audio/G722", kLibav},
    Provider{"audio/G729", kLibav},
    Provider{"audio/aptx", kLibav},
    Provider{"audio/x-adpcm", kLibav},
    Provider{"audio/x-alac", kLibav},
    Provider{"audio/x-eac3", kLibav},
    Provider{"audio/x-mlp", kLibav},
    Provider{"audio/x-pn-realaudio", kLibav},
    Provider{"audio/x-qdm2", kLibav},
    Provider{"audio/x-shorten", kLibav},
    Provider{"audio/x-sipro", kLibav},
    Provider{"audio/x-true-hd", kLibav},
    Provider{"audio/x-tta", kLibav},
    Provider{"audio/x-ttafile", kLibav},
    Provider{"audio/x-vnd.sony.atrac3", kLibav},
    Provider{"audio/x-wma", kLibav},
    Provider{"audio/x-wms", kLibav},
};

/// One name for MP1 to MP3 and for every AAC, which different packages decode.
std::u16string_view PackageForMpeg(const GstStructure& format) {
  gint version = 0;
  gst_structure_get_int(&format, "mpegversion", &version);
  if (version == 1) return kGood;
  const gchar* stream_format = gst_structure_get_string(&format, "stream-format");
  return g_strcmp0(stream_format, "loas") == 0 ? kLibav : kBad;
}

std::u16string_view PackageFor(const GstStructure& format, std::string_view type) {
  if (type == "audio/mpeg") return PackageForMpeg(format);
  for (const Provider& provider : kProviders) {
    if (provider.type == type) return provider.package;
  }
  return {};
}

}  // namespace

FailureCause CauseOfMissingDecoder(const GstCaps& caps) {
  if (gst_caps_is_any(&caps) || gst_caps_is_empty(&caps)) return {PlaybackFailure::kUnreadable};
  const GstStructure* format = gst_caps_get_structure(&caps, 0);
  const std::string_view type = gst_structure_get_name(format);
  if (type.starts_with("text/")) return {PlaybackFailure::kWebPage};
  if (type.starts_with("image/")) return {PlaybackFailure::kUnreadable};
  const GStringPointer name(gst_pb_utils_get_codec_description(&caps));
  return {PlaybackFailure::kNoDecoder, 0, name ? TextFromUtf8(name.get()) : Text(),
          Text(PackageFor(*format, type))};
}

}  // namespace platform::gstreamer
