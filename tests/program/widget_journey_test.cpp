// What a user does with the catalogue, by mouse and keyboard on the real window; in the end the files on the
// disk are looked at byte for byte.
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>

#include "tests/program/program_rig.h"

namespace program_test {
namespace {

std::string Station(const std::string& name, const std::string& genre, const std::string& favourite,
                    const std::string& link = "http://127.0.0.1:9/x", const std::string& number = "") {
  return "[" + name + "]\r\nStation=" + name + "\r\nLink=" + link + "\r\nGenre=" + genre +
         "\r\nFavorit=" + favourite + "\r\nM3uNr=" + number + "\r\n";
}

const std::string kTop = "; von Hand\r\n";

class WidgetJourney : public ProgramRig {
 protected:
  /// Fills the new-station dialog from the clipboard and accepts it.
  static void AddFromClipboard(QWidget& dialog) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8("Grüner Hügel"));
    PressButton(dialog, "CommandButton3_0");
    QGuiApplication::clipboard()->setText(QStringLiteral("http://127.0.0.1:9/neu"));
    PressButton(dialog, "CommandButton3_1");
    QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_1")), Qt::Key_Return);
  }
  static constexpr const char* kAdded =
      "[Gr\xFCner H\xFCgel]\r\nGenre=80er/90er\r\nLink=http://127.0.0.1:9/neu\r\nFavorit=\r\nM3uNr=\r\n";
};

