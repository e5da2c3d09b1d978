// The recording tool's window with a real recording, operated by mouse events from the test.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>

#include "platform/curl/curl_internet.h"
#include "platform/curl/curl_xml_http_request.h"
#include "platform/icu/text_conversion.h"
#include "platform/posix/clock.h"
#include "platform/posix/environment.h"
#include "platform/posix/file_address.h"
#include "platform/posix/files.h"
#include "platform/posix/native_paths.h"
#include "platform/posix/record_files.h"
#include "platform/posix/shell.h"
#include "platform/qt/icons.h"
#include "platform/qt/message_loop.h"
#include "platform/qt/record_window.h"
#include "recorder/record_control.h"
#include "tests/platform/recorder/tool_fixture.h"
#include "tests/support/icy_script.h"
#include "tests/support/scripted_icy_server.h"

namespace recorder {
namespace {

/// An application without a screen, whose file manager is a script that writes down what it is asked for.
class Surrounded : public Tool {
 protected:
  Surrounded() {
    const auto opener =
        music_.Write("bin/xdg-open", "#!/bin/sh\necho \"$1\" >\"" + Opened().string() + "\"\n");
    std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
    const std::string path = music_.Path() / "bin";
    qputenv("PATH", QByteArray::fromStdString(path + ":") + qgetenv("PATH"));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QApplication>(count_, arguments_.data());
  }
  [[nodiscard]] std::filesystem::path Opened() const { return music_.Path() / "opened"; }
  [[nodiscard]] std::string ReadOpened() const {
    return std::filesystem::exists(Opened()) ? test_support::ReadBytes(Opened()) : std::string();
  }

 private:
  std::string name_ = "OZRecordFunkhaus";
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  int count_ = 1;
  std::unique_ptr<QApplication> application_;
};

class Window : public Surrounded {
 protected:
  template <typename Widget = QWidget>
  Widget& Find(const char* name) {
    return *static_cast<Widget*>(window_.findChild<QWidget*>(QLatin1String(name)));
  }
  /// Lets the program process its queued input, as the event loop would do next.
  static void Settle() {
    // What comes during a round is left to the next one.
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round) QCoreApplication::sendPostedEvents();
  }
  void Click(const char* name) {
    QTest::mouseClick(&Find(name), Qt::LeftButton);
    Settle();
  }
  // Types the station's address, presses Start and returns when the recording has ended; `act` is run in the
  // middle of it as soon as `now` holds.
  void RecordAnd(const std::function<bool()>& now, const std::function<void()>& act) {
    RecordAnd(station_.Url(), now, act);
  }
  void RecordAnd(const std::string& address, const std::function<bool()>& now,
                 const std::function<void()>& act) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
      const bool too_late = std::chrono::steady_clock::now() > deadline;
      EXPECT_FALSE(too_late);
      if (too_late) recording_.Stop();
      if (!now()) return;
      look.stop();
      act();
    });
    window_.show();
    QTest::keyClicks(&Find("address"), QString::fromStdString(address));
    Settle();
    look.start(10);
    Click("start");
  }

  platform::posix::PosixNativePaths paths_;
  platform::icu::IcuTextConversion conversion_;
  platform::posix::PosixFiles files_{paths_};
  platform::posix::PosixRecordFiles record_files_{paths_};
  platform::posix::PosixEnvironment environment_{paths_};
  platform::posix::PosixClock clock_;
  platform::posix::PosixShell shell_{paths_};
  platform::qt::QtMessageLoop loop_{platform::qt::QtMessageLoop::LongProcedures::kAreWork};
  platform::curl::CurlInternet internet_{loop_, conversion_};
  platform::curl::CurlXmlHttpRequests requests_{conversion_};
  StationRecording recording_{
      {{internet_, requests_, record_files_, environment_, clock_, loop_, conversion_}, files_},
      paths_.FromNative(Folder())};
  platform::qt::QtIcons icons_{paths_};
  app::RecordForm form_;
  RecordControl control_{
      form_, recording_, files_, shell_, {.folder = platform::posix::FileAddress(Folder()), .guide = {}}};
  platform::qt::RecordWindow window_{form_, icons_, loop_};
};

