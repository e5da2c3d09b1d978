// Runs the tests of the windows inside an application object, without a display unless one is asked for.

#include <gmock/gmock.h>

#include <QApplication>
#include <QTimer>

namespace {

/// A form that a test has closed ends every event loop until the application's own runs again.
class FreshEventLoops final : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo& /*test*/) override {
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QApplication::exec();
  }
};

}  // namespace

int main(int count, char** arguments) {
  ::testing::InitGoogleMock(&count, arguments);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  QApplication::setApplicationName(QStringLiteral("Funkhausplayer"));
  ::testing::UnitTest::GetInstance()->listeners().Append(new FreshEventLoops);
  return RUN_ALL_TESTS();
}
