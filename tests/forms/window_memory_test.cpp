#include "app/forms/window_memory.h"

#include <gtest/gtest.h>

#include "app/forms/form1.h"

namespace app {
namespace {

const WindowMemory kAll = {.place = WindowPlace{-100, 80, 1024, 724},
                           .maximized = true,
                           .columns = {{"SymbolListview", 1, 200}, {"ExplorerListFilter", 4, 16}}};
const std::string kFirst = "Funkhausplayer window 1\n";

TEST(WindowMemoryTest, WhatIsWrittenIsReadBack) {
  for (const WindowMemory& memory :
       {WindowMemory{}, kAll, WindowMemory{.maximized = true},
        WindowMemory{.place = WindowPlace{-100000, 100000, 1, 100000}},
        WindowMemory{.columns = {{"SymbolListview", 5, controls::kWidestColumn}}}}) {
    EXPECT_EQ(ParseWindowMemory(FormatWindowMemory(memory)), memory);
  }
}

TEST(WindowMemoryTest, FileIsTextThatAPersonCanRead) {
  EXPECT_EQ(FormatWindowMemory(kAll), kFirst +
                                          "place -100 80 1024 724\nmaximized\ncolumn SymbolListview 1 200\n"
                                          "column ExplorerListFilter 4 16\n");
}

TEST(WindowMemoryTest, WhatIsNoSuchFileIsNoMemory) {
  for (const std::string& bytes : {std::string(),
                                   std::string("\n"),
                                   std::string("Funkhausplayer window 1"),
                                   std::string("Funkhausplayer window 2\nplace 1 2 300 400\n"),
                                   std::string("Funkhausplayer window 10\n"),
                                   "\xEF\xBB\xBF" + kFirst,
                                   kFirst + "place 1 2 300 400",
                                   kFirst + "\n",
                                   kFirst + "place 1 2 300\n",
                                   kFirst + "place 1 2 300 400 500\n",
                                   kFirst + "place  1 2 300 400\n",
                                   kFirst + "place 1 2 300 400 \n",
                                   kFirst + "place 1 2 300 400\nplace 1 2 300 400\n",
                                   kFirst + "place +1 2 300 400\n",
                                   kFirst + "place 1.5 2 300 400\n",
                                   kFirst + "place 0x1 2 300 400\n",
                                   kFirst + "place 1 2 0 400\n",
                                   kFirst + "place 1 2 300 -400\n",
                                   kFirst + "place 100001 2 300 400\n",
                                   kFirst + "place 1 -100001 300 400\n",
                                   kFirst + "place 1 2 300 99999999999999999999\n",
                                   kFirst + "maximized\nmaximized\n",
                                   kFirst + "maximized 1\n",
                                   kFirst + "minimized\n",
                                   kFirst + "column SymbolListview 1\n",
                                   kFirst + "column  1 200\n",
                                   kFirst + "column SymbolListview -1 200\n",
                                   kFirst + "column SymbolListview 4294967297 200\n",
                                   kFirst + "column SymbolListview 1 15\n",
                                   kFirst + "column SymbolListview 1 4001\n",
                                   kFirst + std::string("maximized\0\n", 11),
                                   std::string(1000, '\0')}) {
    EXPECT_EQ(ParseWindowMemory(bytes), std::nullopt) << bytes;
  }
}

TEST(WindowMemoryTest, CutFileIsNoMemoryUnlessALineEndsThere) {
  const std::string bytes = FormatWindowMemory(kAll);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const bool line_ends = length > 0 && bytes[length - 1] == '\n';
    EXPECT_EQ(ParseWindowMemory(bytes.substr(0, length)).has_value(), line_ends) << length;
  }
}

TEST(WindowMemoryTest, LongFileAndOneWithManyColumnsAreNoMemory) {
  std::string columns;
  for (int column = 0; column < 100; ++column) columns += "column SymbolListview 1 200\n";
  EXPECT_TRUE(ParseWindowMemory(kFirst + columns));
  EXPECT_FALSE(ParseWindowMemory(kFirst + columns + "column SymbolListview 1 200\n"));
  EXPECT_FALSE(ParseWindowMemory(kFirst + "column " + std::string(kLongestWindowMemory, 'x') + " 1 200\n"));
}

void AddColumns(controls::ListView& list) {
  for (const char16_t* caption : {u"Station", u"Genre", u"WebLink"}) list.AddColumn({caption, 120});
}

TEST(WindowMemoryTest, OnlyTheUsersWidthsAreRememberedAndComeBack) {
  Form1 form;
  AddColumns(form.SymbolListview);
  EXPECT_TRUE(UsersColumns(form.inventory).empty());
  form.SymbolListview.DragColumn(1, 200);
  EXPECT_EQ(UsersColumns(form.inventory), (std::vector<RememberedColumn>{{"SymbolListview", 1, 200}}));
  Form1 next;
  AddColumns(next.SymbolListview);
  RestoreColumns(next.inventory, UsersColumns(form.inventory));
  EXPECT_EQ(next.SymbolListview.Columns()[1].users_width, 200);
  EXPECT_EQ(next.SymbolListview.Columns()[0].users_width, std::nullopt);
}

TEST(WindowMemoryTest, ColumnsThatNoLongerExistAreIgnored) {
  Form1 form;
  AddColumns(form.SymbolListview);
  RestoreColumns(
      form.inventory,
      {{"SymbolListview", 3, 200}, {"Frame1", 0, 200}, {"Liste", 0, 200}, {"SymbolListview", 2, 90}});
  EXPECT_EQ(UsersColumns(form.inventory), (std::vector<RememberedColumn>{{"SymbolListview", 2, 90}}));
}

}  // namespace
}  // namespace app
