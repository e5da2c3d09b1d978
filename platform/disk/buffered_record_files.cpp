#include "platform/disk/buffered_record_files.h"

#include <utility>

namespace platform::disk {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

}  // namespace

BufferedRecordFiles::~BufferedRecordFiles() {
  for (auto& [handle, recording] : recordings_) FlushBuffer(recording);
}

RecordFile BufferedRecordFiles::Keep(std::unique_ptr<OpenRecording> file) {
  const RecordFile handle{++last_recording_};
  recordings_.emplace(handle, Recording{std::move(file), {}});
  return handle;
}

bool BufferedRecordFiles::FlushBuffer(Recording& recording) {
  std::size_t written = 0;
  const bool complete = recording.file->Write(recording.buffer, written);
  recording.buffer.erase(0, written);
  return complete;
}

bool BufferedRecordFiles::WriteBytes(RecordFile file, std::span<const std::byte> bytes) {
  const auto found = recordings_.find(file);
  if (found == recordings_.end()) return false;
  Recording& recording = found->second;
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  while (!rest.empty()) {
    if (recording.buffer.size() >= kBufferSize && !FlushBuffer(recording)) return false;
    const std::string_view part = rest.substr(0, kBufferSize - recording.buffer.size());
    recording.buffer += part;
    rest.remove_prefix(part.size());
  }
  return true;
}

bool BufferedRecordFiles::Flush(RecordFile file) {
  const auto found = recordings_.find(file);
  return found != recordings_.end() && FlushBuffer(found->second) && found->second.file->HasName();
}

void BufferedRecordFiles::Close(RecordFile file) {
  const auto found = recordings_.find(file);
  if (found == recordings_.end()) return;
  FlushBuffer(found->second);
  recordings_.erase(found);
}

}  // namespace platform::disk
