#include "catalogue/unsaved_rows_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/plain_text_conversion.h"

namespace catalogue {
namespace {

using platform::Text;

class UnsavedRowsFileTest : public ::testing::Test {
 protected:
  static UnsavedRow Row(controls::ListCells cells, PartInFile part = {}, int icon = -1) {
    UnsavedRow unsaved;
    unsaved.row.cells = std::move(cells);
    unsaved.row.icon = icon;
    unsaved.part = std::move(part);
    return unsaved;
  }
  std::string Format(const UnsavedCatalogue& catalogue) { return FormatUnsavedRows(catalogue, conversion_); }
  std::optional<UnsavedCatalogue> Parse(std::string_view bytes) {
    return ParseUnsavedRows(bytes, conversion_);
  }
  /// Formats and parses; nothing when that failed.
  std::optional<UnsavedCatalogue> Again(const UnsavedCatalogue& catalogue) {
    return Parse(Format(catalogue));
  }
  static void ExpectEqual(const UnsavedRow& row, const UnsavedRow& expected) {
    for (std::size_t cell = 0; cell < app::kStationCells; ++cell) {
      if (cell != app::kTitleCell) {
        EXPECT_EQ(row.row.cells[cell], expected.row.cells[cell]) << cell;
      }
    }
    EXPECT_EQ(row.row.icon < 0, expected.row.icon < 0);
    EXPECT_EQ(row.part.cells, expected.part.cells);
    EXPECT_EQ(row.part.sections, expected.part.sections);
  }
  void ExpectSameAgain(const UnsavedCatalogue& catalogue) {
    const auto again = Again(catalogue);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->catalogue_changed, catalogue.catalogue_changed);
    ASSERT_EQ(again->rows.size(), catalogue.rows.size());
    for (std::size_t row = 0; row < catalogue.rows.size(); ++row) {
      ExpectEqual(again->rows[row], catalogue.rows[row]);
    }
  }

  test_support::PlainTextConversion conversion_;
  const UnsavedCatalogue two_rows_{
      true,
      {Row({u"Grüner Hügel", u"Klassik", u"http://h", u"1", u"Titel", u"2"},
           {{app::kFavouriteCell, app::kM3uNumberCell}, {u"Grüner Hügel", u"Alt"}}, 7),
       Row({u"Import", u"", u"http://i", u"", u"", u""})}};
};

TEST_F(UnsavedRowsFileTest, ReadsAsItIsDescribed) {
  const std::string body =
      "Funkhausplayer unsaved rows 1\nchanged 1\n"
      "row\t1\tGrüner Hügel\tKlassik\thttp://h\t1\t2\t35\tGrüner Hügel\tAlt\n"
      "row\t0\tImport\t\thttp://i\t\t\t\n";
  EXPECT_EQ(Format(two_rows_), WithChecksum(body));
  // The checksum is the same in every build.
  EXPECT_EQ(WithChecksum("a\n"), "a\nend 089bdc07b544e7b2\n");
}

TEST_F(UnsavedRowsFileTest, RowsComeBackInTheirOrderWithWhatTheStationFileHoldsOfThem) {
  ExpectSameAgain(two_rows_);
  ExpectSameAgain({false, two_rows_.rows});
  ExpectSameAgain({});
}

TEST_F(UnsavedRowsFileTest, AnyTextComesBack) {
  const Text texts[] = {u"\\",
                        u"a\tb",
                        u"\r",
                        u"\n",
                        u"\r\n end",
                        Text(1, u'\0'),
                        u"\\t\\n",
                        u"\xD800",
                        u"\xDC00",
                        u"\xDC00\xD800",
                        u"a\xD83D",
                        u"😀",
                        u"\xFFFF",
                        u"\xFEFF"
                        u"bom",
                        u" blanks ",
                        u"%1=;[x]",
                        u"\\uD800",
                        u""};
  for (const Text& text : texts) {
    ExpectSameAgain({true, {Row({text, text, text, text, u"", text}, {{}, {text, text}})}});
  }
  Text every_unit;
  for (unsigned unit = 0; unit < 0x10000; ++unit) every_unit += static_cast<char16_t>(unit);
  ExpectSameAgain({true, {Row({every_unit, u"", u"", u"", u"", u""}, {{}, {every_unit}})}});
}

TEST_F(UnsavedRowsFileTest, CutOffAnywhereItHasNoMeaning) {
  const std::string bytes = Format(two_rows_);
  for (std::size_t size = 0; size < bytes.size(); ++size) EXPECT_FALSE(Parse(bytes.substr(0, size))) << size;
  EXPECT_FALSE(Parse(bytes + "\n"));
  EXPECT_FALSE(Parse(bytes + bytes));
}

TEST_F(UnsavedRowsFileTest, WithAnyByteChangedItHasNoMeaning) {
  const std::string bytes = Format(two_rows_);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    for (const int bit : {1, 32, 128}) {
      std::string changed = bytes;
      changed[at] = static_cast<char>(changed[at] ^ bit);
      EXPECT_FALSE(Parse(changed)) << at;
    }
  }
}

