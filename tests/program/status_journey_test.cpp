// What the status line shows a listener whose station does not answer as it should: the whole program with
// its widgets, and a real server.
#include <QEvent>
#include <QLabel>
#include <atomic>
#include <chrono>

#include "tests/program/program_rig.h"
#include "tests/support/child_process.h"
#include "tests/support/media_http_server.h"

namespace program_test {
namespace {

using namespace std::chrono_literals;
using test_support::HttpAnswer;
using test_support::MediaHttpServer;

/// Hears what a label shows whenever it is painted.
class PaintWatcher : public QObject {
 public:
  explicit PaintWatcher(std::function<void(const QString&)> on_paint) : on_paint_(std::move(on_paint)) {}
  bool eventFilter(QObject* label, QEvent* event) override {
    if (event->type() == QEvent::Paint) on_paint_(static_cast<QLabel*>(label)->text());
    return false;
  }

 private:
  std::function<void(const QString&)> on_paint_;
};

class StatusJourney : public ProgramRig {
 protected:
  static bool FromThePlayer(const MediaHttpServer::Connection& connection) {
    return connection.Request().find("User-Agent: Funkhausplayer") != std::string::npos;
  }
  static std::string Station(const std::string& name, const std::string& link) {
    return "[" + name + "]\r\nStation=" + name + "\r\nLink=" + link +
           "\r\nGenre=Rock\r\nFavorit=\r\nM3uNr=\r\n";
  }

  MediaHttpServer server_;
};

TEST_F(StatusJourney, ConnectingIsPaintedWhileTheServerThinksAndTheCauseStandsBehindTheBox) {
  std::atomic<bool> painted{false};
  server_.On("/radio", [&](MediaHttpServer::Connection& connection) {
    // The titles are asked for too; only what is played has to wait.
    if (FromThePlayer(connection)) test_support::WaitUntil([&] { return painted.load(); }, 8s);
    connection.Send(HttpAnswer("404 Not Found", "text/html", "<html>nothing here</html>"));
  });
  Start(Station("Radio A", server_.Url("/radio")));
  PaintWatcher watcher([&](const QString& text) {
    if (text == QString::fromUtf8("Verbinde mit Radio A …")) painted = true;
  });
  Find("StatusLine").findChild<QLabel*>()->installEventFilter(&watcher);
  platform::Text behind_the_box;
  Expect([&](QWidget& dialog) {
    behind_the_box = Form().StatusLine.Caption();
    qobject_cast<QMessageBox*>(&dialog)->button(QMessageBox::Ok)->click();
  });
  EXPECT_EQ(Run([&] {
              ClickRow("Radio A");
              Click("Command1");
              EXPECT_TRUE(painted) << "before the answer came";
              EXPECT_EQ(behind_the_box, u"Der Server von Radio A kennt diese Adresse nicht.");
              EXPECT_EQ(Form().StatusLine.Caption(), behind_the_box);
              program_->Window().close();
            }),
            0);
}

TEST_F(StatusJourney, DeadStationIsNamedAlthoughNoBoxComes) {
  server_.Refuse();
  Start(Station("Radio A", server_.Url("/radio")), "[Pfad1]\r\nLanguages=English\r\n");
  EXPECT_EQ(Run([&] {
              ClickRow("Radio A");
              EXPECT_EQ(Form().StatusLine.Caption(), u"The server of Radio A refuses the connection.");
              Click("Command1");
              EXPECT_EQ(Form().StatusLine.Caption(), u"The server of Radio A refuses the connection.");
              Click("Command6");
              EXPECT_EQ(Form().StatusLine.Caption(), u"The server of Radio A refuses the connection.");
              program_->Window().close();
            }),
            0);
  EXPECT_TRUE(NothingExpected());
}

}  // namespace
}  // namespace program_test
