#include "catalogue/station_file.h"

#include "tests/catalogue/catalogue_fixture.h"

namespace catalogue {
namespace {

using Write = test_support::MemoryProfile::Write;

class StationFileTest : public CatalogueTest {
 protected:
  static app::Station Sample(const Text& number) { return {u"A", u"http://a", u"Rock", u"1", number}; }
  static Write Set(const Text& key, const Text& value) { return {u"A", key, value, kStationFile}; }

  const std::vector<Write> kWholeWithoutNumber = {Set(u"Station", u"A"), Set(u"Link", u"http://a"),
                                                  Set(u"Genre", u"Rock"), Set(u"Favorit", u"1")};
};

TEST_F(StationFileTest, ReadsEveryFieldAndNothingForWhatIsMissing) {
  AddStation(u"A", u"Rock", u"http://a", u"1", u"3");
  profile.Set(kStationFile, u"A", u"Station", u"Anders");
  profile.Set(kStationFile, u"B", u"Link", u"http://b");
  const app::Station a = station_file.Read(u"A");
  EXPECT_EQ(a.name, u"A");
  EXPECT_EQ(a.link, u"http://a");
  EXPECT_EQ(a.genre, u"Rock");
  EXPECT_EQ(a.favourite, u"1");
  EXPECT_EQ(a.number, u"3");
  const app::Station b = station_file.Read(u"B");
  EXPECT_EQ(b.link, u"http://b");
  EXPECT_EQ(b.genre + b.favourite + b.number, u"");
  EXPECT_EQ(station_file.Names(), (std::vector<Text>{u"A", u"B"}));
}

TEST_F(StationFileTest, MissingKeyIsDistinguishedFromAnEmptyOne) {
  profile.Set(kStationFile, u"A", u"Genre", u"");
  EXPECT_EQ(station_file.FindField(u"A", app::kGenreField), u"");
  EXPECT_EQ(station_file.FindField(u"A", app::kLinkField), std::nullopt);
  EXPECT_EQ(station_file.ReadField(u"A", app::kLinkField), u"");
}

TEST_F(StationFileTest, WholeStationIsWrittenInItsOrder) {
  station_file.WriteWhole(Sample(u"x"), StationFile::NumberKey::kAlways);
  std::vector<Write> all = kWholeWithoutNumber;
  all.push_back(Set(u"M3uNr", u"x"));
  EXPECT_EQ(profile.writes, all);
}

TEST_F(StationFileTest, NumberThatNamesNoEntryCanBeLeftOut) {
  station_file.WriteWhole(Sample(u"0"), StationFile::NumberKey::kIfAnEntry);
  EXPECT_EQ(profile.writes, kWholeWithoutNumber);
  profile.writes.clear();
  station_file.WriteWhole(Sample(u"1"), StationFile::NumberKey::kIfAnEntry);
  EXPECT_EQ(profile.writes.back(), Set(u"M3uNr", u"1"));
}

TEST_F(StationFileTest, ListedStationIsWrittenInTheOrderOfTheCells) {
  for (const auto& [number, written] : {std::pair(u"2", u"2"), std::pair(u"x", u"")}) {
    profile.writes.clear();
    station_file.WriteListed(Sample(number));
    EXPECT_EQ(profile.writes, (std::vector<Write>{Set(u"Genre", u"Rock"), Set(u"Link", u"http://a"),
                                                  Set(u"Favorit", u"1"), Set(u"M3uNr", written)}));
  }
}

TEST_F(StationFileTest, OneFieldIsWrittenAloneAndDeletingTakesTheSection) {
  AddStation(u"A", u"Rock");
  EXPECT_TRUE(station_file.WriteField(u"A", app::kGenreField, u"Jazz"));
  EXPECT_EQ(profile.writes, std::vector<Write>{Set(u"Genre", u"Jazz")});
  EXPECT_TRUE(station_file.Contains(u"A"));
  EXPECT_TRUE(station_file.Delete(u"A"));
  EXPECT_FALSE(station_file.Contains(u"A"));
  profile.fail_writes = true;
  EXPECT_FALSE(station_file.WriteField(u"A", app::kGenreField, u"Jazz"));
  EXPECT_FALSE(station_file.Delete(u"A"));
}

}  // namespace
}  // namespace catalogue
