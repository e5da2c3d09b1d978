// What the catalogue writes into the window itself, in the language file that comes with the program.
#include <gtest/gtest.h>

#include "catalogue/station_lists.h"
#include "tests/support/language_rig.h"

namespace catalogue {
namespace {

TEST(CatalogueTranslationTest, EnglishFileKnowsTheColumnsAndTheNamesOfTheViews) {
  test_support::ProgramLanguage english(u"English");
  controls::ListView list;
  StationLists::CreateColumns(list);
  EXPECT_EQ(list.Columns().size(), 6U);
  for (const controls::ListColumn& column : list.Columns()) {
    EXPECT_TRUE(english.Knows(column.caption)) << english.Utf8(column.caption);
  }
  // A restored view has named itself before the window is translated.
  for (const char16_t* view : {u"Gespeicherte Radiostationen", u"Favoriten", u"Genre-Filter: 80er/90er"}) {
    EXPECT_TRUE(english.Knows(view)) << english.Utf8(view);
  }
  EXPECT_EQ(english.Translated(list.Columns()[3].caption), u"Favourite");
}

}  // namespace
}  // namespace catalogue
