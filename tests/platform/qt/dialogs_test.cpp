#include "platform/qt/dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <optional>

#include "controls/timer.h"
#include "platform/posix/native_paths.h"
#include "platform/qt/timer_binding.h"
#include "tests/platform/qt/window_fixture.h"

namespace platform::qt {
namespace {

/// Acts once on the modal dialog that opens next.
class NextDialog {
 public:
  explicit NextDialog(std::function<void(QDialog&)> action) : action_(std::move(action)) {
    QObject::connect(&poll_, &QTimer::timeout, &poll_, [this] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return;
      poll_.stop();
      action_(*dialog);
    });
    poll_.start(5);
  }

 private:
  std::function<void(QDialog&)> action_;
  QTimer poll_;
};

QAbstractButton& Button(QDialog& dialog, QMessageBox::StandardButton which) {
  return *static_cast<QMessageBox&>(dialog).button(which);
}

class MessageBoxes : public ::testing::Test {
 protected:
  PlainPaths paths_;
  QtDialogs dialogs_{paths_};
};

TEST_F(MessageBoxes, AnswersAreThoseOfTheButtons) {
  const struct {
    std::uint32_t style;
    QMessageBox::StandardButton button;
    MessageBoxAnswer answer;
  } cases[] = {{kMbOk, QMessageBox::Ok, MessageBoxAnswer::kOk},
               {kMbOkCancel, QMessageBox::Ok, MessageBoxAnswer::kOk},
               {kMbOkCancel, QMessageBox::Cancel, MessageBoxAnswer::kCancel},
               {kMbYesNo, QMessageBox::Yes, MessageBoxAnswer::kYes},
               {kMbYesNo, QMessageBox::No, MessageBoxAnswer::kNo},
               {kMbYesNoCancel, QMessageBox::No, MessageBoxAnswer::kNo},
               {kMbYesNoCancel, QMessageBox::Cancel, MessageBoxAnswer::kCancel}};
  for (const auto& one : cases) {
    const NextDialog click([&](QDialog& box) { Button(box, one.button).click(); });
    EXPECT_EQ(dialogs_.MessageBoxW(u"Frage?", u"", one.style), one.answer) << one.style;
  }
}

TEST_F(MessageBoxes, ButtonsSpeakTheLanguage) {
  QStringList texts;
  const auto read = [&](QDialog& box) {
    for (const auto button : {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}) {
      texts << Button(box, button).text().remove(QLatin1Char('&'));
    }
    Button(box, QMessageBox::Cancel).click();
  };
  {
    const NextDialog german(read);
    dialogs_.MessageBoxW(u"?", u"", kMbYesNoCancel);
  }
  dialogs_.SetLookUp([](const Text& german) { return u"<" + german + u">"; });
  const NextDialog translated(read);
  dialogs_.MessageBoxW(u"?", u"", kMbYesNoCancel);
  EXPECT_EQ(texts, QStringList({"Ja", "Nein", "Abbrechen", "<Ja>", "<Nein>", "<Abbrechen>"}));
}

TEST_F(MessageBoxes, IconTextAndTitleAreShownAsGiven) {
  const struct {
    std::uint32_t bits;
    QMessageBox::Icon icon;
  } icons[] = {{kMbIconCritical, QMessageBox::Critical},
               {kMbIconQuestion, QMessageBox::Question},
               {kMbIconExclamation, QMessageBox::Warning},
               {kMbIconInformation, QMessageBox::Information},
               {0, QMessageBox::NoIcon}};
  for (const auto& one : icons) {
    const NextDialog look([&](QDialog& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.icon(), one.icon);
      EXPECT_EQ(box.text(), "<b>Sender</b> & mehr");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.windowTitle(), "Funkhausplayer");
      Button(box, QMessageBox::Ok).click();
    });
    dialogs_.MessageBoxW(u"<b>Sender</b> & mehr", u"", one.bits);
  }
}

TEST_F(MessageBoxes, QuestionWithYesAndNoCannotBeDismissed) {
  const NextDialog act([](QDialog& box) {
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_TRUE(box.isVisible());
    box.close();
    EXPECT_TRUE(box.isVisible());
    Button(box, QMessageBox::Yes).click();
  });
  EXPECT_EQ(dialogs_.MessageBoxW(u"Speichern?", u"", kMbYesNo | kMbIconQuestion), MessageBoxAnswer::kYes);
}

