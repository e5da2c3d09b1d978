#include "platform/qt/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace platform::qt {

ToolkitTexts::ToolkitTexts(Language language) {
  if (language != Language::kGerman) return;  // the toolkit's built-in texts are English
  const bool found = translator_.load(QLocale(QLocale::German), QStringLiteral("qtbase"), QStringLiteral("_"),
                                      QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  if (found) QCoreApplication::installTranslator(&translator_);
}

ToolkitTexts::~ToolkitTexts() { QCoreApplication::removeTranslator(&translator_); }

}  // namespace platform::qt
