#pragma once
// The language of what the toolkit itself adds to the program's windows: inside file dialogs, in menus of
// text fields. Not the program's own texts, which the language file translates.

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

}  // namespace platform::qt
