#include "platform/front/announced_text.h"

#include <gtest/gtest.h>

namespace platform::front {
namespace {

using Turn = AnnouncedText::Turn;

TEST(AnnouncedTextTest, EachTextHasItsTurnAtOnceAndAnEmptyOneNever) {
  AnnouncedText line;
  EXPECT_EQ(line.Show(u"Verbinde mit Radio …"), Turn::kNow);
  EXPECT_EQ(line.Show(u"Radio läuft."), Turn::kNow);
  EXPECT_EQ(line.Show(u""), Turn::kNever);
  EXPECT_EQ(line.Show(u"Radio läuft."), Turn::kNow) << "it was gone meanwhile";
}

TEST(AnnouncedTextTest, TextOfWhichOnlyTheNumbersChangeHasItsTurnWhenItRests) {
  AnnouncedText line;
  EXPECT_EQ(line.Show(u"Noch 10 s"), Turn::kNow);
  EXPECT_EQ(line.Show(u"Noch 9 s"), Turn::kWhenItRests);
  EXPECT_EQ(line.Show(u"Noch 0 s"), Turn::kWhenItRests);
  EXPECT_EQ(line.Show(u"Noch 0 min"), Turn::kNow);
  EXPECT_EQ(line.Show(u"Noch 0 s"), Turn::kNow);
}

}  // namespace
}  // namespace platform::front
