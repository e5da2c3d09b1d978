#include "tests/support/temp_folder.h"

#include <stdlib.h>

#include <stdexcept>

namespace test_support {

TempFolder::TempFolder(const std::filesystem::path& parent) {
  std::string pattern = (parent / "funkhaus-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch folder");
  path_ = std::filesystem::canonical(pattern);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

platform::Text TempFolder::TextPath(const std::string& name) const {
  return (name.empty() ? path_ : path_ / name).u16string();
}

std::filesystem::path TempFolder::Write(const std::string& name, const std::string& bytes) const {
  const auto target = path_ / name;
  std::filesystem::create_directories(target.parent_path());
  std::ofstream(target, std::ios::binary) << bytes;
  return target;
}

std::string TempFolder::Read(const std::string& name) const {
  std::ifstream file(path_ / name, std::ios::binary);
  if (!file) return "<missing>";
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace test_support
