// The whole program in German and in English: its own texts, and what the system adds to them.
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <map>

#include "catalogue/station_lists.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/system_messages.h"
#include "platform/qt/dialog_texts.h"
#include "platform/qt/new_station_window.h"
#include "tests/program/program_rig.h"
#include "tests/support/language_rig.h"

namespace program_test {
namespace {

constexpr const char* kEnglish = "[Pfad1]\r\nLanguages=English\r\n";
constexpr const char* kOneStation =
    "[Radio A]\r\nStation=Radio A\r\nLink=/fehlt.mp3\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";

/// Captions by their place.
using CaptionMap = std::map<std::string, platform::Text>;

CaptionMap Captions(const QWidget& window) {
  CaptionMap captions;
  const auto add = [&](const std::string& place, QString text) {
    text.replace(QLatin1String("&&"), QLatin1String("&"));
    if (!text.isEmpty()) captions[place] = text.toStdU16String();
  };
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const std::string name = widget->objectName().toStdString();
    if (name.empty() || name.starts_with("qt_")) continue;
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) add(name, button->text());
    if (const auto* label = qobject_cast<const QLabel*>(widget)) add(name, label->text());
    if (const auto* frame = qobject_cast<const QGroupBox*>(widget)) add(name, frame->title());
    const auto* list = qobject_cast<const QTreeView*>(widget);
    for (int column = 0; list != nullptr && column < list->header()->count(); ++column) {
      add(name + std::to_string(column), list->model()->headerData(column, Qt::Horizontal).toString());
    }
  }
  return captions;
}

QString Plain(const QAbstractButton* button) {
  return button == nullptr ? QString() : button->text().remove(QLatin1Char('&'));
}

class LanguageProgram : public ProgramRig {
 protected:
  /// The texts of the buttons of a box and of a file dialog, and what the system says of a missing file.
  QStringList SystemTexts() {
    QStringList texts;
    Expect([&texts](QWidget& dialog) {
      auto& box = dynamic_cast<QMessageBox&>(dialog);
      for (const auto button : {QMessageBox::Ok, QMessageBox::Cancel}) texts << Plain(box.button(button));
      box.reject();
    });
    Expect([&texts](QWidget& dialog) {
      const auto& files = dynamic_cast<QFileDialog&>(dialog);
      texts << files.windowTitle() << files.labelText(QFileDialog::Accept).remove(QLatin1Char('&'))
            << files.labelText(QFileDialog::Reject) << files.labelText(QFileDialog::FileType);
      dynamic_cast<QDialog&>(dialog).reject();
    });
    ExpectBox(QMessageBox::Ok);
    Run([&] {
      Click("Command3");
      Click("Command4");
      const std::unique_ptr<QMenu> menu(Find<QLineEdit>("TextBox1_0").createStandardContextMenu());
      texts << menu->actions().last()->text().section(QLatin1Char('\t'), 0, 0).remove(QLatin1Char('&'));
      ClickRow("Radio A");
      Click("Command1");
      program_->Window().close();
    });
    return texts << box_texts_;
  }
};

/// The captions of a German window of the same kind: the inventories are made with German texts.
CaptionMap GermanWindow() {
  app::Form1 form;
  for (controls::ListView* list : {&form.SymbolListview, &form.ExplorerListFilter}) {
    catalogue::StationLists::CreateColumns(*list);
  }
  platform::posix::PosixNativePaths paths;
  const platform::qt::QtIcons icons(paths);
  platform::qt::QtMessageLoop loop;
  return Captions(platform::qt::PlayerWindow(form, icons, loop));
}

CaptionMap GermanDialog() {
  app::Form2 form;
  platform::posix::PosixNativePaths paths;
  const platform::qt::QtIcons icons(paths);
  platform::qt::QtMessageLoop loop;
  return Captions(platform::qt::NewStationWindow(form, icons, loop));
}

void ExpectTranslated(const CaptionMap& german, const CaptionMap& shown, std::size_t at_least) {
  test_support::ProgramLanguage english(u"English");
  EXPECT_GE(german.size(), at_least);
  ASSERT_EQ(german.size(), shown.size());
  for (const auto& [place, text] : german) {
    const bool symbol = text.size() == 1;
    EXPECT_TRUE(symbol || english.Knows(text)) << place << ": " << english.Utf8(text);
    EXPECT_EQ(english.Utf8(shown.at(place)), english.Utf8(english.Translated(text))) << place;
  }
}

