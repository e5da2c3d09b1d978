#include "tests/support/temp_folder.h"

#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace test_support {
namespace {

std::filesystem::path Named(const std::string& name) { return std::u8string(name.begin(), name.end()); }

}  // namespace

TempFolder::TempFolder(const std::filesystem::path& parent) {
  constexpr int kMostTries = 100;
  std::random_device random;
  for (int tries = 0; tries < kMostTries; ++tries) {
    const auto path = parent / ("funkhaus-test-" + std::to_string(random()) + std::to_string(random()));
    std::error_code error;
    if (!std::filesystem::create_directory(path, error)) continue;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all, error);
    path_ = std::filesystem::canonical(path);
    return;
  }
  throw std::runtime_error("no scratch folder");
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

platform::Text TempFolder::TextPath(const std::string& name) const {
  std::filesystem::path path = name.empty() ? path_ : path_ / Named(name);
  return path.make_preferred().u16string();
}

std::filesystem::path TempFolder::Write(const std::string& name, const std::string& bytes) const {
  const auto target = path_ / Named(name);
  std::filesystem::create_directories(target.parent_path());
  std::ofstream(target, std::ios::binary) << bytes;
  return target;
}

std::string TempFolder::Read(const std::string& name) const {
  std::ifstream file(path_ / Named(name), std::ios::binary);
  if (!file) return "<missing>";
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace test_support
