#include "stream/recorders.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "app/text/text_utilities.h"
#include "stream/block_rules.h"
#include "stream/icy_demultiplexer.h"
#include "stream/internet_handles.h"
#include "stream/read_size.h"
#include "stream/record_name.h"
#include "stream/stream_address.h"

namespace stream {
namespace {

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

  // Readers of the file see what a read of the stream brought as soon as it has been processed.
  Progress Flush() { return !IsOpen() || files_.Flush(file_) ? Progress::kGoesOn : Progress::kFailed; }

 private:
  platform::RecordFiles& files_;
  Text folder_;
  Text extension_;
  platform::RecordFile file_ = platform::RecordFile::kNone;
};

Text NameOfUntitled(const RecordOptions& options, TextView usual) {
  return options.untitled_name.empty() ? Text(usual) : options.untitled_name;
}

// Reads pieces of a stream into one buffer.
class StreamReader {
 public:
  StreamReader(OpenedStream& stream, const RecordOptions& options)
      : stream_(stream), size_(options.writes), buffer_(size_.Largest()) {}

  // The bytes that the next read brings.
  std::span<const std::byte> Read() {
    const std::span<const std::byte> came = stream_.Read(std::span(buffer_).first(size_.Next()));
    size_.Came(came.size());
    return came;
  }

  // The whole buffer: the latest bytes, then what is left of earlier ones.
  [[nodiscard]] std::span<const std::byte> WholeBuffer() const { return buffer_; }

 private:
  OpenedStream& stream_;
  ReadSize size_;
  std::vector<std::byte> buffer_;
};

// Sorts the bytes of a stream into files by title.
class TitleSplitter {
 public:
  /// Gives the characters of a block's bytes.
  using Characters = std::function<Text(const std::string& block)>;

  TitleSplitter(RecordingFile& file, std::int32_t lMetaInt, const CurrentPlaying& playing,
                Characters characters, const RecordOptions& options)
      : file_(file),
        demultiplexer_(lMetaInt),
        playing_(playing),
        characters_(std::move(characters)),
        options_(options) {}

  Progress Take(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
      const std::size_t audio = demultiplexer_.TakeAudio(bytes.size());
      const Progress progress = audio > 0 ? TakeAudio(bytes.first(audio)) : TakeOther(bytes.front());
      if (progress == Progress::kFailed) return Progress::kFailed;
      bytes = bytes.subspan(std::max<std::size_t>(audio, 1));
    }
    return Progress::kGoesOn;
  }

 private:
  Progress TakeAudio(std::span<const std::byte> bytes) {
    if (!file_.IsOpen()) return Progress::kGoesOn;
    if (options_.writes == RecordOptions::Writes::kReceived) return file_.Write(bytes);
    for (const std::byte& byte : bytes) {
      if (file_.Write({&byte, 1}) == Progress::kFailed) return Progress::kFailed;
    }
    return Progress::kGoesOn;
  }

  Progress TakeOther(std::byte byte) {
    switch (demultiplexer_.Take(byte)) {
      case IcyByte::kEmptyBlock:
        return CountEmptyBlock();
      case IcyByte::kBlockComplete:
        return EvaluateBlock();
      default:
        return Progress::kGoesOn;
    }
  }

  Progress CountEmptyBlock() {
    constexpr int kEmptyBlocksToGiveUp = 2;
    if (file_.IsOpen() || ++empty_blocks_ < kEmptyBlocksToGiveUp) return Progress::kGoesOn;
    if (file_.Open(NameOfUntitled(options_, u"unknown")) == Progress::kFailed) return Progress::kFailed;
    playing_(u"unknown", {}, {});
    return Progress::kGoesOn;
  }

  Progress EvaluateBlock() {
    const Text block = RemoveAll(characters_(demultiplexer_.Block()), u"\n");
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
  Characters characters_;
  const RecordOptions& options_;
  Text title_;
  Text web_address_;
  int empty_blocks_ = 0;
};

TitleSplitter::Characters CharactersBy(const RecordOptions& options, platform::TextConversion& conversion) {
  if (options.title_characters == RecordOptions::TitleCharacters::kByteValues) return CharactersOfSameCode;
  return [&conversion](const std::string& block) { return app::Decoded(conversion, block); };
}

}  // namespace

void RecordPlain(StreamState& state, const Text& folder, const Text& extension,
                 const RecordOptions& options) {
  if (state.address.empty()) return;
  OpenedStream opened(state.ports.internet, state.address, {}, OpenFlagsOf(state.address).value_or(0));
  if (!opened) return;
  RecordingFile file(state.ports.record_files, folder, extension);
  if (file.Open(NameOfUntitled(options, u"record")) == Progress::kFailed) return;
  StreamReader reader(opened, options);
  const bool whole_buffer = options.writes == RecordOptions::Writes::kUsual;
  while (!state.stop_flag) {
    if (const auto came = reader.Read(); !came.empty()) {
      if (file.Write(whole_buffer ? reader.WholeBuffer() : came) == Progress::kFailed ||
          file.Flush() == Progress::kFailed)
        return;
    }
    state.ports.message_loop.ProcessPendingMessages();
  }
}

void RecordByTitle(StreamState& state, const Text& folder, const Text& extension, std::int32_t lMetaInt,
                   const CurrentPlaying& playing, const RecordOptions& options) {
  if (state.address.empty()) return;
  OpenedStream opened(state.ports.internet, state.address, kIcyMetaDataHeader,
                      OpenFlagsOf(state.address).value_or(0));
  if (!opened) return;
  RecordingFile file(state.ports.record_files, folder, extension);
  TitleSplitter splitter(file, lMetaInt, playing, CharactersBy(options, state.ports.text_conversion),
                         options);
  StreamReader reader(opened, options);
  do {
    if (splitter.Take(reader.Read()) == Progress::kFailed || file.Flush() == Progress::kFailed) return;
    state.ports.message_loop.ProcessPendingMessages();
  } while (!state.stop_flag);
}

}  // namespace stream