TEST_F(LanguageProgram, EveryCaptionOfTheEnglishWindowAndItsDialogIsTheTranslationOfTheGermanOne) {
  Start(kOneStation, kEnglish);
  Expect([this](QWidget& dialog) {
    ExpectTranslated(GermanDialog(), Captions(dialog), 6);
    // The window's own title and the tooltips of the paste buttons are not among what the dialog translates.
    EXPECT_EQ(dialog.windowTitle(), QString::fromUtf8("Neue Radiostation einfügen"));
    ExpectBox(QMessageBox::Ok);
    PressButton(dialog, "CommandButton1");
    PressButton(dialog, "CommandButton2");
  });
  EXPECT_EQ(Run([this] {
              ExpectTranslated(GermanWindow(), Captions(program_->Window()), 35);
              EXPECT_EQ(program_->Window().windowTitle(), "Funkhausplayer");
              Click("CommandButton2");
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(box_texts_, QStringList({"Please enter a name for the radio station!"}));
}

TEST_F(LanguageProgram, SystemSpeaksGermanWithTheGermanProgram) {
  Start(kOneStation);
  EXPECT_EQ(SystemTexts(), QStringList({"OK", "Abbrechen", "Speichern unter", "Speichern", "Abbrechen",
                                        "Dateityp:", QString::fromUtf8("Alles auswählen"),
                                        "Das System kann die angegebene Datei nicht finden.\r\n"}));
  EXPECT_EQ(Find("CommandButton1").toolTip(), "Liste speichern (Strg+S)");
  EXPECT_EQ(Find("Frame2").toolTip(), "Zur Liste (Strg+F)");
  EXPECT_EQ(Find("Command8_0").accessibleName(), QString::fromUtf8("M3U-Nummer übernehmen"));
}

TEST_F(LanguageProgram, SystemSpeaksEnglishWithTheEnglishProgram) {
  Start(kOneStation, kEnglish);
  EXPECT_EQ(SystemTexts(), QStringList({"OK", "Cancel", "Save As", "Save", "Cancel", "Files of type:",
                                        "Select All", "The system cannot find the file specified.\r\n"}));
  EXPECT_EQ(Find("CommandButton1").toolTip(), "Save list (Ctrl+S)");
  EXPECT_EQ(Find("Frame2").toolTip(), "To the list (Ctrl+F)");
  EXPECT_EQ(Find("Command8_0").accessibleName(), "Take over M3U number");
}

TEST_F(LanguageProgram, EnglishFileKnowsTheWordsOfTheStandardDialogsAndTheSystemsMessages) {
  test_support::ProgramLanguage english(u"English");
  const auto expect_known = [&english](const platform::Text& text) {
    EXPECT_TRUE(english.Knows(text)) << english.Utf8(text);
    return text;
  };
  for (const char16_t* text : platform::qt::dialog_texts::kAll) expect_known(text);
  platform::posix::PosixSystemMessages messages;
  messages.SetLookUp(expect_known);
  for (const std::uint32_t code : {0x80070002U, 0xC00D36C4U}) {
    EXPECT_FALSE(messages.FormatMessageA(static_cast<std::int32_t>(code)).empty());
  }
}

TEST_F(LanguageProgram, LanguageFileIsFoundWhateverItsLetterCase) {
  Start(kOneStation, "[Pfad1]\r\nLanguages=ENGLISH\r\n");
  EXPECT_EQ(Find<QAbstractButton>("CommandButton1").text(), "Save list");
}

TEST_F(LanguageProgram, LanguageFileOfTheUsersDataFolderWins) {
  folder_.Write("data/funkhausplayer/LANGUAGES/english.lng", "[Common]\r\nListe speichern=Keep it\r\n");
  Start(kOneStation, kEnglish);
  EXPECT_EQ(Find<QAbstractButton>("CommandButton1").text(), "Keep it");
}

class TitlesProgram : public ProgramRig {};

TEST_F(TitlesProgram, ProgramHasNoNameThatTheToolkitAppendsToTitles) {
  Start(kOneStation);
  EXPECT_EQ(QApplication::applicationName(), "Funkhausplayer");
  // Without a name for titles the toolkit knows the program by the other one only.
  QApplication::setApplicationName(QStringLiteral("Probe"));
  EXPECT_EQ(QApplication::applicationDisplayName(), "Probe");
  QApplication::setApplicationName(QStringLiteral("Funkhausplayer"));
}

}  // namespace
}  // namespace program_test
