// Runs the tests of the desktop's adapters inside an application object, whose event loop the bus needs.

#include <gmock/gmock.h>

#include <QCoreApplication>

int main(int count, char** arguments) {
  ::testing::InitGoogleMock(&count, arguments);
  const QCoreApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
