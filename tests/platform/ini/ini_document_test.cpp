// Compares the document with a plain model that reads all lines again for every change.

#include "platform/ini/ini_document.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/ini/ini_line.h"
#include "tests/support/plain_text_conversion.h"

namespace platform::ini {
namespace {

/// The rules in their shortest form, for ASCII files with LF line ends.
class Model {
 public:
  explicit Model(const std::string& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
      const auto end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
      lines_.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                          bytes.begin() + static_cast<std::ptrdiff_t>(end));
      at = end;
    }
  }
  [[nodiscard]] std::string Bytes() const {
    std::string bytes;
    for (const Text& line : lines_) bytes.append(line.begin(), line.end());
    return bytes;
  }

  [[nodiscard]] std::optional<Text> Value(const Text& section, const Text& key) const {
    const std::size_t at = KeyLine(section, key);
    if (at == kNone) return std::nullopt;
    return Text(RemoveQuotes(Read(at).value));
  }
  void Set(const Text& section, const Text& key, const Text& value) {
    if (const auto now = Value(section, key); now == Text(RemoveQuotes(TrimBlanks(value)))) return;
    const std::size_t at = KeyLine(section, key);
    if (at != kNone) {
      const auto indent = lines_[at].find_first_not_of(u" \t");
      const Text end = lines_[at].ends_with(u'\n') ? u"\n" : u"";
      lines_[at] = lines_[at].substr(0, indent) + Text(Read(at).name) + u"=" + value + end;
      return;
    }
    std::size_t header = Header(section);
    if (header == kNone) {
      EndLine(lines_.size());
      lines_.push_back(u"[" + section + u"]\n");
      header = lines_.size() - 1;
    }
    std::size_t place = EndOfSection(header);
    while (Read(place - 1).kind == IniLineKind::kBlank) --place;
    EndLine(place);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), key + u"=" + value + u"\n");
  }
  void DeleteKey(const Text& section, const Text& key) {
    const std::size_t at = KeyLine(section, key);
    if (at != kNone) lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at));
  }
  void DeleteSection(const Text& section) {
    const std::size_t at = Header(section);
    if (at == kNone) return;
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(at),
                 lines_.begin() + static_cast<std::ptrdiff_t>(EndOfSection(at)));
  }
  void Insert(const ProfileSection& section) {
    const std::size_t next = section.next ? Header(*section.next) : kNone;
    const std::size_t place = std::min(next, lines_.size());
    EndLine(place);
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), section.lines);
    if (next != kNone) EndLine(place + 1);
  }
  [[nodiscard]] std::vector<Text> SectionNames() const {
    std::vector<Text> names;
    for (std::size_t at = 0; at < lines_.size(); ++at) {
      if (Read(at).kind == IniLineKind::kSection) names.emplace_back(Read(at).name);
    }
    return names;
  }

 private:
  static constexpr std::size_t kNone = Text::npos;

  [[nodiscard]] IniLine Read(std::size_t at) const {
    TextView line = lines_[at];
    if (line.ends_with(u'\n')) line.remove_suffix(1);
    return ReadIniLine(line);
  }
  static bool Equal(TextView left, TextView right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](char16_t one, char16_t other) {
      return one == other || ((one ^ other) == 0x20 && (one | 0x20) >= u'a' && (one | 0x20) <= u'z');
    });
  }
  [[nodiscard]] std::size_t Header(const Text& section) const {
    for (std::size_t at = 0; at < lines_.size(); ++at) {
      if (Read(at).kind == IniLineKind::kSection && Equal(Read(at).name, section)) return at;
    }
    return kNone;
  }
  [[nodiscard]] std::size_t EndOfSection(std::size_t header) const {
    std::size_t at = header + 1;
    while (at < lines_.size() && Read(at).kind != IniLineKind::kSection) ++at;
    return at;
  }
  [[nodiscard]] std::size_t KeyLine(const Text& section, const Text& key) const {
    const std::size_t header = Header(section);
    if (header == kNone) return kNone;
    for (std::size_t at = header + 1; at < EndOfSection(header); ++at) {
      if (Read(at).kind == IniLineKind::kKey && Equal(Read(at).name, key)) return at;
    }
    return kNone;
  }
  void EndLine(std::size_t before) {
    if (before > 0 && !lines_[before - 1].ends_with(u'\n')) lines_[before - 1] += u'\n';
  }

  std::vector<Text> lines_;
};

