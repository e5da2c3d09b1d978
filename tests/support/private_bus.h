#pragma once
// A message bus of a test's own, and what a shell would ask it. Not a desktop; services are each test's own.

#include <string>

#include "tests/support/child_process.h"

namespace test_support {

/// Throws when dbus-daemon is not installed or does not come up.
class PrivateBus {
 public:
  PrivateBus();
  [[nodiscard]] const std::string& Address() const { return address_; }
  /// What a program that is to use the bus inherits.
  [[nodiscard]] ChildProcess::Environment Environment() const {
    return {{"DBUS_SESSION_BUS_ADDRESS", address_}};
  }
  /// The bus goes, with all its connections.
  void Stop() { daemon_.Kill(); }

 private:
  ChildProcess daemon_;
  std::string address_;
};

}  // namespace test_support
