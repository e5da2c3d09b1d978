#pragma once
// The main window on a form of its own, and what tests of widgets need. Not the program's behaviour.

#include <QApplication>
#include <QTest>
#include <functional>
#include <memory>
#include <string>

#include "app/forms/form1.h"
#include "app/forms/layout.h"
#include "app/state/station.h"
#include "platform/qt/icons.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/player_window.h"
#include "platform/qt/text.h"
#include "ports/native_paths.h"

namespace platform::qt {

/// Paths as UTF-8 with "/".
class PlainPaths final : public NativePaths {
 public:
  Text FromNative(const std::string& native) override { return FromQt(QString::fromStdString(native)); }
  std::string ToNative(const Text& path) override {
    return ToQt(path).replace(QLatin1Char('\\'), QLatin1Char('/')).toStdString();
  }
  std::string ToNativeForReading(const Text& path) override { return ToNative(path); }
};

/// Processes events until `done`; false when that takes long, even for a busy machine.
inline bool WaitFor(const std::function<bool()>& done) {
  constexpr int kDeadline = 20'000;
  return QTest::qWaitFor(done, kDeadline);
}

/// Lets the program process its queued input, as the event loop would do next.
inline void Settle() {
  // What comes during one round is left for the next one.
  constexpr int kRounds = 3;
  for (int round = 0; round < kRounds; ++round) QCoreApplication::sendPostedEvents();
}

/// Form1 with its window, laid out at every size, and the columns of the lists.
class WindowFixture {
 public:
  WindowFixture() : icons(paths) {
    for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
      for (const app::StationColumn& column : app::kStationColumns)
        list->AddColumn(app::ListColumnOf(column));
    }
    window = std::make_unique<PlayerWindow>(form, icons, loop);
  }

  /// Shows the window and waits until it has the keyboard focus.
  bool Open() {
    window->Open();
    return QTest::qWaitForWindowActive(window.get());
  }

  template <typename Widget = QWidget>
  Widget& Find(const char* name) const {
    return *static_cast<Widget*>(window->findChild<QWidget*>(QLatin1String(name)));
  }

  PlainPaths paths;
  QtIcons icons;
  QtMessageLoop loop;
  app::Form1 form;
  app::WindowLayout layout{form};
  std::unique_ptr<PlayerWindow> window;
};

/// Counts how often an event was raised.
class Counter {
 public:
  template <typename... Arguments>
  explicit Counter(controls::Event<Arguments...>& event)
      : subscription_(event.Subscribe([this](Arguments...) { ++count_; })) {}
  [[nodiscard]] int Count() const { return count_; }

 private:
  int count_ = 0;
  controls::Subscription subscription_;
};

}  // namespace platform::qt