class IniDocumentTest : public testing::Test {
 protected:
  [[nodiscard]] IniDocument Parse(const std::string& bytes) { return {conversion, bytes}; }
  std::string RandomFile() {
    static const std::string kLines[] = {"[a]",       "[B]", " [ c ] x", "[]",  "k=1", "K = \"2\"",
                                         "\tl=3 ",    "m",   ";k=4",     "",    "",    "  ",
                                         "[unclosed", "=5",  "#l=6",     "[k=7"};
    std::string bytes = "\n";
    for (auto count = random() % 16; count > 0; --count) bytes += kLines[random() % std::size(kLines)] + "\n";
    if (bytes.size() > 1 && random() % 2 == 0) bytes.pop_back();
    return bytes;
  }
  template <std::size_t size>
  Text OneOf(const char16_t* const (&texts)[size]) {
    return texts[random() % size];
  }

  test_support::PlainTextConversion conversion;
  std::mt19937 random{20261115};
};

TEST_F(IniDocumentTest, ManyChangesOfOneDocumentGiveWhatChangingTheFileAnewEachTimeGives) {
  constexpr const char16_t* kSections[] = {u"a", u"b", u"C", u"", u"new", u"other"};
  constexpr const char16_t* kKeys[] = {u"k", u"L", u"m", u"", u"#l", u"[k"};
  constexpr const char16_t* kValues[] = {u"1", u"2", u"", u"\"x\"", u"longer value "};
  for (int round = 0; round < 1000; ++round) {
    const std::string file = RandomFile();
    Model model(file);
    IniDocument document = Parse(file);
    ASSERT_EQ(document.Bytes(), file);
    for (int step = 0; step < 12; ++step) {
      const Text section = OneOf(kSections);
      const Text key = OneOf(kKeys);
      ASSERT_EQ(document.Value(section, key), model.Value(section, key)) << document.Bytes();
      const auto action = random() % 8;
      if (action < 5) {
        const Text value = OneOf(kValues);
        document.SetValue(section, key, value);
        model.Set(section, key, value);
      } else if (action < 7) {
        document.DeleteKey(section, key);
        model.DeleteKey(section, key);
      } else {
        document.DeleteSection(section);
        model.DeleteSection(section);
      }
      ASSERT_EQ(document.Bytes(), model.Bytes()) << file;
    }
    ASSERT_EQ(document.SectionNames(), model.SectionNames());
  }
}

TEST_F(IniDocumentTest, EverySectionOfAnyFileIsCopiedWholeAndGoesBackBeforeTheOneBehindIt) {
  int in_place = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::string file = RandomFile();
    for (const Text& name : Parse(file).SectionNames()) {
      IniDocument document = Parse(file);
      const auto copy = document.CopySection(name);
      ASSERT_TRUE(copy) << file;
      ASSERT_EQ(document.DeleteSection(name), IniChange::kMade);
      ASSERT_EQ(document.Bytes().size() + copy->lines.size(), file.size());
      Model model(document.Bytes());
      model.Insert(*copy);
      ASSERT_EQ(document.InsertSection(*copy), IniChange::kMade);
      ASSERT_EQ(document.Bytes(), model.Bytes()) << file;
      if (document.Bytes() == file) ++in_place;
    }
  }
  EXPECT_GT(in_place, 1000) << "unless an equal name is further up, the file is as it was";
}

TEST_F(IniDocumentTest, EveryEncodingKeepsTheBytesOfAnyFile) {
  for (int round = 0; round < 3000; ++round) {
    std::string bytes(random() % 60, '\0');
    constexpr std::string_view kLikely = "[]=;\r\n \ta\0\xFF\xE4\"";
    for (char& byte : bytes)
      byte = random() % 4 == 0 ? static_cast<char>(random()) : kLikely[random() % kLikely.size()];
    for (const std::string mark : {"", "\xFF\xFE", "\xEF\xBB\xBF"}) {
      IniDocument document = Parse(mark + bytes);
      for (const Text& section : document.SectionNames()) document.Value(section, u"a");
      ASSERT_EQ(document.Bytes(), mark + bytes);
    }
  }
}

