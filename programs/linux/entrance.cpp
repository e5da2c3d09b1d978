#include "programs/linux/entrance.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/settings/station_file_place.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/environment.h"
#include "platform/posix/files.h"
#include "platform/posix/native_names.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "platform/posix/single_start.h"
#include "platform/posix/temporary_file.h"

namespace {

using platform::posix::SingleStart;

/// How long a running copy may take to answer, or to end.
constexpr std::chrono::seconds kLongestWait{5};

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

/// The desktop sets one or both; the newer name first.
std::string ActivationToken() {
  std::string token = Variable("XDG_ACTIVATION_TOKEN");
  return token.empty() ? Variable("DESKTOP_STARTUP_ID") : token;
}

/// This start's own files, as the system names them.
struct OwnFiles {
  SingleStart::Places start;
  std::array<std::string, 3> replaced;  ///< those that the program replaces as a whole
};

OwnFiles FilesOfThisStart() {
  platform::posix::PosixNativePaths paths;
  platform::icu::IcuTextConversion conversion;
  platform::posix::PosixProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile(paths, profile_files, conversion);
  platform::posix::PosixFiles files(paths);
  platform::posix::PosixEnvironment environment(paths);
  const app::StationFilePlaces places = app::PlacesOfStationFile(profile, files, environment);
  const auto state_file = [&](const platform::Text& extension) {
    return paths.ToNative(environment.StateFile(places.station_file, extension));
  };
  return {{state_file(u".lock"), state_file(u".socket")},
          {paths.ToNative(places.station_file), paths.ToNative(places.option_file), state_file(u".unsaved")}};
}

/// What a copy of the program left beside its files when it was killed while it replaced one.
void RemoveWhatWasLeft(const OwnFiles& files) {
  for (const std::string& file : files.replaced) {
    if (const auto target = platform::posix::FollowLinks(file)) platform::posix::RemoveLeftovers(*target);
  }
}

}  // namespace

struct Entrance::Parts {
  explicit Parts(const std::string& argument)
      : files(FilesOfThisStart()), start(files.start, {ActivationToken(), argument}, kLongestWait) {
    if (start.Get() == SingleStart::Outcome::kRuns) RemoveWhatWasLeft(files);
  }

  const OwnFiles files;
  SingleStart start;
};

Entrance::Entrance(const std::string& argument) : parts_(std::make_unique<Parts>(argument)) {}

Entrance::~Entrance() = default;

std::optional<int> Entrance::ExitCode() const {
  switch (parts_->start.Get()) {
    case SingleStart::Outcome::kRuns:
      return std::nullopt;
    case SingleStart::Outcome::kHandedOver:
      return EXIT_SUCCESS;
    case SingleStart::Outcome::kUnanswered:
      break;
  }
  std::fputs("Funkhausplayer läuft bereits, antwortet aber nicht.\n", stderr);
  return EXIT_FAILURE;
}

platform::StartRequests* Entrance::Requests() const { return parts_->start.Requests(); }
