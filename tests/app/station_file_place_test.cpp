#include "app/settings/station_file_place.h"

#include <gtest/gtest.h>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"
#include "tests/support/recording_profile.h"

namespace app {
namespace {

TEST(PlacesOfStationFile, AreInTheSettingsFolderWhichIsMade) {
  test_support::RecordingProfile profile;
  test_support::MemoryFiles files;
  test_support::FakeEnvironment environment;
  environment.variables[u"APPDATA"] = u"C:\\Daten";
  const StationFilePlaces places = PlacesOfStationFile(profile, files, environment);
  EXPECT_EQ(places.station_file, u"C:\\Daten\\Ordnerzentrale\\Funkhaus.ini");
  EXPECT_EQ(places.option_file, u"C:\\Daten\\Ordnerzentrale\\Opt.ini");
  EXPECT_FALSE(files.created_folders.empty());
}

}  // namespace
}  // namespace app
