#include "tests/support/loudness.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace test_support {
namespace {

using std::chrono::milliseconds;

constexpr int kRate = 48000;
constexpr milliseconds kBlock{10};
constexpr std::size_t kBlockSamples = kRate / 100;

}  // namespace

Loudness::Loudness(const PulseServer& server)
    : recorder_({"parec", "-d", "ci.monitor", "--format=s16le", "--rate=48000", "--channels=1",
                 "--latency-msec=10", "--raw"},
                server.Variables(), ChildProcess::Output::kPiped) {
  thread_ = std::thread([this] { Record(); });
  const auto recording = [this] {
    const std::lock_guard lock(mutex_);
    return !blocks_.empty();
  };
  if (!WaitUntil(recording, std::chrono::seconds(10))) throw std::runtime_error("parec records nothing");
}

Loudness::~Loudness() {
  stopping_ = true;
  thread_.join();
  recorder_.Stop();
}

void Loudness::Record() {
  std::array<std::int16_t, kBlockSamples> samples{};
  auto* bytes = reinterpret_cast<char*>(samples.data());
  std::size_t filled = 0;
  bool above = false;
  while (!stopping_) {
    pollfd ready{recorder_.OutputDescriptor(), POLLIN, 0};
    if (poll(&ready, 1, 50) <= 0) continue;
    const ssize_t size = read(recorder_.OutputDescriptor(), bytes + filled, sizeof(samples) - filled);
    if (size <= 0) return;
    filled += static_cast<std::size_t>(size);
    if (filled < sizeof(samples)) continue;
    filled = 0;
    double squares = 0;
    int crossings = 0;
    for (const std::int16_t sample : samples) {
      const double value = sample / 32768.0;
      squares += value * value;
      if ((sample > 0) != above && sample != 0) {
        above = !above;
        ++crossings;
      }
    }
    const std::lock_guard lock(mutex_);
    blocks_.push_back({Clock::now(), std::sqrt(squares / kBlockSamples), crossings});
  }
}

std::vector<Loudness::Block> Loudness::LastBlocks(milliseconds span) const {
  const auto wanted = static_cast<std::size_t>(std::max<milliseconds::rep>(1, span / kBlock));
  const std::lock_guard lock(mutex_);
  const std::size_t count = std::min(wanted, blocks_.size());
  return {blocks_.end() - static_cast<std::ptrdiff_t>(count), blocks_.end()};
}

double Loudness::Last(milliseconds span) const {
  const auto blocks = LastBlocks(span);
  double squares = 0;
  for (const Block& block : blocks) squares += block.level * block.level;
  return blocks.empty() ? 0 : std::sqrt(squares / static_cast<double>(blocks.size()));
}

bool Loudness::WaitForSound(milliseconds span, milliseconds limit) const {
  const auto since = Clock::now();
  return WaitUntil(
      [&] {
        const auto blocks = LastBlocks(span);
        return Clock::now() - since >= span &&
               std::all_of(blocks.begin(), blocks.end(),
                           [](const Block& block) { return block.level > kSilence; });
      },
      limit);
}

bool Loudness::WaitForSilence(milliseconds span, milliseconds limit) const {
  return WaitUntil(
      [&] {
        const auto blocks = LastBlocks(span);
        return std::all_of(blocks.begin(), blocks.end(),
                           [](const Block& block) { return block.level <= kSilence; });
      },
      limit);
}

std::optional<Loudness::Clock::time_point> Loudness::FirstSoundAfter(Clock::time_point since) const {
  const std::lock_guard lock(mutex_);
  for (const Block& block : blocks_) {
    if (block.arrived > since && block.level > kSilence) return block.arrived;
  }
  return std::nullopt;
}

milliseconds Loudness::SoundSince(Clock::time_point since) const {
  const std::lock_guard lock(mutex_);
  const auto sounding = std::count_if(blocks_.begin(), blocks_.end(), [since](const Block& block) {
    return block.arrived > since && block.level > kSilence;
  });
  return sounding * kBlock;
}

milliseconds Loudness::SilenceSince(Clock::time_point since) const {
  const std::lock_guard lock(mutex_);
  const auto silent = std::count_if(blocks_.begin(), blocks_.end(), [since](const Block& block) {
    return block.arrived > since && block.level <= kSilence;
  });
  return silent * kBlock;
}

double Loudness::Frequency(milliseconds span) const {
  const auto blocks = LastBlocks(span);
  int crossings = 0;
  for (const Block& block : blocks) crossings += block.crossings;
  const double seconds = static_cast<double>(blocks.size()) * static_cast<double>(kBlock.count()) / 1000.0;
  return seconds > 0 ? crossings / 2.0 / seconds : 0;
}

}  // namespace test_support
