// What the whole program does with a list or an address that it is given: at its start and by a later start.
#include <sys/stat.h>

#include <QLineEdit>

#include "tests/program/later_start.h"
#include "tests/program/program_rig.h"

namespace program_test {
namespace {

using Text = std::u16string;
using test_support::RunResult;

constexpr const char* kCatalogueBefore =
    "[Radio A]\r\nStation=Radio A\r\nLink=/fehlt.mp3\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
constexpr const char* kListOfOne =
    "#EXTM3U\n#EXTINF:-1 group-title=\"a,b\",K\xC3\xB6ln, Eins\nhttp://127.0.0.1:9/\n";

class Opening : public ProgramRig {
 protected:
  /// Another start that is given `words`, while this program runs.
  RunResult StartAnother(const std::string& words) {
    auto other = surroundings_.StartToEndMeanwhile(words);
    constexpr int kDeadline = 20'000;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return other.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, kDeadline));
    return other.get();
  }
  bool ComesToSay(const Text& sentence) {
    constexpr int kDeadline = 20'000;
    return QTest::qWaitFor([&] { return Form().StatusLine.Caption() == sentence; }, kDeadline);
  }
  void ExpectNewStation(const QString& link) {
    Expect([link](QWidget& dialog) {
      EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_1"))->text(), link);
      PressButton(dialog, "CommandButton2");
    });
  }
  [[nodiscard]] std::string At(const std::string& name) const { return (folder_.Path() / name).string(); }

  const Text kLoaded = u"Geladene Einträge: 1. Sie sind noch nicht gespeichert.";
  Surroundings surroundings_{folder_};
};

TEST_F(Opening, ListOfTheStartIsInTheListUnsaved) {
  folder_.Write("liste.m3u", kListOfOne);
  argument_ = At("liste.m3u");
  Start(kCatalogueBefore);
  Run([this] {
    EXPECT_TRUE(ComesToSay(kLoaded));
    EXPECT_EQ(Column(), (QStringList{"Radio A", QStringLiteral("Köln, Eins")}));
    EXPECT_EQ(List().currentIndex().row(), 1);
    program_->Window().close();
  });
  EXPECT_EQ(Stations(), kCatalogueBefore);
}

TEST_F(Opening, AddressOfTheStartBeginsANewStation) {
  argument_ = "http://127.0.0.1:9/live";
  ExpectNewStation(QStringLiteral("http://127.0.0.1:9/live"));
  Start(kCatalogueBefore);
  Run([this] {
    EXPECT_TRUE(QTest::qWaitFor([this] { return NothingExpected(); }));
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
    program_->Window().close();
  });
}

TEST_F(Opening, RelativePathOfALaterStartMeansItsOwnFolder) {
  folder_.Write("liste k.pls", "[playlist]\nTitle1=Eins\nFile1=http://127.0.0.1:9/\n");
  Start(kCatalogueBefore);
  Run([this] {
    EXPECT_EQ(StartAnother("'liste k.pls'").exit_code, 0);
    EXPECT_TRUE(ComesToSay(kLoaded));
    EXPECT_EQ(Column(), (QStringList{"Radio A", "Eins"}));
    program_->Window().close();
  });
}

TEST_F(Opening, AddressOfALaterStartBeginsANewStationAndALaterListIsRefusedMeanwhile) {
  folder_.Write("liste.m3u", kListOfOne);
  Start(kCatalogueBefore);
  Expect([this](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("TextBox1_1"))->text(), "https://a.example/");
    EXPECT_EQ(StartAnother("liste.m3u").exit_code, 0);
    EXPECT_TRUE(
        ComesToSay(u"Nicht geöffnet: liste.m3u. Bitte zuerst das offene Fenster schließen und es dann "
                   u"noch einmal versuchen."));
    PressButton(dialog, "CommandButton2");
  });
  Run([this] {
    EXPECT_EQ(StartAnother("https://a.example/").exit_code, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return NothingExpected(); }));
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
    EXPECT_EQ(Column(), QStringList{"Radio A"});
    program_->Window().close();
  });
}

TEST_F(Opening, WhatIsNoReadableListIsNamedInTheStatusLine) {
  std::filesystem::create_directory(At("ordner.m3u"));
  ASSERT_EQ(::mkfifo(At("rohr.m3u").c_str(), 0600), 0);
  Start(kCatalogueBefore);
  Run([this] {
    for (const char* name : {"ordner.m3u", "rohr.m3u"}) {
      EXPECT_EQ(StartAnother(name).exit_code, 0);
      EXPECT_TRUE(ComesToSay(u"Nichts geladen: " + QString(name).toStdU16String() +
                             u" ist nicht lesbar, keine Datei oder größer als 16 MB."));
    }
    EXPECT_EQ(StartAnother("fehlt.m3u").exit_code, 0);
    EXPECT_TRUE(ComesToSay(u"Nichts geladen: fehlt.m3u gibt es nicht."));
    EXPECT_EQ(StartAnother("bild.png").exit_code, 0);
    EXPECT_TRUE(ComesToSay(
        u"Nicht geöffnet: bild.png ist keine Senderliste (M3U, M3U8, PLS) und keine Adresse (http, https)."));
    EXPECT_EQ(Column(), QStringList{"Radio A"});
    program_->Window().close();
  });
}

class CommandLineOfTheProgram : public ::testing::Test {
 protected:
  test_support::TempFolder folder_;
  Surroundings surroundings_ =
      Surroundings(folder_).With("QT_QPA_PLATFORM", "xcb").With("DISPLAY", ":nonexistent");
};

TEST_F(CommandLineOfTheProgram, HelpAndVersionNeedNoDisplay) {
  const RunResult help = surroundings_.StartToEnd("--help 2>/dev/null");
  EXPECT_EQ(help.exit_code, 0);
  EXPECT_TRUE(help.output.starts_with("Aufruf: funkhausplayer [DATEI | ADRESSE]\n")) << help.output;
  const RunResult version = surroundings_.StartToEnd("--version 2>/dev/null");
  EXPECT_EQ(version.exit_code, 0);
  EXPECT_TRUE(version.output.starts_with("Funkhausplayer ")) << version.output;
}

TEST_F(CommandLineOfTheProgram, UnknownOptionIsReportedOnTheErrorOutputWithExitCodeTwo) {
  const RunResult wrong = surroundings_.StartToEnd("--laut");
  EXPECT_EQ(wrong.exit_code, 2);
  EXPECT_TRUE(wrong.output.starts_with("Die Option --laut gibt es nicht.\n")) << wrong.output;
  EXPECT_EQ(surroundings_.StartToEnd("--laut 2>/dev/null").output, "");
  EXPECT_EQ(surroundings_.StartToEnd("a.m3u b.m3u").exit_code, 2);
}

TEST_F(CommandLineOfTheProgram, OutputThatCannotBeWrittenIsAFailure) {
  EXPECT_EQ(surroundings_.StartToEnd("--help >/dev/full").exit_code, 1);
}

}  // namespace
}  // namespace program_test
