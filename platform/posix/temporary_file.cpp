#include "platform/posix/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string_view>
#include <utility>

#include "platform/posix/native_names.h"

namespace platform::posix {
namespace {

constexpr std::size_t kDigits = 16;
constexpr std::string_view kEnding = ".tmp";

std::string Hexadecimal(std::uint64_t number) {
  std::array<char, kDigits + 1> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
  return digits.data();
}

/// FNV-1a, http://www.isthe.com/chongo/tech/comp/fnv/: the same in every build of the program. The name
/// itself may be as long as a name can be, so that nothing can be added to it.
std::uint64_t HashOf(std::string_view name) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  return hash;
}

/// How the names of all temporary files of the target begin.
std::string BeginningFor(const std::string& target) {
  const std::string_view name = std::string_view(target).substr(target.rfind('/') + 1);
  return ".funkhaus-" + Hexadecimal(HashOf(name)) + "-";
}

bool IsTemporaryName(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning) || !name.ends_with(kEnding)) return false;
  if (name.size() != beginning.size() + kDigits + kEnding.size()) return false;
  return name.substr(beginning.size(), kDigits).find_first_not_of("0123456789abcdef") ==
         std::string_view::npos;
}

std::string RandomDigits() {
  std::random_device random;
  return Hexadecimal(std::uint64_t{random()} << 32 | random());
}

bool HasName(const FileDescriptor& file) {
  struct stat status {};
  return ::fstat(file.Get(), &status) == 0 && status.st_nlink > 0;
}

/// Another program may have found the file before it was locked and taken it for a leftover.
bool Own(const FileDescriptor& file) {
  const bool is_taken = ::flock(file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  return !is_taken && HasName(file);
}

/// The writer of the file keeps its lock until it has its final name.
void RemoveUnlessWritten(const std::string& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  struct stat status {};
  if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
}

}  // namespace

TemporaryFile::TemporaryFile(std::string target, mode_t permissions) : target_(std::move(target)) {
  constexpr int kMostTries = 100;
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (Make(permissions) == Attempt::kIsOver) return;
  }
}

TemporaryFile::~TemporaryFile() {
  if (IsOpen() && !has_replaced_) ::unlink(path_.c_str());
}

TemporaryFile::Attempt TemporaryFile::Make(mode_t permissions) {
  constexpr int kAnew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  path_ = FolderOf(target_) + "/" + BeginningFor(target_) + RandomDigits() + std::string(kEnding);
  file_ = FileDescriptor(::open(path_.c_str(), kAnew, permissions));
  if (!file_.IsOpen()) return errno == EEXIST ? Attempt::kDeservesAnother : Attempt::kIsOver;
  if (Own(file_)) return Attempt::kIsOver;
  file_.Close();
  return Attempt::kDeservesAnother;
}

bool TemporaryFile::ReplaceTarget() {
  has_replaced_ = ::rename(path_.c_str(), target_.c_str()) == 0;
  return has_replaced_;
}

void RemoveLeftovers(const std::string& target) {
  const std::string folder = FolderOf(target);
  const std::string beginning = BeginningFor(target);
  for (const std::string& name : NamesIn(folder)) {
    if (IsTemporaryName(name, beginning)) RemoveUnlessWritten(folder + "/" + name);
  }
}

}  // namespace platform::posix
