#pragma once
// The main window: a widget for each control of Form1, the keys, the closing. Not the behaviour of the
// controls and not their places, both of which Form1 and its features own.

#include <QKeySequence>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/forms/form1.h"
#include "platform/qt/form_binding.h"
#include "platform/qt/language.h"
#include "platform/qt/widget_set.h"

namespace platform::qt {

/// Made hidden; `Open` shows it. It closes when the form is closed, and the form when the user or the
/// session closes the window. The form outlives it.
class PlayerWindow final : public QWidget {
 public:
  PlayerWindow(app::Form1& form, const QtIcons& icons, QtMessageLoop& loop, Language language);
  ~PlayerWindow() override;

  /// Shows the window at the form's size, or at what the screen has room for.
  void Open();

  /// Opens the window unless the form is closed already, and runs the program's event loop until the form
  /// is closed. The program's exit code.
  int Run();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void BuildPlaying(QWidget& panel);
  void BuildEditor(QWidget& panel);
  void BuildViews(QWidget& panel);
  void BuildInformation();
  void BindKeys();
  void BindShortcut(const QKeySequence& keys, std::function<void()> action);
  /// For keys that run an event procedure of the program.
  void BindCommand(const QKeySequence& keys, const std::function<void()>& command);
  void NameLists();
  void KeepTextsOffPicture();
  void SetTabOrder();
  [[nodiscard]] QSize SmallestSize() const;

  app::Form1& form_;
  QtMessageLoop& loop_;
  const Language language_;
  TwipScale scale_;
  WidgetSet widgets_;
  FormBinding form_binding_;
  ReportView* full_list_ = nullptr;
  ReportView* filtered_list_ = nullptr;
  FittedLabel* title_ = nullptr;
  FittedLabel* information_ = nullptr;
  std::vector<QWidget*> tab_order_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
