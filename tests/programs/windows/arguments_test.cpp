#include "programs/windows/arguments.h"

#include <gtest/gtest.h>

namespace {

TEST(Arguments, TheTailIsWhatFollowsTheProgramsName) {
  EXPECT_EQ(TailOf(u"tool.exe http://h/a  b \"c\""), u"http://h/a  b \"c\"");
  EXPECT_EQ(TailOf(u"\"C:\\Meine Programme\\tool.exe\"  http://h/"), u"http://h/");
  EXPECT_EQ(TailOf(u"C:\\\"Meine Programme\"\\tool.exe \t\"http://h/\""), u"\"http://h/\"");
}

TEST(Arguments, WithoutAnyTheTailIsEmpty) {
  for (const platform::TextView line :
       {u"", u"tool.exe", u"\"tool.exe\"", u"\"tool.exe\"  ", u"\"tool.exe a"})
    EXPECT_EQ(TailOf(line), u"");
}

}  // namespace
