#include "app/state/list_pair.h"

#include <gtest/gtest.h>

namespace app {
namespace {

TEST(ListPair, TheFilteredListIsActiveWhileItIsVisible) {
  controls::ListView full;
  controls::ListView filtered;
  const ListPair lists{full, filtered};
  EXPECT_EQ(&lists.Active(), &filtered);
  filtered.SetVisible(false);
  EXPECT_EQ(&lists.Active(), &full);
}

}  // namespace
}  // namespace app
