#include "programs/linux/entrance.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/settings/station_file_place.h"
#include "platform/icu/text_conversion.h"
#include "platform/ini/private_profile.h"
#include "platform/posix/environment.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/profile_files.h"
#include "platform/posix/single_start.h"

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

SingleStart::Places Places() {
  platform::posix::PosixNativePaths paths;
  platform::icu::IcuTextConversion conversion;
  platform::posix::PosixProfileFiles profile_files;
  platform::ini::IniPrivateProfile profile(paths, profile_files, conversion);
  platform::posix::PosixFiles files(paths);
  platform::posix::PosixEnvironment environment(paths);
  const platform::Text station_file = app::StationFilePlace(profile, files, environment);
  return {paths.ToNative(environment.StateFile(station_file, u".lock")),
          paths.ToNative(environment.StateFile(station_file, u".socket"))};
}

}  // namespace

struct Entrance::Parts {
  explicit Parts(const std::string& argument)
      : start(Places(), {ActivationToken(), argument}, kLongestWait) {}

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
