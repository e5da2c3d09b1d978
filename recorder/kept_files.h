#pragma once
// The files of a recording under names that are still free, so that nothing recorded is ever overwritten.
// Not the disk: bytes go to the recording port below.

#include <cstddef>
#include <cstdint>
#include <span>

#include "ports/files.h"
#include "ports/record_files.h"
#include "ports/text.h"

namespace recorder {

/// One file at a time. Differs from the port's rule on purpose: a name that exists already, from an earlier
/// title, connection or run, or from another program that records at the same time, gets " (2)", " (3)" ...
/// before its extension; opening the last name again continues its file where it ended, until EndConnection.
/// A dot at the beginning of a name becomes "_", so that no file is hidden. A file is created with its first
/// byte, so that none is empty; when the user removes a file while it grows, the next bytes begin another
/// one.
class KeptFiles final : public platform::RecordFiles {
 public:
  using Text = platform::Text;

  KeptFiles(platform::RecordFiles& inner, platform::Files& files) : inner_(inner), files_(files) {}
  ~KeptFiles() override { EndConnection(); }
  KeptFiles(const KeptFiles&) = delete;
  KeptFiles& operator=(const KeptFiles&) = delete;

  platform::RecordFile OpenBinary(const Text& folder, const Text& file_name) override;
  /// Same as OpenBinary, because every file here is a new one.
  platform::NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override;
  bool WriteBytes(platform::RecordFile file, std::span<const std::byte> bytes) override;
  bool Flush(platform::RecordFile file) override;
  /// The file stays open below, because the same name may be opened again.
  void Close(platform::RecordFile file) override;
  std::size_t LongestFileName(const Text& folder) override;

  /// Closes the current file for good.
  void EndConnection();

  /// Since the object was made.
  [[nodiscard]] std::uint64_t Bytes() const { return bytes_; }
  [[nodiscard]] std::uint64_t Files() const { return file_count_; }
  enum class Failure {
    kNone,
    kNotMade,    ///< a file could not be made (no permission, no folder)
    kNotWritten  ///< a file takes no more bytes (disk full)
  };
  [[nodiscard]] Failure GetFailure() const { return failure_; }

 private:
  bool MakeFile();
  bool Fail(Failure failure);

  platform::RecordFiles& inner_;
  platform::Files& files_;
  Text folder_;
  Text wanted_name_;
  Text path_;
  platform::RecordFile current_ = platform::RecordFile::kNone;
  platform::RecordFile below_ = platform::RecordFile::kNone;
  std::uint32_t last_ = 0;
  std::uint64_t bytes_ = 0;
  std::uint64_t file_count_ = 0;
  Failure failure_ = Failure::kNone;
};

/// The file name with " (number)" before its extension, when that is one of a recording, or at its end.
[[nodiscard]] platform::Text NumberedName(const platform::Text& file_name, int number);

}  // namespace recorder
