#include "ui/status_line.h"

#include <cstddef>

namespace ui {

using platform::Text;
using platform::TextView;

namespace {

/// One pass from left to right, so that a "%1" within an argument stays as it is.
Text Filled(TextView sentence, const std::vector<Text>& arguments) {
  Text filled;
  for (std::size_t at = 0; at < sentence.size(); ++at) {
    const char16_t digit = at + 1 < sentence.size() ? sentence[at + 1] : u'\0';
    const std::size_t number = digit >= u'1' && digit <= u'9' ? static_cast<std::size_t>(digit - u'0') : 0;
    if (sentence[at] == u'%' && number > 0 && number <= arguments.size()) {
      filled += arguments[number - 1];
      ++at;
    } else {
      filled += sentence[at];
    }
  }
  return filled;
}

}  // namespace

void StatusLine::Notify(TextView sentence, const std::vector<Text>& arguments) {
  const Text key(sentence);
  label_.SetCaption(Filled(language_.GetLangText(key, key), arguments));
}

}  // namespace ui
