#pragma once
// Passes to a form what is dragged over its window, dropped on it or given when the program is started.
// Not the decision what is accepted, nor what is done with it (controls/form.h).

#include <QMimeData>
#include <QObject>
#include <QWidget>
#include <string>

#include "controls/form.h"
#include "platform/qt/message_loop.h"
#include "ports/native_paths.h"

class QDropEvent;

namespace platform::qt {

/// The pointer shows what the form accepts; everything else, and everything while a dialog is open, is
/// refused. What is accepted is copied, never moved. A field that takes text itself gets what is dropped on
/// it. Everything given outlives this.
class DropBinding final : public QObject {
 public:
  DropBinding(controls::Form& form, QWidget& window, QtMessageLoop& loop, NativePaths& paths);

  /// As if it had been dropped: an address (it contains "://", UTF-8) or a file's full path, in the system's
  /// own bytes. Nothing happens for an empty argument.
  void Open(const std::string& argument);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Consider(QDropEvent& event) const;
  void Take(QDropEvent& event);
  void HandOver(controls::DropOffer offer);
  [[nodiscard]] bool IsTaken(const QDropEvent& event) const;
  [[nodiscard]] controls::DropOffer OfferOf(const QMimeData& data) const;

  controls::Form& form_;
  QWidget& window_;
  QtMessageLoop& loop_;
  NativePaths& paths_;
};

}  // namespace platform::qt
