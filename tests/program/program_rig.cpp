#include "tests/program/program_rig.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <cstdlib>

namespace program_test {

namespace {

constexpr char kActedOn[] = "acted_on";
constexpr int kPollMilliseconds = 5;
constexpr int kDeadlineMilliseconds = 60'000;

}  // namespace

ProgramRig::ProgramRig() {
  ::setenv("APPDATA", folder_.Path().c_str(), 1);
  ::setenv("XDG_STATE_HOME", (folder_.Path() / "state").c_str(), 1);
  ::setenv("XDG_DATA_HOME", (folder_.Path() / "data").c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
}

ProgramRig::~ProgramRig() = default;

void ProgramRig::Start(const std::string& stations, const std::string& options) {
  folder_.Write("Ordnerzentrale/Funkhaus.ini", stations);
  if (!options.empty()) folder_.Write("Ordnerzentrale/Opt.ini", options);
  entrance_ = std::make_unique<Entrance>();
  ASSERT_FALSE(entrance_->ExitCode());
  program_ = std::make_unique<Program>(count_, arguments_.data());
}

int ProgramRig::Run(const std::function<void()>& journey) {
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &poll, [this] { ActOnDialog(); });
  poll.start(kPollMilliseconds);
  QTimer deadline;
  QObject::connect(&deadline, &QTimer::timeout, &deadline, [] {
    ADD_FAILURE() << "the program did not end";
    std::abort();
  });
  deadline.setSingleShot(true);
  deadline.start(kDeadlineMilliseconds);
  QTimer::singleShot(0, &program_->Window(), [&] {
    // On a screen without a window manager nobody else gives the window the keyboard.
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&program_->Window()));
    program_->Window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&program_->Window()));
    journey();
    Settle();
    if (!Form().form.IsClosed()) QCoreApplication::exit();
  });
  return program_->Run(entrance_->Requests(), argument_);
}

void ProgramRig::Settle() {
  // What comes during a round is left to the next one.
  constexpr int kRounds = 3;
  for (int round = 0; round < kRounds; ++round) QCoreApplication::sendPostedEvents();
}

void ProgramRig::ActOnDialog() {
  QWidget* dialog = QApplication::activeModalWidget();
  // One that comes to the front again after another was closed was acted on already.
  if (dialog == nullptr || !dialog->isVisible() || dialog->property(kActedOn).toBool()) return;
  dialog->setProperty(kActedOn, true);
  if (expected_.empty()) {
    const auto* box = qobject_cast<QMessageBox*>(dialog);
    ADD_FAILURE()
        << "nobody expected "
        << (box != nullptr ? box->text() : QString(dialog->metaObject()->className())).toStdString();
    QCoreApplication::exit();
    return;
  }
  // Outside this timer's tick, so that the timer continues when the action opens the next dialog.
  QTimer::singleShot(0, dialog, [dialog, act = std::move(expected_.front())] { act(*dialog); });
  expected_.pop_front();
}

void ProgramRig::ExpectBox(QMessageBox::StandardButton button) {
  Expect([this, button](QWidget& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr) << "not a message box";
    box_texts_ << box->text();
    ASSERT_NE(box->button(button), nullptr) << "no such button";
    QTest::mouseClick(box->button(button), Qt::LeftButton);
  });
}

void ProgramRig::ExpectFileDialog(const std::string& path) {
  Expect([path](QWidget& dialog) {
    ASSERT_NE(qobject_cast<QFileDialog*>(&dialog), nullptr) << "not a file dialog";
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QString::fromStdString(path));
    QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
  });
}

QTreeView& ProgramRig::List() {
  auto& filtered = Find<QTreeView>("ExplorerListFilter");
  return filtered.isVisible() ? filtered : Find<QTreeView>("SymbolListview");
}

QStringList ProgramRig::Column(int column) {
  const QAbstractItemModel& model = *List().model();
  QStringList texts;
  for (int row = 0; row < model.rowCount(); ++row) texts << model.index(row, column).data().toString();
  return texts;
}

void ProgramRig::Click(const char* name) {
  QWidget& widget = Find(name);
  ASSERT_TRUE(widget.isVisible()) << name;
  // Check boxes react to the mouse only on their mark and caption, which are at their beginning.
  constexpr int kInsideTheMark = 8;
  const bool box = widget.inherits("QCheckBox");
  const QPoint place = box ? QPoint(kInsideTheMark, widget.height() / 2) : widget.rect().center();
  QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
  Settle();
}

void ProgramRig::ClickRow(const QString& name) {
  const auto row = Column().indexOf(name);
  ASSERT_GE(row, 0) << name.toStdString();
  const QModelIndex index = List().model()->index(static_cast<int>(row), 0);
  List().scrollTo(index);
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, List().visualRect(index).center());
  Settle();
}

void ProgramRig::ClickHeader(int column) {
  QHeaderView& header = *List().header();
  const int left = header.sectionViewportPosition(column);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(left + 20, header.height() / 2));
  Settle();
}

void ProgramRig::Type(QWidget& field, const QString& text) {
  field.setFocus();
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&field, text);
  Settle();
}

void ProgramRig::PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  // After a dialog the window needs a moment to have the keyboard again.
  program_->Window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program_->Window()));
  QWidget* focused = QApplication::focusWidget();
  QTest::keyClick(focused != nullptr ? focused : &program_->Window(), key, modifiers);
  Settle();
}

void ProgramRig::PressButton(QWidget& dialog, const char* name) {
  QTest::mouseClick(dialog.findChild<QAbstractButton*>(QLatin1String(name)), Qt::LeftButton);
  Settle();
}

}  // namespace program_test
