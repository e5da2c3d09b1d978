#pragma once
// The main window on a form of its own, and what tests of widgets need. Not the program's behaviour.

#include <QApplication>
#include <QTest>
#include <functional>
#include <memory>
#include <string>

#include "app/window/form1.h"
#include "platform/native_paths.h"
#include "platform/qt/icons.h"
#include "platform/qt/main_window.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/text.h"

namespace platform::qt {

/// Paths as UTF-8 with "/".
class PlainPaths final : public NativePaths {
 public:
  Text FromNative(const std::string& native) override { return FromQt(QString::fromStdString(native)); }
  std::string ToNative(const Text& path) override {
    return ToQt(path).replace(QLatin1Char('\\'), QLatin1Char('/')).toStdString();
  }
};

/// Processes events until `done`; false when that takes five seconds.
inline bool WaitFor(const std::function<bool()>& done) {
  constexpr int kDeadline = 5000;
  return QTest::qWaitFor(done, kDeadline);
}

/// Places the panels as the program does when the window changes its size.
inline void LayOut(app::Form1& form) {
  const int width = form.form.GetPlace().width;
  const int height = form.form.GetPlace().height;
  controls::Place panel = form.Frame1.GetPlace();
  panel.top = height - panel.height - 120;
  form.Frame1.Move(panel);
  form.Frame2.Move({form.Frame2.GetPlace().left, form.Frame2.GetPlace().top, width - 120, height - 120});
  const controls::Place main = form.Frame2.GetPlace();
  for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
    const controls::Place place = list->GetPlace();
    list->Move({place.left, place.top, main.width - 90, main.height - panel.height - place.top - 90});
  }
  controls::Place bar = form.ProgressBar1[0].GetPlace();
  form.ProgressBar1[0].Move({panel.left + panel.width + 30, panel.top + 60, bar.width, bar.height});
  const int second = panel.left + panel.width + bar.width + 60;
  form.ProgressBar1[1].Move({second, panel.top + 60, bar.width, bar.height});
  controls::Place information = form.Frame3.GetPlace();
  const controls::Place list = form.SymbolListview.GetPlace();
  const bool beside = width >= 13600;
  information.left = beside ? second + bar.width + 60 : width - information.width - 360;
  information.top = beside ? list.top + list.height + 120 : list.top + list.height - information.height - 200;
  form.Frame3.Move(information);
}

/// Form1 with its window, laid out at every size, and the columns of the lists.
class WindowFixture {
 public:
  explicit WindowFixture(Language language = Language::kGerman) : icons(paths) {
    resized_ = form.form.Resized.Subscribe([this] { LayOut(form); });
    const std::array captions = {u"Station", u"Genre", u"WebLink", u"Favorit", u"Titel", u"M3U Nr."};
    const std::array widths = {300, 120, 120, 120, 200, 120};
    for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
      for (std::size_t column = 0; column < widths.size(); ++column) {
        list->AddColumn({captions[column], widths[column], 0});
      }
    }
    window = std::make_unique<MainWindow>(form, icons, loop, language);
  }

  /// Shows the window and waits until it has the keyboard.
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
  std::unique_ptr<MainWindow> window;

 private:
  controls::Subscription resized_;
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
