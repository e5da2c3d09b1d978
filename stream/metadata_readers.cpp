#include "stream/metadata_readers.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "app/text/numbers.h"
#include "stream/block_rules.h"
#include "stream/icy_demultiplexer.h"
#include "stream/internet_handles.h"
#include "stream/stream_address.h"

namespace stream {
namespace {

constexpr std::size_t kReadSize = 1024;
using ReadBuffer = std::array<std::byte, kReadSize>;

const Text kTimeOut = u"TimeOut";

// Measures against a clock that starts again at midnight; a reader that runs past it just waits longer.
class ElapsedSeconds {
 public:
  explicit ElapsedSeconds(platform::Clock& clock)
      : clock_(clock), start_(app::RoundTiesToEven(clock.SecondsSinceMidnight())) {}
  [[nodiscard]] bool Exceed(double limit) const { return clock_.SecondsSinceMidnight() - start_ > limit; }

 private:
  platform::Clock& clock_;
  double start_;
};

// The state's address, opened for its titles; not open when it stays silent, or was silent a short while ago.
class TitleStream {
 public:
  TitleStream(StreamState& state, std::uint32_t flags) {
    const Text address = state.address;
    const auto attempt = state.silent_addresses.Begin(Question::kTitle, address);
    if (!attempt) return;
    opened_.emplace(state.ports.internet, address, kIcyMetaDataHeader, flags, attempt->milliseconds);
    if (*opened_) {
      state.silent_addresses.Answered(Question::kTitle, address);
    } else {
      state.silent_addresses.Failed(Question::kTitle, address, *attempt,
                                    QueryFailureFrom(state.ports.internet.LastFailure()));
    }
  }

  explicit operator bool() const { return opened_.has_value() && static_cast<bool>(*opened_); }
  std::span<const std::byte> Read(std::span<std::byte> buffer) { return opened_->Read(buffer); }

 private:
  std::optional<OpenedStream> opened_;
};

// The title of the first block in `bytes` at which `judge` ends the reading.
template <typename Judge>
std::optional<Text> WalkBlocks(IcyDemultiplexer& demultiplexer, std::span<const std::byte> bytes,
                               const Judge& judge) {
  for (const std::byte byte : bytes) {
    if (demultiplexer.Take(byte) != IcyByte::kBlockComplete) continue;
    const BlockVerdict verdict = judge(demultiplexer.Block());
    if (verdict.ends_reading) return verdict.title;
  }
  return std::nullopt;
}

// The byte walk of ReadActiveTitle, which lets the window work after every byte of stream data.
class ActiveTitleWalk {
 public:
  ActiveTitleWalk(StreamState& state, std::int32_t lMetaInt) : state_(state), demultiplexer_(lMetaInt) {}

  // The result when the reading has ended, with the stop flag set.
  std::optional<Text> Walk(std::span<const std::byte> bytes) {
    for (const std::byte byte : bytes) {
      const IcyByte meaning = demultiplexer_.Take(byte);
      std::optional<Text> result = Judge(meaning);
      if (result) {
        state_.stop_flag = true;
        return result;
      }
      const bool is_stream_data = meaning != IcyByte::kBlockByte && meaning != IcyByte::kBlockComplete;
      if (is_stream_data) state_.ports.message_loop.ProcessPendingMessages();
    }
    return std::nullopt;
  }

 private:
  std::optional<Text> Judge(IcyByte meaning) {
    constexpr int kEmptyBlocksToGiveUp = 2;
    if (meaning == IcyByte::kEmptyBlock && ++empty_blocks_ >= kEmptyBlocksToGiveUp) return Text();
    if (meaning != IcyByte::kBlockComplete) return std::nullopt;
    const BlockVerdict verdict = JudgeAllFields(CharactersOfSameCode(demultiplexer_.Block()));
    return verdict.ends_reading ? std::optional<Text>(verdict.title) : std::nullopt;
  }

  StreamState& state_;
  IcyDemultiplexer demultiplexer_;
  int empty_blocks_ = 0;
};

}  // namespace

Text ReadLongTitle(StreamState& state, std::int32_t lMetaInt) {
  constexpr double kLimitSeconds = 6.0;
  const ElapsedSeconds elapsed(state.ports.clock);
  TitleStream opened(state, state.open_flags);
  if (!opened) return {};
  const auto judge = [](const std::string& block) { return JudgeByLength(CharactersOfSameCode(block)); };
  IcyDemultiplexer demultiplexer(lMetaInt);
  ReadBuffer buffer{};
  while (true) {
    if (const auto title = WalkBlocks(demultiplexer, opened.Read(buffer), judge)) return *title;
    if (elapsed.Exceed(kLimitSeconds)) return kTimeOut;
    state.ports.message_loop.ProcessPendingMessages();
    if (state.abort_flag) return {};
  }
}

Text ReadFirstBlockTitle(StreamState& state, std::int32_t lMetaInt) {
  constexpr double kLimitSeconds = 8.0;
  const ElapsedSeconds elapsed(state.ports.clock);
  TitleStream opened(state, state.open_flags);
  if (!opened) return {};
  const auto judge = [&state](const std::string& block) {
    return JudgeFirstBlock(state.ports.text_conversion.MultiByteToWideChar(platform::CodePage::kAnsi, block));
  };
  IcyDemultiplexer demultiplexer(lMetaInt);
  ReadBuffer buffer{};
  while (true) {
    if (const auto title = WalkBlocks(demultiplexer, opened.Read(buffer), judge)) return *title;
    state.ports.message_loop.ProcessPendingMessages();
    if (elapsed.Exceed(kLimitSeconds)) return kTimeOut;
    if (state.abort_flag) return {};
  }
}

Text ReadActiveTitle(StreamState& state, std::int32_t lMetaInt) {
  if (state.address.empty()) return {};
  const std::uint32_t flags = OpenFlagsOf(state.address).value_or(0);
  TitleStream opened(state, flags);
  if (!opened) return {};
  ActiveTitleWalk walk(state, lMetaInt);
  ReadBuffer buffer{};
  while (true) {
    if (const auto title = walk.Walk(opened.Read(buffer))) return *title;
    state.ports.message_loop.ProcessPendingMessages();
    if (state.stop_flag) return {};
  }
}

}  // namespace stream
