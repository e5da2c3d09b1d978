#include "platform/gstreamer/item_services.h"

#include <algorithm>

namespace platform::gstreamer {

ItemServices::ItemServices(const GstMediaOptions& options)
    : framework(options.start_framework),
      output(options),
      pipeline{options.user_agent, options.certificate_file,
               std::max(std::chrono::seconds(1), options.stall_limit)},
      open_deadline(options.open_deadline),
      length_limit(options.length_limit),
      log(options.log) {}

}  // namespace platform::gstreamer
