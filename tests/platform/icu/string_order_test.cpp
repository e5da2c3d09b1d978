#include "platform/icu/string_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/support/processor_time.h"

namespace platform::icu {
namespace {

TEST(IcuOrder, SortsTwentyThousandNamesInWellUnderHalfASecond) {
  IcuStringOrder order;
  std::mt19937 random(20261115);
  std::vector<Text> names;
  for (int count = 0; count < 20000; ++count) {
    const std::string number = std::to_string(random() % 3000);
    Text name = random() % 2 == 0 ? u"Radio Bäckerstraße " : u"radio baden ";
    name.append(number.begin(), number.end());
    names.push_back(name + u" – Klassik & Mehr");
  }
  const test_support::ProcessorTime time;
  std::stable_sort(names.begin(), names.end(), [&](const Text& first, const Text& second) {
    return order.StrCmpLogicalW(first, second) < 0;
  });
  const double spent = time.Seconds();
  RecordProperty("seconds", std::to_string(spent));
  EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), [&](const Text& first, const Text& second) {
    return order.StrCmpLogicalW(first, second) < 0;
  }));
  // The bound leaves room for sanitizers; without them a tenth of it is spent.
  EXPECT_LT(spent, 2.0);
}

}  // namespace
}  // namespace platform::icu
