#pragma once
// Message boxes and file dialogs by Qt. Not the program's own dialog windows.

#include <QPointer>
#include <QWidget>

#include "platform/qt/language.h"
#include "ports/dialogs.h"
#include "ports/native_paths.h"

namespace platform::qt {

class QtDialogs final : public Dialogs {
 public:
  QtDialogs(NativePaths& paths, Language language) : paths_(paths), language_(language) {}

  /// The window that dialogs with an owner belong to; without one they belong to the active window.
  void SetMainWindow(QWidget* window) { main_window_ = window; }
  void SetLanguage(Language language) { language_ = language; }

  MessageBoxAnswer MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) override;
  bool GetOpenFileNameW(OpenFileName& dialog) override;
  bool GetSaveFileNameW(OpenFileName& dialog) override;

 private:
  enum class Direction { kOpen, kSave };
  bool Choose(OpenFileName& dialog, Direction direction);
  [[nodiscard]] QWidget* Owner() const;
  [[nodiscard]] QString StartFolder(const OpenFileName& dialog);

  NativePaths& paths_;
  Language language_;
  QPointer<QWidget> main_window_;
  QString last_folder_;
};

}  // namespace platform::qt
