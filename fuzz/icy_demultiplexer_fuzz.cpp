// Feeds arbitrary streams with arbitrary intervals to the counting of bytes, and compares it with the
// protocol's rule counted in another way: by lengths instead of byte by byte.

#include <algorithm>
#include <cstring>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "stream/icy_demultiplexer.h"

namespace {

using fuzz::Require;
using stream::IcyByte;

struct Sorted {
  std::string audio;
  std::vector<std::string> blocks;
  int empty_blocks = 0;
  friend bool operator==(const Sorted&, const Sorted&) = default;
};

Sorted ByLengths(std::string_view bytes, std::int32_t interval) {
  Sorted sorted;
  const std::size_t audio = interval > 0 ? static_cast<std::size_t>(interval) : 0;
  while (true) {
    sorted.audio += bytes.substr(0, audio);
    if (bytes.size() <= audio) return sorted;
    const std::size_t length = static_cast<unsigned char>(bytes[audio]) * std::size_t{16};
    bytes.remove_prefix(audio + 1);
    if (length == 0) ++sorted.empty_blocks;
    if (bytes.size() < length) return sorted;
    if (length > 0) sorted.blocks.emplace_back(bytes.substr(0, length));
    bytes.remove_prefix(length);
  }
}

Sorted ByBytes(std::string_view bytes, std::int32_t interval) {
  Sorted sorted;
  stream::IcyDemultiplexer demultiplexer(interval);
  for (const char byte : bytes) {
    const IcyByte meaning = demultiplexer.Take(static_cast<std::byte>(byte));
    if (meaning == IcyByte::kAudio) sorted.audio += byte;
    if (meaning == IcyByte::kEmptyBlock) ++sorted.empty_blocks;
    if (meaning == IcyByte::kBlockComplete) sorted.blocks.push_back(demultiplexer.Block());
    constexpr std::size_t kLongestBlock = 4080;
    Require(demultiplexer.Block().size() <= kLongestBlock);
  }
  return sorted;
}

// As ByBytes, with the audio in pieces that reach over the pieces in which a stream may come.
Sorted ByRuns(std::string_view bytes, std::int32_t interval) {
  constexpr std::size_t kPiece = 7;
  Sorted sorted;
  stream::IcyDemultiplexer demultiplexer(interval);
  while (!bytes.empty()) {
    const std::size_t most = std::min(kPiece, bytes.size());
    const std::size_t audio = demultiplexer.TakeAudio(most);
    Require(audio <= most);
    sorted.audio += bytes.substr(0, audio);
    bytes.remove_prefix(audio);
    if (audio > 0) continue;
    const IcyByte meaning = demultiplexer.Take(static_cast<std::byte>(bytes.front()));
    Require(meaning != IcyByte::kAudio);
    if (meaning == IcyByte::kEmptyBlock) ++sorted.empty_blocks;
    if (meaning == IcyByte::kBlockComplete) sorted.blocks.push_back(demultiplexer.Block());
    bytes.remove_prefix(1);
  }
  return sorted;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::int32_t interval = 0;
  if (size < sizeof(interval)) return 0;
  std::memcpy(&interval, data, sizeof(interval));
  const std::string_view bytes = fuzz::AsBytes(data, size).substr(sizeof(interval));
  const Sorted sorted = ByLengths(bytes, interval);
  Require(ByBytes(bytes, interval) == sorted);
  Require(ByRuns(bytes, interval) == sorted);
  return 0;
}
