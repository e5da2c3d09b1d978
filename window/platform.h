#pragma once
// Everything the main window needs from the system. Not an implementation of any of it.

#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/icons.h"
#include "ports/interface_call.h"
#include "ports/internet.h"
#include "ports/media_controls.h"
#include "ports/media_framework.h"
#include "ports/message_loop.h"
#include "ports/notifications.h"
#include "ports/playback_monitor.h"
#include "ports/private_profile.h"
#include "ports/property_value.h"
#include "ports/record_files.h"
#include "ports/shell.h"
#include "ports/sleep_inhibitor.h"
#include "ports/string_order.h"
#include "ports/system_messages.h"
#include "ports/text_conversion.h"
#include "ports/turns.h"
#include "ports/xml_http_request.h"

namespace window {

/// What the player needs for its places outside the window.
struct DesktopPorts {
  platform::MediaControls& media_controls;
  platform::SleepInhibitor& sleep_inhibitor;
  platform::Notifications& notifications;
  platform::Turns& turns;
};

/// All of it outlives the window.
struct Platform {
  platform::PrivateProfile& profile;
  platform::Files& files;
  platform::RecordFiles& record_files;
  platform::Environment& environment;
  platform::TextConversion& conversion;
  platform::StringOrder& string_order;
  platform::Icons& icons;
  platform::Internet& internet;
  platform::XmlHttpRequests& requests;
  platform::MediaFramework& media;
  platform::InterfaceCalls& interface_calls;
  platform::PropertyValues& property_values;
  platform::Dialogs& dialogs;
  platform::Shell& shell;
  platform::Clipboard& clipboard;
  platform::SystemMessages& system_messages;
  platform::MessageLoop& message_loop;
  platform::Clock& clock;
  platform::PlaybackMonitor& playback_monitor;
  DesktopPorts desktop;
  platform::Text guide_address = {};  ///< of the user's guide; empty when there is none
};

}  // namespace window
