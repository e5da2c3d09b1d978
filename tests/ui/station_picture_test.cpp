#include "ui/station_picture.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "tests/support/fakes.h"
#include "tests/support/memory_files.h"

namespace ui {
namespace {

using platform::PictureHandle;

class StationPictureTest : public testing::Test {
 protected:
  test_support::FakeEnvironment environment_;
  test_support::MemoryFiles files_;
  test_support::FakeIcons icons_;
  std::optional<StationPicture> picture_{std::in_place, StationPicture::Ports{environment_, files_, icons_}};
};

TEST_F(StationPictureTest, OnlyTheLatestIsLoadedAndNoneAfterTheEnd) {
  picture_->Load(u"A");
  picture_->Load(u"B");
  EXPECT_EQ(icons_.live_pictures, 1);
  picture_.reset();
  EXPECT_EQ(icons_.live_pictures, 0);
}

TEST_F(StationPictureTest, FileThatCannotBeReadLeavesTheFormerOneLoaded) {
  picture_->Load(u"A");
  icons_.loadable = [](const platform::Text&) { return false; };
  EXPECT_EQ(picture_->Load(u"B").handle, PictureHandle::kNone);
  EXPECT_EQ(icons_.live_pictures, 1);
}

TEST_F(StationPictureTest, ClearReleasesItOnce) {
  picture_->Clear();
  EXPECT_EQ(icons_.live_pictures, 0);
  picture_->Load(u"A");
  picture_->Clear();
  picture_->Clear();
  EXPECT_EQ(icons_.live_pictures, 0);
}

}  // namespace
}  // namespace ui
