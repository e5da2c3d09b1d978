#include "tests/support/private_bus.h"

#include <unistd.h>

#include <stdexcept>

namespace test_support {

PrivateBus::PrivateBus()
    : daemon_({"dbus-daemon", "--session", "--nofork", "--print-address"}, {}, ChildProcess::Output::kPiped) {
  char byte = 0;
  while (::read(daemon_.OutputDescriptor(), &byte, 1) == 1 && byte != '\n') address_ += byte;
  if (address_.empty()) throw std::runtime_error("dbus-daemon did not come up");
}

}  // namespace test_support
