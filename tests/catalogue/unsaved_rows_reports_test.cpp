// What each report to the unsaved rows changes, on a bare list without a file.
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "app/state/station.h"
#include "catalogue/unsaved_rows.h"
#include "tests/support/plain_text_conversion.h"

namespace catalogue {
namespace {

using controls::RowId;
using platform::Text;
using SectionWas = UnsavedRows::SectionWas;

class UnsavedRowsReportsTest : public testing::Test {
 protected:
  UnsavedRowsReportsTest() {
    for (std::size_t cell = 0; cell < app::kStationCells; ++cell) list_.AddColumn({});
  }
  RowId Add(const Text& name, PartInFile part = {}) {
    controls::ListRow row;
    row.cells.Set(app::kNameCell, name);
    const RowId id = list_.AddRow(std::move(row));
    rows_.Mark(id, std::move(part));
    return id;
  }
  RowId AddSaved(const Text& name) {
    const RowId id = Add(name);
    rows_.Remove(id);
    return id;
  }
  /// Saved, and another saved row of its name was written after it.
  RowId AddOverwritten(const Text& name) {
    const RowId id = AddSaved(name);
    rows_.StationWritten(name, AddSaved(name));
    return id;
  }
  /// In no list until the next load; the section of its name is its own.
  void AddWaiting(const Text& name) {
    const RowId id = Add(name, {{}, {name}});
    rows_.StationNotDeleted(id);
    rows_.Remove(id);
    list_.RemoveRow(id);
  }

