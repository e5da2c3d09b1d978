#include "playlist/station_list_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/plain_text_conversion.h"

namespace playlist {
namespace {

using app::Text;
using Stations = std::vector<ListedStation>;

class StationListReaderTest : public ::testing::Test {
 protected:
  StationList Read(std::string_view bytes) { return ReadStationList(conversion_, bytes); }
  Stations StationsOf(std::string_view bytes) { return Read(bytes).stations; }
  static std::string Utf16(const Text& text, bool big) {
    std::string bytes = big ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t unit : text) {
      const std::array pair = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
      bytes += {pair[big ? 1 : 0], pair[big ? 0 : 1]};
    }
    return bytes;
  }

  test_support::PlainTextConversion conversion_;
  const Stations kTwo = {{u"Köln – Ö", u"http://one.example/a"}, {u"Zwei", u"https://two.example/b"}};
  const Text kTwoAsM3u =
      u"#EXTM3U\n#EXTINF:-1,Köln – Ö\nhttp://one.example/a\n#EXTINF:-1,Zwei\nhttps://two.example/b\n";
};

// Bytes and lines

TEST_F(StationListReaderTest, TextIsUtf8WithOrWithoutAMark) {
  const std::string bytes = conversion_.WideCharToMultiByte(platform::CodePage::kUtf8, kTwoAsM3u);
  EXPECT_EQ(StationsOf(bytes), kTwo);
  EXPECT_EQ(StationsOf("\xEF\xBB\xBF" + bytes), kTwo);
}

TEST_F(StationListReaderTest, TextIsUtf16OfEitherByteOrderWithAMark) {
  EXPECT_EQ(StationsOf(Utf16(kTwoAsM3u, false)), kTwo);
  EXPECT_EQ(StationsOf(Utf16(kTwoAsM3u, true)), kTwo);
  EXPECT_EQ(StationsOf(Utf16(kTwoAsM3u, true) + '\0'), kTwo) << "half a unit at the end";
}

TEST_F(StationListReaderTest, TextThatIsNoUtf8IsInTheCodePage) {
  EXPECT_EQ(StationsOf("#EXTINF:-1,K\xF6ln \x80\nhttp://a/\n"), (Stations{{u"Köln €", u"http://a/"}}));
  EXPECT_EQ(StationsOf("#EXTINF:-1,K\xC3\xB6ln \xF6\nhttp://a/\n"), (Stations{{u"KÃ¶ln ö", u"http://a/"}}))
      << "one malformed byte decides";
  EXPECT_EQ(StationsOf("#EXTINF:-1,\xEF\xBF\xBD\nhttp://a/\n"), (Stations{{u"\uFFFD", u"http://a/"}}))
      << "the replacement character itself is well-formed";
}

TEST_F(StationListReaderTest, Utf8WithAMarkStaysUtf8WhenItIsMalformed) {
  EXPECT_EQ(StationsOf("\xEF\xBB\xBF#EXTINF:-1,K\xC3\xB6ln \xF6\nhttp://a/\n"),
            (Stations{{u"Köln \uFFFD", u"http://a/"}}));
}

TEST_F(StationListReaderTest, LinesEndAtCrLfOrBoth) {
  for (const std::string end : {"\r", "\n", "\r\n", "\n\r", "\r\r\n"}) {
    EXPECT_EQ(StationsOf("#EXTM3U" + end + "#EXTINF:-1,Eins" + end + "http://a/" + end + end + "http://b/"),
              (Stations{{u"Eins", u"http://a/"}, {u"b", u"http://b/"}}));
  }
}

TEST_F(StationListReaderTest, BlanksAtTheEndsOfLinesDoNotCount) {
  EXPECT_EQ(StationsOf(" \t#EXTINF:-1 , Eins \t\n  http://a/ \n"), (Stations{{u"Eins", u"http://a/"}}));
}

// M3U

TEST_F(StationListReaderTest, NameIsEverythingBehindTheFirstCommaOutsideQuotes) {
  const std::vector<std::pair<std::string, Text>> names = {
      {"-1,Eins, zwei, drei", u"Eins, zwei, drei"},
      {"-1,,Eins", u",Eins"},
      {R"(-1 tvg-id="a,b" group-title="x, y",Eins "a, b")", u"Eins \"a, b\""},
      {R"(-1 tvg-name="",Eins)", u"Eins"},
      {R"(-1 tvg-id="a,Eins)", u"Eins"},
      {R"(-1 tvg-id="a" x",Eins,zwei)", u"Eins,zwei"},
      {"0,Eins", u"Eins"},
      {",Eins", u"Eins"}};
  for (const auto& [info, name] : names) {
    EXPECT_EQ(StationsOf("#EXTINF:" + info + "\nhttp://a/\n"), (Stations{{name, u"http://a/"}})) << info;
  }
}

TEST_F(StationListReaderTest, LinkWithoutANameIsNamedAfterItsHost) {
  for (const std::string before : {"", "#EXTINF:-1\n", "#EXTINF:-1,\n", "#EXTINF:-1, \t\n", "#EXTM3U\n"}) {
    EXPECT_EQ(StationsOf(before + "http://user@radio.example:8000/live\n"),
              (Stations{{u"radio.example", u"http://user@radio.example:8000/live"}}));
  }
}

TEST_F(StationListReaderTest, OtherLinesBetweenNameAndLinkArePassedOver) {
  EXPECT_EQ(
      StationsOf("#EXTINF:-1,Eins\n#EXTGRP:Nachrichten\n#EXTVLCOPT:network-caching=1000\n\n# x\nhttp://a/\n"),
      (Stations{{u"Eins", u"http://a/"}}));
}

TEST_F(StationListReaderTest, NameBelongsToTheNextEntryOnly) {
  EXPECT_EQ(
      StationsOf("#EXTINF:180,Lied\nMusik/lied.mp3\nhttp://a/\n#EXTINF:-1,X\n#EXTINF:-1,Zwei\nhttp://b/\n"
                 "http://c/\n"),
      (Stations{{u"a", u"http://a/"}, {u"Zwei", u"http://b/"}, {u"c", u"http://c/"}}));
}

TEST_F(StationListReaderTest, KeyWordsCountInAnyLetterCase) {
  EXPECT_EQ(StationsOf("#extm3u\n#ExtInf:-1,Eins\nHTTP://a/\n"), (Stations{{u"Eins", u"HTTP://a/"}}));
}

TEST_F(StationListReaderTest, WhatIsNoWebAddressIsLeftOut) {
  const StationList list = Read("#EXTINF:1,A\nC:\\Musik\\a.mp3\nmms://b/\nfile:///c.mp3\nhttp://\n");
  EXPECT_EQ(list.stations, Stations{});
  EXPECT_EQ(list.kind, StationList::Kind::kList);
}

TEST_F(StationListReaderTest, PartsOfOneStreamAreNoStations) {
  for (const char* text : {"#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:9.9,\nhttp://a/1.ts\n",
                           "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=128000\nhttp://a/low.m3u8\n"}) {
    EXPECT_EQ(Read(text).kind, StationList::Kind::kStream);
    EXPECT_EQ(StationsOf(text), Stations{});
  }
}

TEST_F(StationListReaderTest, FileOfBlanksIsEmpty) {
  for (const char* text : {"", " \r\n\t", "\xEF\xBB\xBF", "\xFF\xFE"}) {
    EXPECT_EQ(Read(text).kind, StationList::Kind::kEmpty);
  }
  EXPECT_EQ(Read("#EXTM3U\n").kind, StationList::Kind::kList);
}

// PLS

TEST_F(StationListReaderTest, TitlesAndFilesBelongTogetherWhereverTheyStand) {
  EXPECT_EQ(StationsOf("[playlist]\nTitle2=Zwei\nFile10=http://c/\nFile2=http://b/\nNumberOfEntries=1\n"
                       "File1=http://a/?x=1\nLength1=-1\nVersion=2\nTitle10=Zehn\nTitle1=Eins = 1\n"),
            (Stations{{u"Eins = 1", u"http://a/?x=1"}, {u"Zwei", u"http://b/"}, {u"Zehn", u"http://c/"}}));
}

TEST_F(StationListReaderTest, PlsKeysCountInAnyLetterCaseAndWithBlanks) {
  EXPECT_EQ(StationsOf("\r\n[PLAYLIST]\r\nFILE1 = http://a/ \r\n  title01\t=\tEins\r\n"),
            (Stations{{u"Eins", u"http://a/"}}));
}

TEST_F(StationListReaderTest, PlsWithoutItsHeaderIsRecognised) {
  EXPECT_EQ(StationsOf("; von Hand\nFile1=http://a/\nTitle1=Eins\n"), (Stations{{u"Eins", u"http://a/"}}));
  EXPECT_EQ(StationsOf("NumberOfEntries=1\nFile1=http://a/\n"), (Stations{{u"a", u"http://a/"}}));
}

TEST_F(StationListReaderTest, PlsKeyWithoutAnEqualsSignIsPassedOver) {
  EXPECT_EQ(StationsOf("[playlist]\nFile1=http://a/\nTitle1\n"), (Stations{{u"a", u"http://a/"}}));
}

TEST_F(StationListReaderTest, OfTheSamePlsKeyTheFirstCounts) {
  EXPECT_EQ(StationsOf("[playlist]\nFile1=http://a/\nFile1=http://b/\nTitle1=Eins\nTitle1=Zwei\n"),
            (Stations{{u"Eins", u"http://a/"}}));
}

TEST_F(StationListReaderTest, PlsEntryThatIsNoWebAddressIsLeftOut) {
  EXPECT_EQ(StationsOf("[playlist]\nFile1=/musik/a.mp3\nTitle1=Lied\nFile2=http://b/\nFileX=http://c/\n"
                       "File=http://d/\nFile1234567890=http://e/\nFile-3=http://f/\n"),
            (Stations{{u"b", u"http://b/"}}));
}

TEST_F(StationListReaderTest, EqualsSignsAndBracketsInAnM3uMakeItNoPls) {
  EXPECT_EQ(StationsOf("#EXTM3U x=y\n#EXTINF:-1 a=b,Eins\nhttp://a/?file1=x\n[playlist]\nFile1=http://b/\n"),
            (Stations{{u"Eins", u"http://a/?file1=x"}}));
}

// As other programs write them

TEST_F(StationListReaderTest, TelevisionListComesOutRight) {
  EXPECT_EQ(
      StationsOf("\xEF\xBB\xBF#EXTM3U url-tvg=\"http://epg.example/x.xml\" tvg-shift=0\r\n"
                 "#EXTINF:-1 tvg-id=\"radio.eins\" tvg-name=\"Eins, Berlin\" tvg-logo=\"http://x/1.png\" "
                 "group-title=\"Radio,Pop\",Radio Eins, Berlin\r\n"
                 "#KODIPROP:inputstream=adaptive\r\nhttps://a.example/eins\r\n"),
      (Stations{{u"Radio Eins, Berlin", u"https://a.example/eins"}}));
}

TEST_F(StationListReaderTest, DirectorysListsComeOutRight) {
  EXPECT_EQ(StationsOf("#EXTM3U\n#RADIOBROWSERUUID:0815\n#EXTINF:1,Sender A\nhttp://a/\n\n"
                       "#RADIOBROWSERUUID:0816\n#EXTINF:1,Sender B\nhttp://b/\n\n"),
            (Stations{{u"Sender A", u"http://a/"}, {u"Sender B", u"http://b/"}}));
  EXPECT_EQ(
      StationsOf(
          "[playlist]\nnumberofentries=2\nFile1=http://a:80\nTitle1=(#1 - 12/300) Sender A\nLength1=-1\n"
          "File2=http://b:80\nTitle2=(#2 - 9/300) Sender A\nLength2=-1\nVersion=2\n"),
      (Stations{{u"(#1 - 12/300) Sender A", u"http://a:80"}, {u"(#2 - 9/300) Sender A", u"http://b:80"}}));
}

TEST_F(StationListReaderTest, PlayersListsComeOutRight) {
  EXPECT_EQ(StationsOf("[playlist]\r\nX-GNOME-Title=Radio\r\nNumberOfEntries=1\r\nFile1=http://a/\r\n"
                       "Title1=Eins\r\nLength1=0\r\n"),
            (Stations{{u"Eins", u"http://a/"}}));
  EXPECT_EQ(StationsOf("#EXTM3U\r#EXTINF:-1,K\xFC"
                       "che - Radio\rhttp://a/\r"),
            (Stations{{u"Küche - Radio", u"http://a/"}}));
  EXPECT_EQ(StationsOf("http://a/\r\nhttp://b/x.ogg\r\n"),
            (Stations{{u"a", u"http://a/"}, {u"b", u"http://b/x.ogg"}}));
}

TEST_F(StationListReaderTest, OwnExportComesBack) {
  EXPECT_EQ(
      StationsOf(
          "#EXTM3U\n#EXTINF:-1,Eins, zwei\nhttp://a/\n#EXTINF:-1,Ohne\n\n#EXTINF:-1,Drei\nhttp://b/\n\r\n"),
      (Stations{{u"Eins, zwei", u"http://a/"}, {u"Drei", u"http://b/"}}));
}

// Bounds

TEST_F(StationListReaderTest, NamesAreCutBetweenCharactersAndHaveNoControlCharacters) {
  const std::string letters(kLongestStationName - 1, 'x');
  const Text cut(letters.begin(), letters.end());
  EXPECT_EQ(StationsOf("#EXTINF:-1," + letters + "yz\nhttp://a/\n")[0].name, cut + u'y');
  EXPECT_EQ(StationsOf("#EXTINF:-1," + letters + "\xF0\x9F\x93\xBB\nhttp://a/\n")[0].name, cut);
  EXPECT_EQ(StationsOf("#EXTINF:-1," + letters + " z\nhttp://a/\n")[0].name, cut);
  EXPECT_EQ(StationsOf("#EXTINF:-1,a\tb\x7F"
                       "c\nhttp://a/\n")[0]
                .name,
            u"a b c");
}

TEST_F(StationListReaderTest, MoreStationsThanTheMostAreCut) {
  std::string m3u;
  std::string pls = "[playlist]\n";
  for (std::size_t number = 0; number < kMostStations; ++number) {
    m3u += "http://a/\n";
    pls += "File" + std::to_string(number) + "=http://a/\n";
  }
  EXPECT_FALSE(Read(m3u).is_cut);
  EXPECT_FALSE(Read(pls + "File7=http://b/\n").is_cut) << "the first counts";
  for (const std::string& longer : {m3u + "http://a/\n", pls + "File999999=http://a/\n"}) {
    const StationList list = Read(longer);
    EXPECT_TRUE(list.is_cut);
    EXPECT_EQ(list.stations.size(), kMostStations);
  }
}

TEST_F(StationListReaderTest, HostileFilesComeToAnEnd) {
  for (const std::string piece :
       {"\"", ",", "\"a,", "#EXTINF:\"\n", "[playlist]\n", "File1=\n", "\r", "\xFF", "=", " "}) {
    std::string bytes = "#EXTINF:";
    while (bytes.size() < std::size_t{1} << 20U) bytes += piece;
    EXPECT_EQ(StationsOf(bytes), Stations{});
  }
  EXPECT_EQ(StationsOf(std::string(1000, '\0')), Stations{});
}

}  // namespace
}  // namespace playlist