TEST_F(UnsavedRowsFileTest, OfAnotherVersionOrShapeItHasNoMeaning) {
  const std::string head = "Funkhausplayer unsaved rows 1\nchanged 0\n";
  EXPECT_TRUE(Parse(WithChecksum(head)));
  for (const char* body : {"", "\n", "Funkhausplayer unsaved rows 2\nchanged 0\n", "changed 0\n",
                           "Funkhausplayer unsaved rows 1\n", "Funkhausplayer unsaved rows 1\nchanged 2\n",
                           "Funkhausplayer unsaved rows 1\nchanged 0"}) {
    EXPECT_FALSE(Parse(WithChecksum(body))) << body;
  }
  for (const char* row :
       {"\n", "row\n", "row\t0\tName\t\t\t\t\n", "row\t2\tName\t\t\t\t\t\n", "ROW\t0\tName\t\t\t\t\t\n",
        "row\t0\tName\t\t\t\t\t0\n", "row\t0\tName\t\t\t\t\t4\n", "row\t0\tName\t\t\t\t\tx\n",
        "row\t0\tName\\\t\t\t\t\t\n", "row\t0\tName\\x\t\t\t\t\t\n", "row\t0\tName\\u12\t\t\t\t\t\n",
        "row\t0\tName\\u0041\t\t\t\t\t\n", "row\t0\tName\\uD80G\t\t\t\t\t\n",
        "row\t0\tName\\ueg00\t\t\t\t\t\n", "row\t0\tName\t\\x\t\t\t\t\n",
        "row\t0\tName\t\t\t\t\t\tsection\\\n"}) {
    EXPECT_FALSE(Parse(WithChecksum(head + row))) << row;
  }
}

TEST_F(UnsavedRowsFileTest, BytesThatAreNoUtf8AreReplacedWhenTheChecksumFits) {
  const auto parsed =
      Parse(WithChecksum("Funkhausplayer unsaved rows 1\nchanged 0\nrow\t0\tA\xFF"
                         "B\t\t\t\t\t\n"));
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->rows[0].row.cells[app::kNameCell],
            u"A\xFFFD"
            u"B");
}

TEST_F(UnsavedRowsFileTest, MoreRowsThanTheLimitAreLeftOutAndNotRead) {
  UnsavedCatalogue many;
  many.rows.resize(kMostKeptRows + 1);
  const auto again = Again(many);
  ASSERT_TRUE(again);
  EXPECT_EQ(again->rows.size(), kMostKeptRows);
  std::string body = "Funkhausplayer unsaved rows 1\nchanged 0\n";
  for (std::size_t row = 0; row <= kMostKeptRows; ++row) body += "row\t0\t\t\t\t\t\t\n";
  EXPECT_FALSE(Parse(WithChecksum(body)));
}

TEST_F(UnsavedRowsFileTest, MoreSectionsThanTheLimitAreLeftOutAndNotRead) {
  UnsavedCatalogue many{false, {Row({u"A"}), Row({u"B"})}};
  many.rows[1].part.sections.resize(kMostKeptRows + 1);
  const auto again = Again(many);
  ASSERT_TRUE(again);
  EXPECT_EQ(again->rows.size(), 1U);
  EXPECT_FALSE(Parse(WithChecksum("Funkhausplayer unsaved rows 1\nchanged 0\nrow\t0\t\t\t\t\t\t" +
                                  std::string(kMostKeptRows + 1, '\t') + "\n")));
}

TEST_F(UnsavedRowsFileTest, FileNeverGrowsBeyondItsLimit) {
  const Text long_name(6'000'000, u'€');  // three bytes each
  const UnsavedCatalogue big{false, {Row({long_name}), Row({long_name}), Row({long_name}), Row({long_name})}};
  const std::string bytes = Format(big);
  EXPECT_LE(bytes.size(), kLongestUnsavedRowsFile);
  const auto again = Parse(bytes);
  ASSERT_TRUE(again);
  EXPECT_EQ(again->rows.size(), 3U);
  EXPECT_FALSE(Parse(WithChecksum("Funkhausplayer unsaved rows 1\nchanged 0\nrow\t0\t" +
                                  std::string(kLongestUnsavedRowsFile, 'a') + "\t\t\t\t\t\n")));
}

}  // namespace
}  // namespace catalogue
