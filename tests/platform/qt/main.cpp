// Runs the tests of the windows inside an application object, without a display unless one is asked for.

#include <gmock/gmock.h>

#include <QApplication>

int main(int count, char** arguments) {
  ::testing::InitGoogleMock(&count, arguments);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(count, arguments);
  QApplication::setApplicationDisplayName(QStringLiteral("Funkhausplayer"));
  return RUN_ALL_TESTS();
}
