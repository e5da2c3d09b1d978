#include "playlist/text_file.h"

namespace playlist {

using platform::CodePage;

bool WriteTextFile(platform::Files& files, platform::TextConversion& conversion, const Text& path,
                   const Text& text) {
  return files.WriteWholeFile(path, conversion.WideCharToMultiByte(CodePage::kAnsi, text) + "\r\n");
}

std::optional<Text> ReadTextFile(platform::Files& files, platform::TextConversion& conversion,
                                 const Text& path) {
  const auto bytes = files.ReadWholeFile(path, kLargestTextFile);
  if (!bytes) return std::nullopt;
  return conversion.MultiByteToWideChar(CodePage::kAnsi, *bytes);
}

std::optional<TextView> LineReader::Next() {
  if (!rest_) return std::nullopt;
  const TextView rest = *rest_;
  const auto end = rest.find(separator_);
  if (end == TextView::npos) {
    rest_.reset();
    return rest;
  }
  rest_ = rest.substr(end + separator_.size());
  return rest.substr(0, end);
}

}  // namespace playlist
