#include "stream/recorders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "stream/block_rules.h"
#include "stream/icy_demultiplexer.h"
#include "stream/internet_handles.h"
#include "stream/record_name.h"
#include "stream/stream_address.h"

namespace stream {
namespace {

constexpr std::size_t kReadSize = 512;
using ReadBuffer = std::array<std::byte, kReadSize>;

enum class Progress { kGoesOn, kFailed };

// The one open file of a recording.
class RecordingFile {
 public:
  RecordingFile(platform::RecordFiles& files, Text folder, Text extension)
      : files_(files), folder_(std::move(folder)), extension_(std::move(extension)) {}
  ~RecordingFile() { files_.Close(file_); }
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;

  [[nodiscard]] bool IsOpen() const { return file_ != platform::RecordFile::kNone; }

  Progress Open(TextView title) {
    files_.Close(file_);
    file_ = files_.OpenBinary(folder_, RecordFileName(title, extension_, files_.LongestFileName(folder_)));
    return IsOpen() ? Progress::kGoesOn : Progress::kFailed;
  }

  Progress Write(std::span<const std::byte> bytes) {
    return files_.WriteBytes(file_, bytes) ? Progress::kGoesOn : Progress::kFailed;
  }

  // Readers of the file see what a read of the stream brought as soon as it has been dealt with.
  Progress Flush() { return !IsOpen() || files_.Flush(file_) ? Progress::kGoesOn : Progress::kFailed; }

 private:
  platform::RecordFiles& files_;
  Text folder_;
  Text extension_;
  platform::RecordFile file_ = platform::RecordFile::kNone;
};

// Sorts the bytes of a stream into files by title.
class TitleSplitter {
 public:
  TitleSplitter(RecordingFile& file, std::int32_t lMetaInt, const CurrentPlaying& playing)
      : file_(file), demultiplexer_(lMetaInt), playing_(playing) {}

  Progress Take(std::byte byte) {
    switch (demultiplexer_.Take(byte)) {
      case IcyByte::kAudio:
        return file_.IsOpen() ? file_.Write({&byte, 1}) : Progress::kGoesOn;
      case IcyByte::kEmptyBlock:
        return CountEmptyBlock();
      case IcyByte::kBlockComplete:
        return EvaluateBlock();
      default:
        return Progress::kGoesOn;
    }
  }

 private:
  Progress CountEmptyBlock() {
    constexpr int kEmptyBlocksToGiveUp = 2;
    if (file_.IsOpen() || ++empty_blocks_ < kEmptyBlocksToGiveUp) return Progress::kGoesOn;
    empty_blocks_ = 0;
    if (file_.Open(u"unknown") == Progress::kFailed) return Progress::kFailed;
    playing_(u"unknown", {}, {});
    return Progress::kGoesOn;
  }

  Progress EvaluateBlock() {
    const Text block = RemoveAll(CharactersOfSameCode(demultiplexer_.Block()), u"\n");
    for (const BlockField& field : FieldsOf(block)) {
      if (field.value.empty()) continue;
      if (field.kind == BlockField::Kind::kWebAddress) {
        web_address_ = field.value;
        continue;
      }
      title_ = field.value;
      std::replace(title_.begin(), title_.end(), u':', u'_');
      if (file_.Open(title_) == Progress::kFailed) return Progress::kFailed;
    }
    playing_(title_, web_address_, block);
    return Progress::kGoesOn;
  }

  RecordingFile& file_;
  IcyDemultiplexer demultiplexer_;
  const CurrentPlaying& playing_;
  Text title_;
  Text web_address_;
  int empty_blocks_ = 0;
};

}  // namespace

void RecordPlain(StreamState& state, const Text& folder, const Text& extension) {
  if (state.address.empty()) return;
  OpenedStream opened(state.ports.internet, state.address, {}, OpenFlagsOf(state.address).value_or(0));
  if (!opened) return;
  RecordingFile file(state.ports.record_files, folder, extension);
  if (file.Open(u"record") == Progress::kFailed) return;
  ReadBuffer buffer{};
  while (!state.stop_flag) {
    if (!opened.Read(buffer).empty()) {
      if (file.Write(buffer) == Progress::kFailed || file.Flush() == Progress::kFailed) return;
    }
    state.ports.message_loop.ProcessPendingMessages();
  }
}

void RecordByTitle(StreamState& state, const Text& folder, const Text& extension, std::int32_t lMetaInt,
                   const CurrentPlaying& playing) {
  if (state.address.empty()) return;
  OpenedStream opened(state.ports.internet, state.address, kIcyMetaDataHeader,
                      OpenFlagsOf(state.address).value_or(0));
  if (!opened) return;
  RecordingFile file(state.ports.record_files, folder, extension);
  TitleSplitter splitter(file, lMetaInt, playing);
  ReadBuffer buffer{};
  do {
    for (const std::byte byte : opened.Read(buffer)) {
      if (splitter.Take(byte) == Progress::kFailed) return;
    }
    if (file.Flush() == Progress::kFailed) return;
    state.ports.message_loop.ProcessPendingMessages();
  } while (!state.stop_flag);
}

}  // namespace stream
