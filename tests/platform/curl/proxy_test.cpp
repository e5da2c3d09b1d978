#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/contracts/internet/internet_rig.h"

namespace platform::curl {
namespace {

TEST(CurlInternetTest, ProxiesOfTheEnvironmentAreNotUsed) {
  InternetRig rig;
  rig.server.OnAny(Script().Send(kOk));
  ::setenv("http_proxy", "http://127.0.0.1:1", 1);
  const InternetHandle request = rig.Open();
  ::unsetenv("http_proxy");
  EXPECT_EQ(rig.Status(request), u"200");
}

}  // namespace
}  // namespace platform::curl
