#include "tests/platform/win32/media/wave_file.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>

namespace platform::win32 {
namespace {

constexpr std::uint32_t kRate = 22050;

void Append(std::string& bytes, std::uint32_t number, int count) {
  for (int at = 0; at < count; ++at) bytes += static_cast<char>((number >> (8 * at)) & 0xFF);
}

}  // namespace

void WriteWaveFile(const std::filesystem::path& path, std::chrono::milliseconds length) {
  const auto samples = static_cast<std::uint32_t>(length.count()) * kRate / 1000;
  std::string bytes = "RIFF";
  Append(bytes, 36 + samples * 2, 4);
  bytes += "WAVEfmt ";
  Append(bytes, 16, 4);
  Append(bytes, 1, 2);
  Append(bytes, 1, 2);
  Append(bytes, kRate, 4);
  Append(bytes, kRate * 2, 4);
  Append(bytes, 2, 2);
  Append(bytes, 16, 2);
  bytes += "data";
  Append(bytes, samples * 2, 4);
  for (std::uint32_t at = 0; at < samples; ++at) {
    const double value = 16383.0 * std::sin(2 * 3.14159265358979 * 440 * at / kRate);
    Append(bytes, static_cast<std::uint32_t>(static_cast<std::int16_t>(value)), 2);
  }
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace platform::win32
