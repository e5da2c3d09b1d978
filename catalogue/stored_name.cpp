#include "catalogue/stored_name.h"

#include <string>

namespace catalogue {

using platform::CodePage;
using platform::Text;
using platform::TextView;

Text StoredName(platform::TextConversion& conversion, TextView name) {
  Text line(name.substr(0, name.find(u'\0')));
  std::erase_if(line, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
  const auto first = line.find_first_not_of(u" \t");
  if (first == Text::npos) return {};
  const auto last = line.find_last_not_of(u" \t");
  const std::string bytes =
      conversion.WideCharToMultiByte(CodePage::kAnsi, TextView(line).substr(first, last - first + 1));
  return conversion.CharLowerW(conversion.MultiByteToWideChar(CodePage::kAnsi, bytes));
}

}  // namespace catalogue
