#pragma once
// A stream client on real sockets, real files and the real clock, for tests of the whole path.
// Not for tests of single rules; those run on doubles.

#include <memory>
#include <string>

#include "platform/curl/curl_xml_http_request.h"
#include "platform/posix/clock.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "stream/cls_funkhaus.h"
#include "tests/contracts/internet/internet_rig.h"
#include "tests/support/temp_folder.h"

namespace platform::curl {

struct ClientRig : InternetRig {
  explicit ClientRig(const InternetSettings& settings = {}) : InternetRig(settings) {
    environment.program_folder = folder.TextPath();
  }

  CurlXmlHttpRequests requests{conversion};
  posix::PosixNativePaths paths;
  posix::PosixRecordFiles files{paths};
  test_support::FakeEnvironment environment;
  posix::PosixClock clock;
  test_support::TempFolder folder;
  std::unique_ptr<stream::clsFunkhaus> client = std::make_unique<stream::clsFunkhaus>(
      stream::Ports{internet, requests, files, environment, clock, loop, conversion});
};

}  // namespace platform::curl
