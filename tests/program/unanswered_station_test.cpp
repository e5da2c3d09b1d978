// A station whose server takes the request and never answers: what the user does in the middle of the wait.
#include <unistd.h>

#include <QElapsedTimer>
#include <QLineEdit>
#include <csignal>

#include "tests/program/program_rig.h"
#include "tests/support/scripted_icy_server.h"

namespace program_test {
namespace {

using test_support::Script;
using test_support::ScriptedIcyServer;

// Half of what a wait takes that nothing ends.
constexpr qint64 kAtOnce = 5'000;

class UnansweredStation : public ProgramRig {
 protected:
  UnansweredStation() { server_.OnAny(Script().Hold()); }

  void StartWithStations() {
    const auto station = [](const std::string& name, const std::string& link) {
      return "[" + name + "]\r\nStation=" + name + "\r\nLink=" + link +
             "\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
    };
    Start(station("Radio A", server_.Url("/a")) + station("Radio B", folder_.Path().string() + "/b.mp3"));
  }

  /// The server has been asked for a title, or, by the first request after those of a selection, for sound.
  [[nodiscard]] bool AskedForTitle() const {
    const auto requests = server_.Requests();
    return !requests.empty() && requests.back().headers.find("User-Agent: Winamp") != std::string::npos;
  }
  [[nodiscard]] bool AskedForSound() const { return server_.Requests().size() > requests_before_; }

  /// Runs `wait`, in the middle of which the server is `asked` and `input` comes; how long it lasted after
  /// that, in milliseconds.
  qint64 Interrupt(const std::function<void()>& wait, const std::function<bool()>& asked,
                   const std::function<void()>& input) {
    QElapsedTimer since;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
      if (!asked()) return;
      look.stop();
      since.start();
      input();
    });
    look.start(5);
    wait();
    EXPECT_TRUE(since.isValid()) << "the server was not asked";
    return since.isValid() ? since.elapsed() : kAtOnce;
  }
  /// The station is selected without waiting for its title.
  void SelectStation() {
    EXPECT_LT(Interrupt([this] { ClickRow("Radio A"); }, [this] { return AskedForTitle(); },
                        [this] { QTest::keyClick(&List(), Qt::Key_Escape); }),
              kAtOnce);
  }
  /// What comes in the middle of the opening.
  qint64 InterruptOpening(const std::function<void()>& input) {
    requests_before_ = server_.Requests().size();
    return Interrupt([this] { Click("Command1"); }, [this] { return AskedForSound(); }, input);
  }
  void ExpectNothingPlays() {
    EXPECT_FALSE(Form().tmPlay.Enabled() || Form().Timer1.Enabled() || Form().Timer2.Enabled());
    EXPECT_EQ(Form().Label1.Caption(), u"");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "nothing waits any more";
    EXPECT_EQ(box_texts_, QStringList());
  }

  ScriptedIcyServer server_;
  std::size_t requests_before_ = 0;
};

TEST_F(UnansweredStation, StopEndsItsOpening) {
  StartWithStations();
  Run([this] {
    SelectStation();
    EXPECT_LT(InterruptOpening([&] { QTest::mouseClick(&Find("Command6"), Qt::LeftButton); }), kAtOnce);
    ExpectNothingPlays();
  });
}

TEST_F(UnansweredStation, EscapeEndsItsOpening) {
  StartWithStations();
  Run([this] {
    SelectStation();
    EXPECT_LT(InterruptOpening([&] { QTest::keyClick(&Find("Command1"), Qt::Key_Escape); }), kAtOnce);
    ExpectNothingPlays();
  });
}

TEST_F(UnansweredStation, AnotherSelectionEndsItsOpeningAndIsResolved) {
  StartWithStations();
  Run([this] {
    SelectStation();
    EXPECT_LT(InterruptOpening([&] { QTest::keyClick(&List(), Qt::Key_Down); }), kAtOnce);
    EXPECT_EQ(Find<QLineEdit>("TextBox1_0").text(), "Radio B");
    ExpectNothingPlays();
  });
}

TEST_F(UnansweredStation, ClosingTheWindowEndsItsOpeningAndTheProgram) {
  StartWithStations();
  EXPECT_EQ(Run([this] {
              SelectStation();
              EXPECT_LT(InterruptOpening([&] { program_->Window().close(); }), kAtOnce);
              EXPECT_TRUE(Form().form.IsClosed());
              ExpectNothingPlays();
            }),
            0);
}

TEST_F(UnansweredStation, SignalEndsItsOpeningAndTheProgram) {
  StartWithStations();
  EXPECT_EQ(Run([this] {
              SelectStation();
              EXPECT_LT(InterruptOpening([] { ::kill(::getpid(), SIGTERM); }), kAtOnce);
              EXPECT_TRUE(Form().form.IsClosed());
              ExpectNothingPlays();
            }),
            0);
}

TEST_F(UnansweredStation, AnotherSelectionEndsTheFetchOfItsTitle) {
  StartWithStations();
  Run([this] {
    EXPECT_LT(Interrupt([this] { ClickRow("Radio A"); }, [this] { return AskedForTitle(); },
                        [this] { QTest::keyClick(&List(), Qt::Key_Down); }),
              kAtOnce);
    EXPECT_EQ(Find<QLineEdit>("TextBox1_0").text(), "Radio B");
  });
}

TEST_F(UnansweredStation, VolumeSetDuringItsOpeningChangesNothingUntilTheOpeningHasEnded) {
  StartWithStations();
  Run([this] {
    SelectStation();
    int volume = -1;
    const qint64 after = InterruptOpening([&] {
      QTest::keyClick(&Find("hscSavVolume"), Qt::Key_Left);
      QTimer::singleShot(1000, &Find("Command6"), [&] {
        volume = Form().hscSavVolume.Value();
        QTest::mouseClick(&Find("Command6"), Qt::LeftButton);
      });
    });
    EXPECT_GE(after, 1000) << "the volume has ended the wait";
    EXPECT_EQ(volume, 100);
    EXPECT_EQ(Form().hscSavVolume.Value(), 99);
    ExpectNothingPlays();
  });
}

TEST_F(UnansweredStation, PointerIsBusyWhileItIsOpened) {
  StartWithStations();
  Run([this] {
    SelectStation();
    requests_before_ = server_.Requests().size();
    bool busy = false;
    EXPECT_LT(Interrupt([this] { Click("Command1"); },
                        [&] {
                          busy = QApplication::overrideCursor() != nullptr &&
                                 QApplication::overrideCursor()->shape() == Qt::BusyCursor;
                          return busy && AskedForSound();
                        },
                        [&] { QTest::mouseClick(&Find("Command6"), Qt::LeftButton); }),
              kAtOnce);
    EXPECT_TRUE(busy);
    ExpectNothingPlays();
  });
}

}  // namespace
}  // namespace program_test