TEST_F(Window, ShowsTheRecordingAndStopEndsItWithWholeFiles) {
  RecordAnd([this] { return TwoTitlesAreRecorded(); },
            [this] {
              EXPECT_EQ(form_.station.Caption(), u"Testfunk");
              EXPECT_NE(form_.title.Caption(), u"");
              EXPECT_NE(form_.time.Caption(), u"00:00:00");
              EXPECT_EQ(form_.state.Caption(), u"Aufnahme läuft");
              EXPECT_FALSE(Find("start").isEnabled());
              Click("stop");
            });
  EXPECT_FALSE(recording_.Running());
  EXPECT_EQ(form_.state.Caption(), u"Aufnahme beendet");
  EXPECT_TRUE(window_.isVisible());
  EXPECT_TRUE(Find("start").isEnabled());
  ExpectTwoTitles();
}

TEST_F(Window, ShowsWhyThereIsNothingToRecordAndWaitsForAnotherAddress) {
  test_support::ScriptedIcyServer server;
  server.OnAny(test_support::Script().Send(test_support::Header("HTTP/1.1 404 Not Found", {})));
  window_.show();
  QTest::keyClicks(&Find("address"), QString::fromStdString(server.Url()));
  Settle();
  Click("start");
  EXPECT_FALSE(recording_.Running());
  EXPECT_EQ(Find<QLabel>("state").text(), QStringLiteral("Unter dieser Adresse gibt es keinen Sender (404)"));
  EXPECT_TRUE(Find("address").isEnabled());
  EXPECT_TRUE(Find("start").isEnabled());
}

/// A server that takes the request and never answers.
class WindowOfAStationThatDoesNotAnswer : public Window {
 protected:
  WindowOfAStationThatDoesNotAnswer() { server_.OnAny(test_support::Script().Hold()); }

  // Half of what the wait for the answer takes when nothing ends it.
  static constexpr std::chrono::seconds kAtOnce{5};

  // How long the recording continues after `act` in the wait for the answer.
  std::chrono::nanoseconds RecordUntil(const std::function<void()>& act) {
    std::chrono::steady_clock::time_point acted;
    const auto waits_for_answer = [this] {
      const auto requests = server_.Requests();
      return !requests.empty() && requests.back().headers.find("User-Agent: Winamp") != std::string::npos;
    };
    RecordAnd(server_.Url(), waits_for_answer, [&] {
      acted = std::chrono::steady_clock::now();
      act();
    });
    return std::chrono::steady_clock::now() - acted;
  }

  test_support::ScriptedIcyServer server_;
};

TEST_F(WindowOfAStationThatDoesNotAnswer, StopEndsTheWaitAndTheRecording) {
  EXPECT_LT(RecordUntil([this] { Click("stop"); }), kAtOnce);
  EXPECT_FALSE(recording_.Running());
  EXPECT_EQ(form_.state.Caption(), u"Aufnahme beendet");
  EXPECT_TRUE(server_.WaitForAllClosed(kDeadline)) << "it is not tried again";
}

TEST_F(WindowOfAStationThatDoesNotAnswer, ClosingEndsTheWaitAndTheRecording) {
  EXPECT_LT(RecordUntil([this] { window_.close(); }), kAtOnce);
  EXPECT_FALSE(recording_.Running());
  EXPECT_TRUE(form_.form.IsClosed());
}

TEST_F(Window, OpensTheFolderWhileItRecords) {
  RecordAnd([this] { return !Files().empty(); },
            [this] {
              Click("open_folder");
              EXPECT_TRUE(recording_.Running());
              Click("stop");
            });
  EXPECT_TRUE(WaitUntil([this] { return !ReadOpened().empty(); }, kDeadline));
  EXPECT_EQ(ReadOpened(), "file://" + Folder().string() + "\n");
}

TEST_F(Window, OpensTheFolderBeforeAnythingWasRecorded) {
  window_.show();
  Click("open_folder");
  EXPECT_TRUE(WaitUntil([this] { return !ReadOpened().empty(); }, kDeadline));
  EXPECT_EQ(ReadOpened(), "file://" + Folder().string() + "\n");
  EXPECT_TRUE(std::filesystem::is_directory(Folder()));
}

TEST_F(Window, ClosingItEndsTheRecordingWithWholeFiles) {
  RecordAnd([this] { return TwoTitlesAreRecorded(); }, [this] { window_.close(); });
  EXPECT_FALSE(recording_.Running());
  EXPECT_TRUE(form_.form.IsClosed());
  ExpectTwoTitles();
}

}  // namespace
}  // namespace recorder
