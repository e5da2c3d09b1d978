#include "programs/windows/sound_connection.h"

#include "platform/values/portable_property_values.h"
#include "platform/win32/media/property_values.h"
#include "platform/win32/media/win32_media.h"

struct SoundConnection::Parts {
  explicit Parts(platform::MessageLoop& loop) : media(loop) {}

  platform::win32::Win32Media media;
  platform::values::PortablePropertyValues portable_values;
  platform::win32::Win32PropertyValues values{portable_values};
};

SoundConnection::SoundConnection(platform::MessageLoop& loop) : parts_(std::make_unique<Parts>(loop)) {}

SoundConnection::~SoundConnection() = default;

platform::MediaFramework& SoundConnection::Framework() const { return parts_->media; }
platform::InterfaceCalls& SoundConnection::Calls() const { return parts_->media; }
platform::PlaybackMonitor& SoundConnection::Monitor() const { return parts_->media; }
platform::PropertyValues& SoundConnection::Values() const { return parts_->values; }
