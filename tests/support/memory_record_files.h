#pragma once
// Test double of the recording port: files in memory, with refusals and a full disk at will.
// Not the rules of a real file system; those are the adapter's tests.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "ports/record_files.h"

namespace test_support {

class MemoryRecordFiles : public platform::RecordFiles {
 public:
  using Text = platform::Text;

  platform::RecordFile OpenBinary(const Text& folder, const Text& file_name) override {
    opened.push_back(folder + u"\\" + file_name);
    if (refused.contains(file_name)) return platform::RecordFile::kNone;
    files[file_name];
    const platform::RecordFile file{++last_};
    open_[file] = {file_name, 0};
    return file;
  }

  platform::NewRecordFile CreateBinary(const Text& folder, const Text& file_name) override {
    if (on_create) on_create(file_name);
    if (files.contains(file_name)) return {platform::RecordFile::kNone, true};
    return {OpenBinary(folder, file_name)};
  }

  bool WriteBytes(platform::RecordFile file, std::span<const std::byte> bytes) override {
    Place& place = open_.at(file);
    std::string& contents = files[place.name];
    write_sizes.push_back(bytes.size());
    for (const std::byte byte : bytes) {
      if (free_bytes == 0) return false;
      --free_bytes;
      if (place.at == contents.size()) contents += '\0';
      contents[place.at++] = static_cast<char>(byte);
    }
    return true;
  }

  bool Flush(platform::RecordFile file) override {
    ++flushes;
    return open_.contains(file) && !flush_fails;
  }

  void Close(platform::RecordFile file) override {
    if (open_.erase(file) == 1 && on_close) on_close();
  }

  std::size_t LongestFileName(const Text& /*folder*/) override { return longest_file_name; }

  std::map<Text, std::string> files;
  std::vector<Text> opened;
  std::set<Text> refused;
  std::vector<std::size_t> write_sizes;
  std::size_t free_bytes = 1 << 30;
  std::size_t longest_file_name = 255;
  bool flush_fails = false;
  int flushes = 0;
  /// Runs before a new file is created, to do what another program might do at that moment.
  std::function<void(const Text& file_name)> on_create;
  /// Runs when an open file is closed.
  std::function<void()> on_close;
  [[nodiscard]] std::size_t OpenFiles() const { return open_.size(); }

 private:
  struct Place {
    Text name;
    std::size_t at = 0;
  };
  std::map<platform::RecordFile, Place> open_;
  std::uint32_t last_ = 0;
};

}  // namespace test_support
