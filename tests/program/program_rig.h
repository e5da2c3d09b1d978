#pragma once
// The whole program without a screen, over a scratch folder, operated by mouse and keyboard.
// Not real stations: links lead to a port where nobody listens.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/player_window.h"
#include "programs/linux/entrance.h"
#include "programs/linux/program.h"
#include "tests/support/temp_folder.h"
#include "window/main_window.h"

namespace program_test {

class ProgramRig : public ::testing::Test {
 protected:
  ProgramRig();
  ~ProgramRig() override;

  /// Creates the program as its main function does, over the station file's bytes; `options` are those of
  /// Opt.ini.
  void Start(const std::string& stations, const std::string& options = "");
  /// Runs the program, with `argument_` to open, and `journey` inside its event loop; whatever is still open
  /// then is left. Returns the exit code.
  int Run(const std::function<void()>& journey);

  /// The dialogs to come are acted on in the order of these calls; one that nobody expects is a failure.
  void Expect(std::function<void(QWidget&)> act) { expected_.push_back(std::move(act)); }
  /// A message box whose button is clicked; its text is added to `box_texts`.
  void ExpectBox(QMessageBox::StandardButton button);
  /// A file dialog in which the path is typed.
  void ExpectFileDialog(const std::string& path);
  [[nodiscard]] bool NothingExpected() const { return expected_.empty(); }

  template <typename Widget = QWidget>
  Widget& Find(const char* name) {
    return *static_cast<Widget*>(program_->Window().findChild<QWidget*>(QLatin1String(name)));
  }
  app::Form1& Form() { return program_->Logic().Controls(); }
  /// The visible list.
  QTreeView& List();
  /// The texts of a column in display order.
  QStringList Column(int column = 0);

  // User input
  void Click(const char* name);
  void ClickRow(const QString& name);
  void ClickHeader(int column);
  /// Replaces a field's text by typing; ASCII only.
  static void Type(QWidget& field, const QString& text);
  /// Presses a key in the main window, wherever its keyboard focus is.
  void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
  static void PressButton(QWidget& dialog, const char* name);

  /// Lets the program process its queued input, as the event loop would do next.
  static void Settle();

  [[nodiscard]] std::string Stations() const { return folder_.Read("Ordnerzentrale/Funkhaus.ini"); }
  [[nodiscard]] std::string Options() const { return folder_.Read("Ordnerzentrale/Opt.ini"); }

  test_support::TempFolder folder_;
  std::string argument_;
  QStringList box_texts_;
  std::unique_ptr<Entrance> entrance_;
  std::unique_ptr<Program> program_;

 private:
  void ActOnDialog();

  std::string name_ = "funkhausplayer";
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  int count_ = 1;
  std::deque<std::function<void(QWidget&)>> expected_;
};

}  // namespace program_test