TEST_F(WidgetJourney, ViewsAreSwitchedAFavouriteIsMarkedAndTheListIsSorted) {
  const std::string others =
      Station("Radio A", "Rock", "1") + Station("Radio 10", "Dance", "") + Station("K\xFCste", "Oldies", "");
  Start(kTop + others + Station("Radio 2", "Dance", ""));
  const QString coast = QString::fromUtf8("Küste");
  EXPECT_EQ(Run([&] {
              EXPECT_EQ(Column(), QStringList({coast, "Radio 2", "Radio 10", "Radio A"}));
              ClickHeader(1);
              EXPECT_EQ(Column(1), QStringList({"Dance", "Dance", "Oldies", "Rock"}));
              ClickHeader(1);
              EXPECT_EQ(Column(1), QStringList({"Rock", "Oldies", "Dance", "Dance"}));
              ClickHeader(0);
              ClickRow("Radio 2");
              EXPECT_EQ(Find<QLineEdit>("TextBox1_0").text(), "Radio 2");
              Click("Check2");
              Click("Check1");
              EXPECT_EQ(Find<QGroupBox>("Frame2").title(), "Genre-Filter: Dance");
              EXPECT_EQ(Column(), QStringList({"Radio 2", "Radio 10"}));
              EXPECT_FALSE(Find("CommandButton1").isVisible());
              // Four entries up from "Dance" is "Rock".
              for (int step = 0; step < 4; ++step) QTest::keyClick(&Find("Combo1"), Qt::Key_Up);
              Settle();
              EXPECT_EQ(Column(), QStringList({"Radio A"}));
              Click("Check3");
              EXPECT_FALSE(Find<QCheckBox>("Check1").isChecked());
              EXPECT_EQ(Find<QGroupBox>("Frame2").title(), "Favoriten");
              EXPECT_EQ(Column(), QStringList({"Radio 2", "Radio A"}));
              Click("Check3");
              EXPECT_EQ(Column(), QStringList({coast, "Radio 2", "Radio 10", "Radio A"}));
              EXPECT_EQ(List().currentIndex().data().toString(), "Radio 2") << "selected before, and again";
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(Stations(), kTop + others + Station("Radio 2", "Dance", "1"));
  EXPECT_EQ(Options(), "[Pfad3]\r\nFunkhausFavorit=0\r\n");
}

TEST_F(WidgetJourney, WindowAndColumnsAreAtTheNextStartAsTheyWereLeft) {
  Start(kTop + Station("Radio A", "Rock", "1"));
  Run([&] {
    program_->Window().resize(700, 680);
    Form().SymbolListview.DragColumn(1, 210);
    Settle();
    program_->Window().close();
  });
  program_.reset();
  entrance_.reset();
  Start(kTop + Station("Radio A", "Rock", "1"));
  Run([&] {
    EXPECT_EQ(program_->Window().size(), QSize(700, 680));
    EXPECT_EQ(List().columnWidth(1), 210);
    EXPECT_EQ(List().columnWidth(0), 300);
    program_->Window().close();
  });
}

TEST_F(WidgetJourney, LinkAndNumberAreEditedAndApplied) {
  const std::string list = folder_.Write("listen/liste.m3u", "#EXTM3U\n").string();
  Start(kTop + Station("Radio A", "Rock", "", "http://127.0.0.1:9/alt") + Station("Radio B", "Dance", ""));
  EXPECT_EQ(Run([&] {
              ClickRow("Radio A");
              EXPECT_FALSE(Find("UpDownTextBox1").isVisible()) << "no playlist";
              Type(Find("TextBox1_1"), QString::fromStdString(list));
              Click("Command8_2");
              ClickRow("Radio B");
              ClickRow("Radio A");
              ASSERT_TRUE(Find("UpDownTextBox1").isVisible());
              QTest::keyClick(&Find("UpDownTextBox1"), Qt::Key_Up);
              Settle();
              QTest::keyClick(&Find("UpDownTextBox1"), Qt::Key_Up);
              Settle();
              Click("Command8_0");
              EXPECT_EQ(List().model()->index(0, 5).data().toString(), "3");
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(Stations(), kTop + Station("Radio A", "Rock", "", list, "3") + Station("Radio B", "Dance", ""));
}

TEST_F(WidgetJourney, NewStationIsPastedIntoTheDialogAndSavedAtOnce) {
  Start(kTop + Station("Radio A", "Rock", "1"));
  Expect([](QWidget& dialog) { AddFromClipboard(dialog); });
  ExpectBox(QMessageBox::Yes);
  ExpectBox(QMessageBox::Ok);
  EXPECT_EQ(Run([&] {
              PressKey(Qt::Key_N, Qt::ControlModifier);
              EXPECT_EQ(Column(), QStringList({"Radio A", QString::fromUtf8("Grüner Hügel")}));
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(box_texts_, QStringList({QString::fromUtf8("Sollen die Änderungen gespeichert werden?"),
                                     QString::fromUtf8("Änderungen gespeichert!")}));
  EXPECT_EQ(Stations(), kTop + Station("Radio A", "Rock", "1") + kAdded);
}

TEST_F(WidgetJourney, CancelledDialogChangesNothingAndClosingAsksNothing) {
  Start(kTop + Station("Radio A", "Rock", "1"));
  Expect([](QWidget& dialog) {
    QTest::keyClicks(dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_0")), "Doch nicht");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(Run([&] {
              Click("CommandButton2");
              EXPECT_EQ(Column(), QStringList({"Radio A"}));
              program_->Window().close();
            }),
            0);
  EXPECT_TRUE(NothingExpected());
  EXPECT_EQ(Stations(), kTop + Station("Radio A", "Rock", "1"));
}

/// A new row that was not saved, then the window is closed and the question answered.
class ClosingQuestion : public WidgetJourney {
 protected:
  void CloseAndAnswer(std::function<void(QWidget&)> act) {
    Start(kTop + Station("Radio A", "Rock", "1"));
    Expect([](QWidget& dialog) { AddFromClipboard(dialog); });
    ExpectBox(QMessageBox::No);
    Expect(std::move(act));
    EXPECT_EQ(Run([&] {
                Click("CommandButton2");
                program_->Window().close();
              }),
              0);
    EXPECT_EQ(Options(), "[Pfad3]\r\nFunkhausFavorit=0\r\n");
  }
  static void Press(QWidget& dialog, QMessageBox::StandardButton button) {
    QTest::mouseClick(dynamic_cast<QMessageBox&>(dialog).button(button), Qt::LeftButton);
  }
};

TEST_F(ClosingQuestion, YesSavesTheList) {
  CloseAndAnswer([this](QWidget& dialog) {
    ExpectBox(QMessageBox::Ok);
    Press(dialog, QMessageBox::Yes);
  });
  EXPECT_EQ(box_texts_.last(), QString::fromUtf8("Änderungen gespeichert!"));
  EXPECT_EQ(Stations(), kTop + Station("Radio A", "Rock", "1") + kAdded);
}

TEST_F(ClosingQuestion, NoSavesNothing) {
  CloseAndAnswer([](QWidget& dialog) { Press(dialog, QMessageBox::No); });
  EXPECT_EQ(Stations(), kTop + Station("Radio A", "Rock", "1"));
}

TEST_F(ClosingQuestion, HasNoCancelAndEscapeIsNoAnswer) {
  CloseAndAnswer([](QWidget& dialog) {
    EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Cancel), nullptr);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, QMessageBox::No);
  });
}

TEST_F(WidgetJourney, EntriesAreDeletedByKeyAndByButtonWithoutAQuestion) {
  const std::string kept = Station("Radio D", "Rock", "");
  Start(kTop + Station("Radio A", "Rock", "1") + Station("Radio B", "Dance", "") +
        Station("Radio C", "Dance", "") + kept);
  EXPECT_EQ(Run([&] {
              ClickRow("Radio A");
              QTest::keyClick(&List(), Qt::Key_Delete);
              Settle();
              ClickRow("Radio B");
              Click("Command8_3");
              ClickRow("Radio C");
              QTest::keyClick(&List(), Qt::Key_Delete);
              Settle();
              EXPECT_EQ(Column(), QStringList({"Radio D"}));
              QTest::keyClick(&List(), Qt::Key_Delete);
              Settle();
              EXPECT_EQ(Column(), QStringList({"Radio D"})) << "no row is selected";
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(Stations(), kTop + kept);
}

TEST_F(WidgetJourney, ControlFAndLettersFindAStationAndEnterPlaysIt) {
  Start(Station("Radio A", "Rock", "") +
        Station("Radio B", "Dance", "", folder_.Path().string() + "/fehlt.mp3"));
  ExpectBox(QMessageBox::Ok);
  EXPECT_EQ(Run([&] {
              Find("TextBox1_0").setFocus();
              QTest::keyClick(&Find("TextBox1_0"), Qt::Key_F, Qt::ControlModifier);
              ASSERT_TRUE(List().hasFocus());
              QTest::keyClicks(&List(), "radio b");
              Settle();
              EXPECT_EQ(Find<QLineEdit>("TextBox1_0").text(), "Radio B");
              QTest::keyClick(&List(), Qt::Key_Return);
              Settle();
              EXPECT_TRUE(Form().Timer2.Enabled()) << "Start was pressed";
              program_->Window().close();
            }),
            0);
  EXPECT_EQ(box_texts_, QStringList({"Das System kann die angegebene Datei nicht finden.\r\n"}));
}

TEST_F(WidgetJourney, ListIsExportedReplacedByAnImportAndSaved) {
  Start(Station("Radio A", "Rock", "1", "http://127.0.0.1:9/a") +
        Station("Radio B", "Dance", "", "http://127.0.0.1:9/b"));
  const std::string path = folder_.Path().string() + "/liste.m3u";
  ExpectFileDialog(path);
  ExpectBox(QMessageBox::Ok);
  ExpectFileDialog(path);
  ExpectBox(QMessageBox::Yes);
  ExpectFileDialog(path);
  ExpectBox(QMessageBox::No);
  ExpectBox(QMessageBox::Ok);
  EXPECT_EQ(Run([&] {
              Click("Command4");
              EXPECT_EQ(folder_.Read("liste.m3u"),
                        "#EXTM3U\n#EXTINF:-1,Radio A\nhttp://127.0.0.1:9/a\n"
                        "#EXTINF:-1,Radio B\nhttp://127.0.0.1:9/b\n\r\n");
              Click("Command5");
              EXPECT_EQ(Column(), QStringList({"Radio A", "Radio B", "Radio A", "Radio B"}));
              Click("Command5");
              EXPECT_EQ(Column(), QStringList({"Radio A", "Radio B"}));
              PressKey(Qt::Key_S, Qt::ControlModifier);
              program_->Window().close();
            }),
            0);
  EXPECT_TRUE(NothingExpected());
  EXPECT_EQ(box_texts_.first(), QString::fromStdString("M3U-Liste gespeichert unter: " + path));
  EXPECT_EQ(Stations(),
            "[Radio A]\r\nStation=Radio A\r\nLink=http://127.0.0.1:9/a\r\nGenre=\r\nFavorit=\r\nM3uNr=\r\n"
            "[Radio B]\r\nStation=Radio B\r\nLink=http://127.0.0.1:9/b\r\nGenre=\r\nFavorit=\r\nM3uNr=\r\n");
}

}  // namespace
}  // namespace program_test