TEST_F(IniDocumentTest, AChangeSaysWhatItDid) {
  IniDocument document = Parse("[a]\nk=1\n");
  EXPECT_EQ(document.SetValue(u"a", u"k", u"1"), IniChange::kNone);
  EXPECT_EQ(document.SetValue(u"a", u"k", u"2"), IniChange::kMade);
  EXPECT_EQ(document.SetValue(u"a", u"k=", u"2"), IniChange::kRefused);
  EXPECT_EQ(document.DeleteKey(u"a", u"l"), IniChange::kNone);
  EXPECT_EQ(document.DeleteKey(u"a", u"k"), IniChange::kMade);
  EXPECT_EQ(document.DeleteSection(u"b"), IniChange::kNone);
  EXPECT_EQ(document.DeleteSection(u"a"), IniChange::kMade);
  EXPECT_EQ(document.Bytes(), "");
}

TEST_F(IniDocumentTest, NoChangeMakesAFileLargerThanCanBeRead) {
  IniDocument document = Parse("[a]\nk=1\n");
  const Text huge(kLargestIniFile / 3, u'x');
  EXPECT_EQ(document.SetValue(u"a", u"k", huge), IniChange::kRefused);
  EXPECT_EQ(document.SetValue(u"b", u"k", huge), IniChange::kRefused);
  EXPECT_EQ(document.Bytes(), "[a]\nk=1\n");
}

TEST_F(IniDocumentTest, ASectionForWhichThereIsNoRoomIsNotPutBack) {
  IniDocument document = Parse("[a]\nk=1\n");
  const Text huge = u"[b]\n" + Text(kLargestIniFile / 3, u'x');
  EXPECT_EQ(document.InsertSection({huge, std::nullopt}), IniChange::kRefused);
  EXPECT_EQ(document.Bytes(), "[a]\nk=1\n");
}

TEST_F(IniDocumentTest, LineEndOfTheFileStaysThoughTheSectionThatHadItIsGone) {
  IniDocument document = Parse("[a]\nk=1\n[b]\r\nk=2\r\n");
  EXPECT_EQ(document.DeleteSection(u"a"), IniChange::kMade);
  EXPECT_EQ(document.InsertSection({u"[c]\r\n", std::nullopt}), IniChange::kMade);
  EXPECT_EQ(document.SetValue(u"c", u"k", u"3"), IniChange::kMade);
  EXPECT_EQ(document.Bytes(), "[b]\r\nk=2\r\n[c]\r\nk=3\n");
}

TEST_F(IniDocumentTest, ANewKeyComesBeforeTheBlankLinesRoundADeletedOne) {
  IniDocument document = Parse("[a]\nk=1\n \nl=2\n\t\n[b]\n");
  EXPECT_EQ(document.DeleteKey(u"a", u"l"), IniChange::kMade);
  EXPECT_EQ(document.SetValue(u"a", u"m", u"3"), IniChange::kMade);
  EXPECT_EQ(document.Bytes(), "[a]\nk=1\nm=3\n \n\t\n[b]\n");
}

TEST_F(IniDocumentTest, NamesOfDeletedSectionsAreNotListed) {
  IniDocument document = Parse("[a]\n[b]\n[]\n[c]\n");
  EXPECT_EQ(document.DeleteSection(u"b"), IniChange::kMade);
  EXPECT_EQ(document.SectionNames(), (std::vector<Text>{u"a", u"", u"c"}));
}

TEST_F(IniDocumentTest, AfterManyReplacementsOfLongValuesTheDocumentIsStillRight) {
  IniDocument document = Parse("[a]\nk=1\nl=2\n");
  const Text values[] = {Text(50 * 1000, u'x'), Text(50 * 1000, u'y')};
  for (int round = 0; round < 60; ++round) {
    ASSERT_EQ(document.SetValue(u"a", u"k", values[round % 2]), IniChange::kMade);
  }
  EXPECT_EQ(document.Value(u"a", u"k"), values[1]);
  EXPECT_EQ(document.Bytes().size(), 50 * 1000 + std::string("[a]\nk=\nl=2\n").size());
}

}  // namespace
}  // namespace platform::ini