  test_support::PlainTextConversion conversion_;
  controls::ListView list_;
  UnsavedRows rows_{list_, conversion_};
};

TEST_F(UnsavedRowsReportsTest, EveryReportOfAChangeIsAnnounced) {
  const RowId row = Add(u"A", {{}, {u"A"}});
  const RowId saved = AddSaved(u"B");
  int announced = 0;
  const auto changed = rows_.Changed.Subscribe([&] { ++announced; });
  const std::vector<std::function<void()>> reports = {
      [&] { rows_.CellWritten(row, app::kGenreCell, SectionWas::kThere); },
      [&] { rows_.CellWrittenInView(u"A", app::kGenreCell, u"Jazz"); },
      [&] { rows_.CellNotWritten(row, app::kGenreCell); },
      [&] { rows_.StationNotWritten(row, u"A"); },
      [&] { rows_.StationWritten(u"A", row); },
      [&] { rows_.StationDeleted(u"B", RowId::kNone); },
      [&] { rows_.StationDeletedInView(u"B"); },
      [&] { rows_.ListWritten(); }};
  for (std::size_t index = 0; index < reports.size(); ++index) {
    announced = 0;
    reports[index]();
    EXPECT_EQ(announced, 1) << index;
  }
  announced = 0;
  EXPECT_FALSE(rows_.StationDeleted(u"C", saved));
  EXPECT_EQ(announced, 0) << "no row became unsaved";
}

TEST_F(UnsavedRowsReportsTest, WritingAStationOverwritesTheSavedRowsOfItsName) {
  const RowId first = AddSaved(u"A");
  const RowId other = AddSaved(u"B");
  const RowId unsaved = Add(u"A");
  rows_.StationWritten(u"A", AddSaved(u"A"));
  EXPECT_FALSE(rows_.IsSaved(first));
  EXPECT_FALSE(rows_.Contains(first));
  EXPECT_TRUE(rows_.IsSaved(other));
  EXPECT_TRUE(rows_.Contains(unsaved));
  rows_.StationDeletedInView(u"A");
  EXPECT_TRUE(rows_.Contains(unsaved)) << "nothing of it was in the file";
}

TEST_F(UnsavedRowsReportsTest, RowThatIsMarkedOrSavedAgainIsNoLongerOverwritten) {
  const RowId marked = AddOverwritten(u"A");
  rows_.Mark(marked, {{}, {u"A"}});
  rows_.StationDeletedInView(u"A");
  EXPECT_TRUE(rows_.IsSaved(marked));
  const RowId saved = AddOverwritten(u"B");
  rows_.Remove(saved);
  EXPECT_TRUE(rows_.IsSaved(saved));
}

TEST_F(UnsavedRowsReportsTest, ClearForgetsEverything) {
  const RowId unsaved = Add(u"A");
  const RowId overwritten = AddOverwritten(u"B");
  AddWaiting(u"C");
  rows_.Clear();
  EXPECT_FALSE(rows_.Contains(unsaved));
  EXPECT_TRUE(rows_.IsSaved(overwritten));
  EXPECT_TRUE(rows_.All().empty());
}

TEST_F(UnsavedRowsReportsTest, EmptiedListForgetsItsRows) {
  const RowId unsaved = Add(u"A");
  const RowId overwritten = AddOverwritten(u"B");
  list_.Clear();
  EXPECT_FALSE(rows_.Contains(unsaved));
  EXPECT_TRUE(rows_.IsSaved(overwritten));
}

TEST_F(UnsavedRowsReportsTest, OfAWrittenListTheLastRowOfANameIsTheSavedOne) {
  const RowId first = AddSaved(u"A");
  const RowId renamed = AddOverwritten(u"B");
  const RowId last = AddSaved(u"a");
  list_.SetCell(renamed, app::kNameCell, u"C");
  rows_.ListWritten();
  EXPECT_FALSE(rows_.IsSaved(first));
  EXPECT_TRUE(rows_.IsSaved(last));
  EXPECT_TRUE(rows_.IsSaved(renamed)) << "it has a section of its own now";
}

TEST_F(UnsavedRowsReportsTest, CellOfAFilterViewReachesTheRowThatOwnsTheSectionAndNoOther) {
  const RowId owner = Add(u"A", {{}, {u"A"}});
  const RowId renamed = Add(u"B", {{}, {u"A"}});
  const RowId other = Add(u"A");
  rows_.CellWrittenInView(u"A", app::kGenreCell, u"Jazz");
  EXPECT_EQ(list_.Cell(owner, app::kGenreCell), u"Jazz");
  EXPECT_EQ(rows_.PartOf(owner).cells, (std::set{app::kGenreCell}));
  EXPECT_EQ(list_.Cell(renamed, app::kGenreCell), u"Jazz");
  EXPECT_TRUE(rows_.PartOf(renamed).cells.empty()) << "the section of its name has not got it";
  EXPECT_EQ(list_.Cell(other, app::kGenreCell), u"");
  EXPECT_TRUE(rows_.PartOf(other).cells.empty());
}

TEST_F(UnsavedRowsReportsTest, WrittenStationTakesItsSectionFromOtherRows) {
  const RowId other = Add(u"A", {{app::kGenreCell}, {u"A", u"Alt"}});
  const RowId renamed = Add(u"B", {{app::kGenreCell}, {u"A"}});
  AddWaiting(u"A");
  rows_.StationWritten(u"A", RowId::kNone);
  EXPECT_EQ(rows_.PartOf(other).sections, std::vector<Text>{u"Alt"});
  EXPECT_TRUE(rows_.PartOf(other).cells.empty()) << "they are overwritten";
  EXPECT_TRUE(rows_.PartOf(renamed).sections.empty());
  EXPECT_EQ(rows_.PartOf(renamed).cells, (std::set{app::kGenreCell}));
  EXPECT_EQ(rows_.All().size(), 2U) << "nothing comes back";
}

TEST_F(UnsavedRowsReportsTest, RowWhoseNameTheFileCannotListStaysUnsavedAndOwnsItsSection) {
  const RowId row = Add(u" ");
  rows_.StationWritten(u" ", row);
  EXPECT_EQ(rows_.PartOf(row).sections, std::vector<Text>{u" "});
}

TEST_F(UnsavedRowsReportsTest, RowThatWouldComeBackComesBackOnceWhenItIsAskedFor) {
  AddWaiting(u"A");
  const RowId row = rows_.RowOfAnyList(u"A");
  EXPECT_EQ(list_.Cell(row, app::kNameCell), u"A");
  EXPECT_EQ(rows_.PartOf(row).sections, std::vector<Text>{u"A"});
  EXPECT_EQ(rows_.All().size(), 1U);
  EXPECT_EQ(rows_.RowOfAnyList(u"A"), row);
}

}  // namespace
}  // namespace catalogue
