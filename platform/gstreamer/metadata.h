#pragma once
// The properties of an item by public name, made from the tags that GStreamer finds.
// Not their conversion to text; that is the port PropertyValues.

#include <gst/gst.h>

#include <map>
#include <vector>

#include "ports/property_value.h"
#include "ports/text.h"

namespace platform::gstreamer {

using Properties = std::map<Text, PropertyValue>;

/// Applies what `tags` says; what it does not mention stays as it was.
void MergeTags(const GstTagList& tags, Properties& properties);

/// The names in the order in which they are shown: what is playing, the station, the format.
std::vector<Text> OrderedNames(const Properties& properties);

/// A 32-bit unsigned value.
PropertyValue NumberProperty(std::uint32_t number);

/// Bits per second; 0 when not known.
int BitRate(const Properties& properties);
/// "MP3" for "MPEG-1 Layer 3 (MP3)"; a codec without a short name keeps its long one; empty when not known.
Text ShortCodecName(const Properties& properties);

}  // namespace platform::gstreamer