TEST_F(MessageBoxes, EscapeIsCancelWhereThereIsCancelAndOkWhereThereIsOnlyOk) {
  const auto escape = [](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  {
    const NextDialog act(escape);
    EXPECT_EQ(dialogs_.MessageBoxW(u"?", u"", kMbYesNoCancel), MessageBoxAnswer::kCancel);
  }
  const NextDialog act(escape);
  EXPECT_EQ(dialogs_.MessageBoxW(u"!", u"", kMbOk), MessageBoxAnswer::kOk);
}

TEST_F(MessageBoxes, TimersRunWhileABoxIsOpen) {
  QtMessageLoop loop;
  controls::Timer timer;
  const TimerBinding binding(timer, loop);
  const Counter ticks(timer.Ticked);
  timer.SetInterval(5);
  timer.SetEnabled(true);
  const NextDialog wait([&](QDialog& box) {
    EXPECT_TRUE(WaitFor([&] { return ticks.Count() >= 3; }));
    Button(box, QMessageBox::Ok).click();
  });
  dialogs_.MessageBoxW(u"!", u"", kMbOk);
}

TEST_F(MessageBoxes, EndOfTheProgramLeavesTheBoxWithTheAnswerThatStartsNothing) {
  MessageBoxAnswer answer = MessageBoxAnswer::kYes;
  const NextDialog end([](QDialog&) { QCoreApplication::exit(); });
  QTimer::singleShot(0, [&] { answer = dialogs_.MessageBoxW(u"?", u"", kMbYesNo); });
  QApplication::exec();
  EXPECT_EQ(answer, MessageBoxAnswer::kNo);
}

TEST_F(MessageBoxes, BoxBelongsToTheMainWindow) {
  WindowFixture fixture;
  ASSERT_TRUE(fixture.Open());
  dialogs_.SetMainWindow(fixture.window.get());
  const NextDialog look([&](QDialog& box) {
    EXPECT_EQ(box.parentWidget(), fixture.window.get());
    box.close();
  });
  dialogs_.MessageBoxW(u"!", u"", kMbOk);
}

class FileDialogs : public ::testing::Test {
 protected:
  FileDialogs() {
    record_.filter = std::u16string(u"M3U-Datei (*.m3u)\0*.m3u\0\0", 25);
    record_.file = std::u16string(512, u'\0');
    record_.initial_folder = FromQt(folder_.path());
    record_.default_extension = u"m3u";
  }
  void Touch(const QString& name) {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  void Suggest(const Text& name) { record_.file.replace(0, name.size(), name); }
  [[nodiscard]] QString Chosen() const { return ToQt(record_.file.substr(0, record_.file.find(u'\0'))); }

  static void Accept(QDialog& dialog, const QString& name) {
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
    QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
  }
  bool Save(const QString& name) {
    const NextDialog act([&](QDialog& dialog) { Accept(dialog, name); });
    return dialogs_.GetSaveFileNameW(record_);
  }
  bool Open(const QString& name) {
    const NextDialog act([&](QDialog& dialog) { Accept(dialog, name); });
    return dialogs_.GetOpenFileNameW(record_);
  }

  QTemporaryDir folder_;
  PlainPaths paths_;
  QtDialogs dialogs_{paths_};
  OpenFileName record_;
};

TEST_F(FileDialogs, SaveGivesTheFullPath) {
  ASSERT_TRUE(Save("liste.m3u"));
  EXPECT_EQ(Chosen(), folder_.filePath("liste.m3u"));
}

TEST_F(FileDialogs, PathKeepsTheSystemsSeparators) {
  platform::posix::PosixNativePaths paths;
  QtDialogs dialogs(paths);
  const NextDialog act([](QDialog& dialog) { Accept(dialog, "neu.m3u"); });
  ASSERT_TRUE(dialogs.GetSaveFileNameW(record_));
  EXPECT_EQ(Chosen(), folder_.filePath("neu.m3u"));
}

TEST_F(FileDialogs, ExtensionIsAddedOnlyWhenNoneWasTyped) {
  ASSERT_TRUE(Save("liste"));
  EXPECT_EQ(Chosen(), folder_.filePath("liste.m3u"));
  record_.file.assign(512, u'\0');
  ASSERT_TRUE(Save("liste.txt"));
  EXPECT_EQ(Chosen(), folder_.filePath("liste.txt"));
}

TEST_F(FileDialogs, SaveDoesNotAskBeforeReplacingUnlessTheFlagSaysSo) {
  Touch("da.m3u");
  EXPECT_TRUE(Save("da.m3u"));
  record_.flags = kOfnOverwritePrompt;
  bool asked = false;
  std::optional<NextDialog> question;
  const NextDialog act([&](QDialog& dialog) {
    question.emplace([&](QDialog& box) {
      asked = qobject_cast<QMessageBox*>(&box) != nullptr;
      box.reject();
      QTimer::singleShot(0, &dialog, [&dialog] { dialog.reject(); });
    });
    Accept(dialog, "da.m3u");
  });
  // The question comes up inside the dialog's own accepting.
  const auto watch = [&] { return dialogs_.GetSaveFileNameW(record_); };
  EXPECT_FALSE(watch());
  EXPECT_TRUE(asked);
}

TEST_F(FileDialogs, CancellingChangesNothing) {
  Suggest(u"vorschlag.m3u");
  const OpenFileName before = record_;
  const NextDialog act([](QDialog& dialog) { dialog.reject(); });
  EXPECT_FALSE(dialogs_.GetSaveFileNameW(record_));
  EXPECT_EQ(record_.file, before.file);
}

TEST_F(FileDialogs, SuggestedNameFiltersAndTitleAreShown) {
  Suggest(u"Radioliste_1.m3u");
  record_.title = u"M3U-Datei laden";
  const NextDialog look([](QDialog& dialog) {
    auto& window = static_cast<QFileDialog&>(dialog);
    EXPECT_EQ(window.nameFilters(), QStringList{"M3U-Datei (*.m3u)"});
    EXPECT_EQ(window.windowTitle(), "M3U-Datei laden");
    EXPECT_EQ(window.labelText(QFileDialog::Reject), "Abbrechen");
    const auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    EXPECT_EQ(name->text(), "Radioliste_1.m3u");
    dialog.reject();
  });
  dialogs_.GetSaveFileNameW(record_);
}

TEST_F(FileDialogs, FilterWithoutItsPatternInTheDescriptionGetsIt) {
  record_.filter = std::u16string(u"Listen\0*.m3u;*.txt\0*.m3U\0*.m3u\0\0", 32);
  const NextDialog look([](QDialog& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).nameFilters(),
              QStringList({"Listen (*.m3u *.txt)", "*.m3U (*.m3u)"}));
    dialog.reject();
  });
  dialogs_.GetOpenFileNameW(record_);
}

