#pragma once
// Files of pictures and icons in one colour, made for tests. Not decoders.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace platform::win32 {

inline void AppendNumber(std::string& bytes, std::uint32_t number, int size) {
  for (int byte = 0; byte < size; ++byte) bytes += static_cast<char>(number >> (8 * byte) & 0xffU);
}

/// The head of a picture with so many bits a pixel, as it stands in bitmap and icon files.
inline std::string BitmapHead(int width, int height, int bits) {
  std::string head;
  AppendNumber(head, 40, 4);
  AppendNumber(head, static_cast<std::uint32_t>(width), 4);
  AppendNumber(head, static_cast<std::uint32_t>(height), 4);
  AppendNumber(head, 1, 2);
  AppendNumber(head, static_cast<std::uint32_t>(bits), 2);
  head.append(24, '\0');
  return head;
}

/// A bitmap file; the colour is 0xRRGGBB. Pixels that `claimed` adds to its height are missing.
inline std::string BitmapFile(int width, int height, std::uint32_t color, int claimed = 0) {
  std::string bytes = "BM";
  const int line = (width * 3 + 3) / 4 * 4;
  AppendNumber(bytes, static_cast<std::uint32_t>(54 + line * height), 4);
  AppendNumber(bytes, 0, 4);
  AppendNumber(bytes, 54, 4);
  bytes += BitmapHead(width, height + claimed, 24);
  std::string row;
  for (int pixel = 0; pixel < width; ++pixel) AppendNumber(row, color, 3);
  row.resize(static_cast<std::size_t>(line));
  for (int y = 0; y < height; ++y) bytes += row;
  return bytes;
}

/// An icon file (https://en.wikipedia.org/wiki/ICO_(file_format)) with one image per side and colour.
inline std::string IconFile(const std::vector<std::pair<int, std::uint32_t>>& images) {
  std::string head;
  std::string data;
  AppendNumber(head, 0, 2);
  AppendNumber(head, 1, 2);
  AppendNumber(head, static_cast<std::uint32_t>(images.size()), 2);
  const std::size_t start = 6 + 16 * images.size();
  for (const auto& [side, color] : images) {
    std::string image = BitmapHead(side, 2 * side, 32);
    for (int pixel = 0; pixel < side * side; ++pixel) AppendNumber(image, color | 0xff000000U, 4);
    image.append(static_cast<std::size_t>((side + 31) / 32 * 4 * side), '\0');
    AppendNumber(head, static_cast<std::uint32_t>(side), 1);
    AppendNumber(head, static_cast<std::uint32_t>(side), 1);
    AppendNumber(head, 0, 2);
    AppendNumber(head, 1, 2);
    AppendNumber(head, 32, 2);
    AppendNumber(head, static_cast<std::uint32_t>(image.size()), 4);
    AppendNumber(head, static_cast<std::uint32_t>(start + data.size()), 4);
    data += image;
  }
  return head + data;
}

}  // namespace platform::win32
