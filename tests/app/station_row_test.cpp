#include "app/state/station_row.h"

#include <gtest/gtest.h>

#include <vector>

namespace app {
namespace {

TEST(StationRowTest, EveryFieldStandsInItsCell) {
  const controls::ListRow row = RowOf({u"Name", u"Link", u"Genre", u"1", u"3"});
  EXPECT_EQ(row.cells, (controls::ListCells{u"Name", u"Genre", u"Link", u"1", u"", u"3"}));
  EXPECT_EQ(row.icon, -1);
}

TEST(StationRowTest, RowGivesItsStationBackWithoutTheTitle) {
  const Station station = StationOf({u"Name", u"Genre", u"Link", u"1", u"Titel", u"3"});
  EXPECT_EQ(station.name, u"Name");
  EXPECT_EQ(station.link, u"Link");
  EXPECT_EQ(station.genre, u"Genre");
  EXPECT_EQ(station.favourite, u"1");
  EXPECT_EQ(station.number, u"3");
  EXPECT_EQ(RowOf(station).cells[kTitleCell], u"");
}

TEST(StationFieldsTest, TableHasEachCellOnceInBothOrders) {
  std::vector<StationCell> cells;
  for (const StationField& field : kStationFieldsByCell) cells.push_back(field.cell);
  EXPECT_EQ(cells, (std::vector<StationCell>{kGenreCell, kLinkCell, kFavouriteCell, kM3uNumberCell}));
  EXPECT_EQ(kStationFields.size(), cells.size());
  EXPECT_EQ(kStationFields.front().cell, kLinkCell);
}

}  // namespace
}  // namespace app