TEST_F(FileDialogs, OpenGivesAnExistingFileWithUmlauts) {
  Touch(QString::fromUtf8("Küste.m3u"));
  record_.flags = kOfnFileMustExist;
  ASSERT_TRUE(Open(QString::fromUtf8("Küste.m3u")));
  EXPECT_EQ(Chosen(), folder_.filePath(QString::fromUtf8("Küste.m3u")));
}

TEST_F(FileDialogs, OpenRefusesAMissingFileWhenItMustExist) {
  record_.flags = kOfnFileMustExist;
  bool told = false;
  std::optional<NextDialog> message;
  const NextDialog act([&](QDialog& dialog) {
    message.emplace([&](QDialog& box) {
      told = qobject_cast<QMessageBox*>(&box) != nullptr;
      box.accept();
      QTimer::singleShot(0, &dialog, [&dialog] { dialog.reject(); });
    });
    Accept(dialog, "fehlt.m3u");
  });
  EXPECT_FALSE(dialogs_.GetOpenFileNameW(record_));
  EXPECT_TRUE(told);
}

TEST_F(FileDialogs, PathThatDoesNotFitIsAFailure) {
  record_.file.assign(8, u'\0');
  EXPECT_FALSE(Save("liste.m3u"));
  EXPECT_EQ(record_.file, std::u16string(8, u'\0'));
}

TEST_F(FileDialogs, NextDialogStartsInTheFolderChosenLast) {
  ASSERT_TRUE(Save("liste.m3u"));
  record_.initial_folder.clear();
  const NextDialog look([this](QDialog& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).directory().absolutePath(), folder_.path());
    dialog.reject();
  });
  dialogs_.GetOpenFileNameW(record_);
}

}  // namespace
}  // namespace platform::qt
