#pragma once
// Walks a form's inventory once: creates a widget for each control and binds the two. Not the window itself,
// not its keys and menus (platform/qt/form_keys.h), and not where the places come from.

#include <QWidget>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "app/forms/form_control.h"
#include "platform/qt/captioned_bindings.h"
#include "platform/qt/icons.h"
#include "platform/qt/list_binding.h"
#include "platform/qt/timer_binding.h"

namespace platform::qt {

/// Every widget takes the control's name as its object name. Widgets belong to their parent widget; the
/// set, which holds the bindings, must end before the window does.
class WidgetSet {
 public:
  WidgetSet(const app::Inventory& inventory, QWidget& window, const TwipScale& scale, const QtIcons& icons,
            QtMessageLoop& loop);
  WidgetSet(const WidgetSet&) = delete;
  WidgetSet& operator=(const WidgetSet&) = delete;

  /// The widget of a control of the form; null for one that has none.
  [[nodiscard]] QWidget* Of(const controls::Control& control) const;
  /// The first visible widget in the tab order that is `within` or somewhere inside it; null for none.
  [[nodiscard]] QWidget* FirstForKeyboard(const QWidget& within) const;
  [[nodiscard]] const std::vector<ListBinding*>& Lists() const { return lists_; }
  /// The labels for texts of any length.
  [[nodiscard]] const std::vector<std::pair<controls::Label*, FittedLabel*>>& Texts() const { return texts_; }

  /// Applies all places again; to be called when the scale has changed.
  void FollowScale();

 private:
  // One for each kind of control: the widget with its binding; none for what only has an entry in a menu.
  QWidget* Make(controls::Frame& frame, QWidget& parent);
  QWidget* Make(controls::Label& label, QWidget& parent);
  QWidget* Make(controls::CommandButton& button, QWidget& parent);
  QWidget* Make(controls::CheckBox& box, QWidget& parent);
  QWidget* Make(controls::TextBox& box, QWidget& parent);
  QWidget* Make(controls::UpDownTextBox& box, QWidget& parent);
  QWidget* Make(controls::ComboBox& box, QWidget& parent);
  QWidget* Make(controls::ProgressBar& bar, QWidget& parent);
  QWidget* Make(controls::ScrollBar& bar, QWidget& parent);
  QWidget* Make(controls::Image& image, QWidget& parent);
  QWidget* Make(controls::ListView& list, QWidget& parent);
  static QWidget* Make(controls::RowCommand& /*command*/, QWidget& /*parent*/) { return nullptr; }

  void Add(controls::Control& control, QWidget* widget, const app::FormControl& entry);
  void NameFor(QWidget& widget, controls::Captioned& named_by);
  void AddTimer(controls::Timer& timer);
  void SetTabOrder();
  template <typename Binding, typename Control, typename Widget, typename... More>
  Binding& Bind(Control& control, Widget* widget, More&... more);

  const TwipScale& scale_;
  const QtIcons& icons_;
  QtMessageLoop& loop_;
  std::map<const controls::Control*, QWidget*> widgets_;
  std::map<const controls::Captioned*, LabelBinding*> captions_;
  std::vector<QWidget*> tab_order_;
  std::vector<ListBinding*> lists_;  // of bindings_
  std::vector<std::pair<controls::Label*, FittedLabel*>> texts_;
  std::vector<std::unique_ptr<WidgetBinding>> bindings_;
  std::vector<std::unique_ptr<TimerBinding>> timers_;
  controls::Subscriptions subscriptions_;
};

}  // namespace platform::qt
