#pragma once
// A stream client on real sockets, real files and the real clock, for tests of the whole path.
// Not for tests of single rules; those run on doubles.

#include <memory>
#include <string>

#include "files_under_test.h"
#include "stream/cls_funkhaus.h"
#include "tests/contracts/internet/internet_rig.h"
#include "tests/support/temp_folder.h"

namespace platform {

struct ClientRig : InternetRig {
  explicit ClientRig(const under_test::InternetSettings& settings = {}) : InternetRig(settings) {
    environment.program_folder = folder.TextPath();
  }

  under_test::XmlHttpRequests requests{conversion};
  under_test::Disk disk;
  RecordFiles& files = disk.record_files;
  test_support::FakeEnvironment environment;
  under_test::NetClock clock;
  test_support::TempFolder folder;
  std::unique_ptr<stream::clsFunkhaus> client = std::make_unique<stream::clsFunkhaus>(
      stream::Ports{internet, requests, files, environment, clock, loop, conversion});
};

}  // namespace platform
