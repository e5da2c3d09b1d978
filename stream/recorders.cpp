#include "stream/recorders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "app/text_utilities.h"
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
  /// Gives the characters of a block's bytes.
  using Characters = std::function<Text(const std::string& block)>;

  TitleSplitter(RecordingFile& file, std::int32_t lMetaInt, const CurrentPlaying& playing,
                Characters characters, Text untitled_name)
      : file_(file),
        demultiplexer_(lMetaInt),
        playing_(playing),
        characters_(std::move(characters)),
        untitled_name_(std::move(untitled_name)) {}

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
    if (file_.Open(untitled_name_) == Progress::kFailed) return Progress::kFailed;
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
  const Text untitled_name_;
  Text title_;
  Text web_address_;
  int empty_blocks_ = 0;
};

Text NameOfUntitled(const RecordOptions& options, TextView usual) {
  return options.untitled_name.empty() ? Text(usual) : options.untitled_name;
}

Text DecodedBlock(platform::TextConversion& conversion, const std::string& block) {
  const bool is_utf8 = app::IsUTF8(block, static_cast<std::int32_t>(block.size()));
  const platform::CodePage page = is_utf8 ? platform::CodePage::kUtf8 : platform::CodePage::kAnsi;
  return conversion.MultiByteToWideChar(page, block);
}

TitleSplitter::Characters CharactersBy(const RecordOptions& options, platform::TextConversion& conversion) {
  if (options.title_characters == RecordOptions::TitleCharacters::kByteValues) return CharactersOfSameCode;
  return [&conversion](const std::string& block) { return DecodedBlock(conversion, block); };
}

}  // namespace

void RecordPlain(StreamState& state, const Text& folder, const Text& extension,
                 const RecordOptions& options) {
  if (state.address.empty()) return;
  OpenedStream opened(state.ports.internet, state.address, {}, OpenFlagsOf(state.address).value_or(0));
  if (!opened) return;
  RecordingFile file(state.ports.record_files, folder, extension);
  if (file.Open(NameOfUntitled(options, u"record")) == Progress::kFailed) return;
  ReadBuffer buffer{};
  const bool whole_buffer = options.plain_writes == RecordOptions::PlainWrites::kWholeBuffer;
  while (!state.stop_flag) {
    if (const auto came = opened.Read(buffer); !came.empty()) {
      const std::span<const std::byte> bytes = whole_buffer ? std::span<const std::byte>(buffer) : came;
      if (file.Write(bytes) == Progress::kFailed || file.Flush() == Progress::kFailed) return;
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
                         NameOfUntitled(options, u"unknown"));
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
