#include "stream/playlist_text.h"

#include <gtest/gtest.h>

#include "app/text/text_helpers.h"

namespace stream {
namespace {

using Lines = std::vector<Text>;

// The normal form of a response as one text, "<none>" when it is no playlist.
Text Normal(TextView response) {
  const auto lines = PlaylistLinesFromResponse(response);
  return lines ? app::Join(*lines, kCrLf) : Text(u"<none>");
}

Text M3uOfLines(std::size_t highest_index) {
  Text text = u"#EXTM3U";
  for (std::size_t i = 1; i <= highest_index; ++i) text += u"\r\nx";
  return text;
}

std::int32_t EntriesOfM3u(std::size_t highest_index) {
  return AnnouncedEntries(*PlaylistLinesFromResponse(M3uOfLines(highest_index)));
}

TEST(PlaylistText, PlsTextIsKeptLineByLine) {
  EXPECT_EQ(*PlaylistLinesFromResponse(u"[PlayList]\r\n File1 = a \r\n"),
            (Lines{u"[PlayList]", u" File1 = a ", u""}));
}

TEST(PlaylistText, OnlyBlanksAreTrimmedBeforeTheKindIsDecided) {
  EXPECT_EQ(Normal(u"  [playlist]  "), u"[playlist]");
  EXPECT_EQ(Normal(u"\r\n[playlist]"), u"<none>");
  EXPECT_EQ(Normal(u"\t[playlist]"), u"<none>");
}

TEST(PlaylistText, ABareAddressBecomesOneEntryOfSixLines) {
  EXPECT_EQ(Normal(u"http://host/stream"),
            u"[playlist]\r\nNumberOfEntries = 1\r\nFile1=http://host/stream\r\nTitle1=unknown\r\n"
            u"Length1 = -1\r\nVersion = 2");
  EXPECT_EQ(PlaylistLinesFromResponse(u"HTTPS://host/s")->at(2), u"File1=HTTPS://host/s");
}

TEST(PlaylistText, SeveralLinesAfterABareAddressBecomeLinesOfThePlaylist) {
  EXPECT_EQ(*PlaylistLinesFromResponse(u"http://a\r\nTitle1=T"),
            (Lines{u"[playlist]", u"NumberOfEntries = 1", u"File1=http://a", u"Title1=T", u"Title1=unknown",
                   u"Length1 = -1", u"Version = 2"}));
}

TEST(PlaylistText, AnythingElseIsNoPlaylist) {
  EXPECT_EQ(Normal(u""), u"<none>");
  EXPECT_EQ(Normal(u"<html>"), u"<none>");
  EXPECT_EQ(Normal(u"ftp://host/x"), u"<none>");
  EXPECT_EQ(Normal(u"[playlis"), u"<none>");
}

TEST(PlaylistText, ExtendedM3uIsTakenInPairsOfLines) {
  EXPECT_EQ(Normal(u"#extm3u\r\n#EXTINF:-1,Radio X\r\n http://h/s \r\n#EXTINF:-1 , A, B\r\nhttp://h/t"),
            u"[playlist]\r\nNumberOfEntries = 2\r\nFile1=http://h/s\r\nTitle1=Radio X\r\nLength1 = -1\r\n"
            u"File2=http://h/t\r\nTitle2=A, B\r\nLength2 = -1\r\nVersion = 2");
}

TEST(PlaylistText, ATitleLineWithoutACommaIsTakenWhole) {
  EXPECT_EQ(PlaylistLinesFromResponse(u"#EXTM3U\r\nhttp://h/a\r\nhttp://h/b")->at(3), u"Title1=http://h/a");
}

TEST(PlaylistText, TheNumberOfM3uEntriesIsHalfTheHighestIndexRoundedToEven) {
  EXPECT_EQ(EntriesOfM3u(0), 0);
  EXPECT_EQ(EntriesOfM3u(1), 0);
  EXPECT_EQ(EntriesOfM3u(2), 1);
  EXPECT_EQ(EntriesOfM3u(3), 2);
  EXPECT_EQ(EntriesOfM3u(4), 2);
  EXPECT_EQ(EntriesOfM3u(5), 2);
  EXPECT_EQ(EntriesOfM3u(6), 3);
  EXPECT_EQ(EntriesOfM3u(7), 4);
}

TEST(PlaylistText, AKeyWithoutAnEqualsSignIsPassedOver) {
  const Lines lines = {u"[playlist]", u"NumberOfEntries", u"File1", u"NumberOfEntries=1", u"File1=http://a"};
  EXPECT_EQ(AnnouncedEntries(lines), 1);
  EXPECT_EQ(FindPlaylistEntry(lines, 0).address, u"http://a");
}

TEST(PlaylistText, LinesBeyondTheLastAreLeftOutButTheirEntryIsCounted) {
  const auto lines = PlaylistLinesFromResponse(u"#EXTM3U\r\n#EXTINF:-1,Radio X\r\nhttp://h/s\r\n");
  EXPECT_EQ(*lines, (Lines{u"[playlist]", u"NumberOfEntries = 2", u"File1=http://h/s", u"Title1=Radio X",
                           u"Length1 = -1", u"Title2=", u"Length2 = -1", u"Version = 2"}));
  EXPECT_EQ(FindPlaylistEntry(*lines, 0).address, u"http://h/s");
  const PlaylistEntry second = FindPlaylistEntry(*lines, 1);
  EXPECT_EQ(second.address, u"");
  EXPECT_EQ(second.title, u"");
}

TEST(PlaylistText, BareLineFeedsMakeOneLongLine) {
  const auto pls = PlaylistLinesFromResponse(u"[playlist]\nNumberOfEntries=1\nFile1=http://a/b\n");
  EXPECT_EQ(AnnouncedEntries(*pls), 0);
  EXPECT_EQ(Normal(u"#EXTM3U\n#EXTINF:-1,X\nhttp://h/s\n"),
            u"[playlist]\r\nNumberOfEntries = 0\r\nVersion = 2");
}

TEST(PlaylistText, TheFirstNumberOfEntriesLineCounts) {
  EXPECT_EQ(AnnouncedEntries({u" NUMBEROFENTRIES = 3 = 9", u"numberofentries=5"}), 3);
  EXPECT_EQ(AnnouncedEntries({u"numberofentries=2.5"}), 2);
  EXPECT_EQ(AnnouncedEntries({u"File1=x"}), 0);
  EXPECT_EQ(AnnouncedEntries({}), 0);
}

TEST(PlaylistText, AnAnnouncementThatIsNoNumberAnnouncesNothing) {
  EXPECT_EQ(AnnouncedEntries({u"NumberOfEntries=many", u"NumberOfEntries=2"}), 0);
  EXPECT_EQ(AnnouncedEntries({u"NumberOfEntries=99999999999"}), 0);
}

TEST(PlaylistText, TheTitleWalkStopsAtTheFileLine) {
  const Lines file_first{u"[playlist]", u"File1=http://a/b", u"Title1=X", u"NumberOfEntries=1"};
  EXPECT_EQ(FindPlaylistEntry(file_first, 0).address, u"http://a/b");
  EXPECT_EQ(FindPlaylistEntry(file_first, 0).title, u"");
  const Lines title_first{u"[playlist]", u"title1 = X ", u"FILE1 = http://a/b", u"NumberOfEntries=1"};
  EXPECT_EQ(FindPlaylistEntry(title_first, 0).address, u"http://a/b");
  EXPECT_EQ(FindPlaylistEntry(title_first, 0).title, u"X");
}

TEST(PlaylistText, OfSeveralTitlesBeforeTheFileLineTheLastOneCounts) {
  const Lines lines{u"NumberOfEntries=2", u"Title1=A", u"Title2=B", u"Title1=C", u"File1=http://a"};
  EXPECT_EQ(FindPlaylistEntry(lines, 0).title, u"C");
  EXPECT_EQ(FindPlaylistEntry(lines, 1).title, u"B") << "an entry may have a title and no address";
  EXPECT_EQ(FindPlaylistEntry(lines, 1).address, u"");
}

TEST(PlaylistText, AnAddressIsCutAtItsSecondEqualsSign) {
  EXPECT_EQ(FindPlaylistEntry({u"NumberOfEntries=1", u"File1=http://h/s?x=1"}, 0).address, u"http://h/s?x");
}

TEST(PlaylistText, EntriesOutsideTheAnnouncedNumberAreEmpty) {
  const Lines lines{u"NumberOfEntries=1", u"File0=zero", u"File1=one", u"File2=two"};
  EXPECT_EQ(FindPlaylistEntry(lines, -1).address, u"");
  EXPECT_EQ(FindPlaylistEntry(lines, 0).address, u"one");
  EXPECT_EQ(FindPlaylistEntry(lines, 1).address, u"");
  EXPECT_EQ(FindPlaylistEntry(lines, 2147483647).address, u"");
}

TEST(PlaylistText, MegabyteLinesAreHandled) {
  const Text line(1 << 20, u'=');
  EXPECT_EQ(FindPlaylistEntry({u"NumberOfEntries=1", line, u"File1=a"}, 0).address, u"a");
  EXPECT_EQ(PlaylistLinesFromResponse(u"#EXTM3U\r\n" + line + u"\r\n" + line)->size(), 6U);
}

TEST(PlaylistText, AnEmptyFileLineEndsTheWalk) {
  EXPECT_EQ(FindPlaylistEntry({u"NumberOfEntries=1", u"File1=", u"File1=http://a"}, 0).address, u"");
}

TEST(PlaylistText, EveryPrefixCountsWhole) {
  for (const TextView response : {u"http:/host", u"https:/host", u"httphost", u"#extm3", u"[playlist"}) {
    EXPECT_EQ(PlaylistLinesFromResponse(response), std::nullopt);
  }
}

}  // namespace
}  // namespace stream
