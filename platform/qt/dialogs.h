#pragma once
// Message boxes and file dialogs by Qt. Not the program's own dialog windows.

#include <QPointer>
#include <QWidget>
#include <utility>

#include "app/forms/translation.h"
#include "ports/dialogs.h"
#include "ports/native_paths.h"

class QFileDialog;
class QMessageBox;

namespace platform::qt {

class QtDialogs final : public Dialogs {
 public:
  explicit QtDialogs(NativePaths& paths) : paths_(paths) {}

  /// The window to which dialogs with an owner belong; those without one belong to the active window.
  void SetMainWindow(QWidget* window) { main_window_ = window; }
  /// The language of the dialogs' buttons and labels; German at first.
  void SetLookUp(app::LookUp translated) { translated_ = std::move(translated); }

  MessageBoxAnswer MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) override;
  bool GetOpenFileNameW(OpenFileName& dialog) override;
  bool GetSaveFileNameW(OpenFileName& dialog) override;

 private:
  enum class Direction { kOpen, kSave };
  bool Choose(OpenFileName& dialog, Direction direction);
  void NameButtons(QMessageBox& box) const;
  void NameParts(QFileDialog& dialog, Direction direction) const;
  [[nodiscard]] QString Translated(const char16_t* german) const;
  [[nodiscard]] QWidget* Owner() const;
  [[nodiscard]] QString StartFolder(const OpenFileName& dialog);

  NativePaths& paths_;
  app::LookUp translated_;
  QPointer<QWidget> main_window_;
  QString last_folder_;
};

}  // namespace platform::qt
