#include "player/interface_ref.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/player/player_fixture.h"

namespace player {
namespace {

class InterfaceRefTest : public testing::Test {
 protected:
  InterfaceRef NewTopology() {
    InterfaceRef topology(caller_);
    media_.MFCreateTopology(topology.Receive());
    return topology;
  }
  RecordingMedia media_;
  platform::values::PortablePropertyValues values_;
  InterfaceCaller caller_{media_, values_};
};

TEST_F(InterfaceRefTest, ReleasesItsObjectWhenItGoes) {
  {
    const InterfaceRef topology = NewTopology();
    EXPECT_TRUE(topology);
    EXPECT_EQ(media_.LiveHandles(), (Strings{"topology"}));
  }
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(InterfaceRefTest, MovingPassesTheObjectOnAndReleasesTheFormerOne) {
  InterfaceRef first = NewTopology();
  InterfaceRef second = NewTopology();
  first = std::move(second);
  EXPECT_EQ(media_.LiveHandles(), (Strings{"topology#2"}));
  first.Release();
  EXPECT_FALSE(first);
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(InterfaceRefTest, MovingItToItselfKeepsTheObject) {
  InterfaceRef topology = NewTopology();
  InterfaceRef& same = topology;
  topology = std::move(same);
  EXPECT_TRUE(topology);
  EXPECT_EQ(media_.LiveHandles(), (Strings{"topology"}));
}

TEST_F(InterfaceRefTest, MovedObjectIsReleasedThroughTheCallerItCameWith) {
  RecordingMedia other_media;
  InterfaceCaller other_caller(other_media, values_);
  InterfaceRef target(caller_);
  {
    InterfaceRef other(other_caller);
    other_media.MFCreateTopology(other.Receive());
    target = std::move(other);
  }
  target.Release();
  EXPECT_EQ(other_media.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

TEST_F(InterfaceRefTest, ObjectThatWasLeftBehindIsReleasedAtTheEndOfTheCaller) {
  {
    InterfaceCaller shortly(media_, values_);
    InterfaceRef topology(shortly);
    media_.MFCreateTopology(topology.Receive());
    topology.LeaveBehind();
    EXPECT_EQ(media_.LiveHandles(), (Strings{"topology"}));
  }
  EXPECT_EQ(media_.LiveHandles(), Strings{});
}

TEST_F(InterfaceRefTest, ObjectWhoseReleaseCannotBeMadeIsLeftBehind) {
  media_.faults["IUnknown::Release"] = RecordingMedia::kImpossible;
  { const InterfaceRef topology = NewTopology(); }
  EXPECT_EQ(media_.LiveHandles(), (Strings{"topology"}));
  media_.faults.clear();
  caller_.ReleaseLeftBehind();
  EXPECT_EQ(media_.LiveHandles(), Strings{});
  EXPECT_EQ(media_.Misuses(), Strings{});
}

}  // namespace
}  // namespace player
