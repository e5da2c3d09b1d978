// The parts that see every byte of a stream: separating sound and titles, and judging a block.

#include <benchmark/benchmark.h>

#include <string>

#include "stream/block_rules.h"
#include "stream/icy_demultiplexer.h"

namespace {

std::string StreamOf(std::size_t size) {
  constexpr std::size_t kInterval = 16000;
  std::string block = "StreamTitle='Die Lichtung - Morgenlicht';";
  block.resize(48, '\0');
  std::string stream;
  while (stream.size() < size) {
    stream.append(kInterval, 'A');
    stream.push_back(3);
    stream += block;
  }
  return stream;
}

void DemultiplexStream(benchmark::State& state) {
  const std::string stream = StreamOf(1 << 20);
  for (auto _ : state) {
    stream::IcyDemultiplexer demultiplexer(16000);
    std::size_t blocks = 0;
    for (const char byte : stream) {
      blocks += demultiplexer.Take(static_cast<std::byte>(byte)) == stream::IcyByte::kBlockComplete ? 1U : 0U;
    }
    benchmark::DoNotOptimize(blocks);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * stream.size()));
}
BENCHMARK(DemultiplexStream)->Unit(benchmark::kMillisecond);

void JudgeLargestBlock(benchmark::State& state) {
  std::string block = "StreamTitle='" + std::string(4000, 'x') + "';StreamUrl='';";
  const stream::Text text = stream::CharactersOfSameCode(block);
  for (auto _ : state) benchmark::DoNotOptimize(stream::JudgeFirstBlock(text));
}
BENCHMARK(JudgeLargestBlock)->Unit(benchmark::kMicrosecond);

}  // namespace
