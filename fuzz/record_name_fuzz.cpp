// Feeds arbitrary titles to the rule that makes file names of them: no name leaves its folder, and every
// name can exist on Linux and on Windows. The first byte chooses extension and limit.

#include <algorithm>

#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"
#include "stream/record_name.h"

namespace {

using fuzz::Require;
using stream::Text;

bool MayStandInAName(char16_t unit) {
  constexpr stream::TextView kForbidden = u"/\\:*?\"<>|";
  return unit >= 0x20 && !(unit >= 0x7F && unit <= 0x9F) && kForbidden.find(unit) == stream::TextView::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const Text extension = data[0] % 2 == 0 ? u"" : u".mp3";
  constexpr std::size_t kShortestLimit = 8;
  const std::size_t longest = data[0] < 128 ? 255 : kShortestLimit + data[0] % 16;
  const Text title = fuzz::AsText(fuzz::AsBytes(data + 1, size - 1));
  const Text name = stream::RecordFileName(title, extension, longest);
  Require(!name.empty() && name != u"." && name != u"..");
  Require(name.ends_with(extension));
  Require(name.back() != u'.' && name.back() != u' ');
  Require(std::all_of(name.begin(), name.end(), MayStandInAName));
  platform::icu::IcuTextConversion conversion;
  const std::string bytes = conversion.WideCharToMultiByte(platform::CodePage::kUtf8, name);
  Require(bytes.size() <= longest);
  Require(conversion.MultiByteToWideChar(platform::CodePage::kUtf8, bytes) == name);
  return 0;
}
