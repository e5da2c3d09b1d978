#pragma once
// The language of what the system adds to the program's windows: buttons of message boxes, file dialogs,
// menus of text fields. Not the program's own texts.

#include <QString>
#include <QTranslator>

namespace platform::qt {

enum class Language { kGerman, kEnglish };

/// Gives the toolkit's own texts the language, as far as its translations are installed; undone when
/// destroyed.
class ToolkitTexts {
 public:
  explicit ToolkitTexts(Language language);
  ~ToolkitTexts();
  ToolkitTexts(const ToolkitTexts&) = delete;
  ToolkitTexts& operator=(const ToolkitTexts&) = delete;

 private:
  QTranslator translator_;
};

/// One of two texts.
inline QString InLanguage(Language language, const char16_t* german, const char16_t* english) {
  return QString::fromUtf16(language == Language::kGerman ? german : english);
}

}  // namespace platform::qt
