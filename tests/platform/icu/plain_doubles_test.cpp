// The tests' own text conversion and order, compared with the program's: what they say must be what users
// get.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/icu/string_order.h"
#include "platform/icu/text_conversion.h"
#include "tests/support/plain_string_order.h"
#include "tests/support/plain_text_conversion.h"

namespace test_support {
namespace {

using platform::CodePage;
using platform::Text;

class PlainDoubles : public testing::Test {
 protected:
  PlainTextConversion plain;
  platform::icu::IcuTextConversion real;
  std::minstd_rand random{4711};
};

TEST_F(PlainDoubles, EveryByteAndEveryUnitIsConvertedAsInTheProgram) {
  for (unsigned value = 0; value <= 0xFFFF; ++value) {
    const std::string byte(1, static_cast<char>(value & 0xFFU));
    const Text unit(1, static_cast<char16_t>(value));
    for (const CodePage page : {CodePage::kAnsi, CodePage::kUtf8}) {
      ASSERT_EQ(plain.MultiByteToWideChar(page, byte), real.MultiByteToWideChar(page, byte)) << value;
      ASSERT_EQ(plain.WideCharToMultiByte(page, unit), real.WideCharToMultiByte(page, unit)) << value;
    }
  }
}

TEST_F(PlainDoubles, TextsAndMalformedBytesAreConvertedAsInTheProgram) {
  const std::string bytes =
      "\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5\xFF"
      "aZ";
  const Text units = u"aZ\u00E4\u20AC\u0416\xD834\xDD1E\xD800\xDFFF\uFFFD";
  for (int round = 0; round < 20000; ++round) {
    std::string some_bytes;
    Text some_units;
    for (int at = 0; at < 6; ++at) {
      some_bytes.push_back(bytes[random() % bytes.size()]);
      some_units.push_back(units[random() % units.size()]);
    }
    for (const CodePage page : {CodePage::kAnsi, CodePage::kUtf8}) {
      ASSERT_EQ(plain.MultiByteToWideChar(page, some_bytes), real.MultiByteToWideChar(page, some_bytes));
      ASSERT_EQ(plain.WideCharToMultiByte(page, some_units), real.WideCharToMultiByte(page, some_units));
    }
  }
}

TEST_F(PlainDoubles, TheLettersOfTheCodePageHaveTheirCaseAsInTheProgram) {
  Text letters;
  for (unsigned byte = 0; byte <= 0xFF; ++byte) {
    letters += real.MultiByteToWideChar(CodePage::kAnsi, std::string(1, static_cast<char>(byte)));
  }
  letters += u"\u0416\u0436\u0404\u0454\u03A9\u03C9";
  for (const char16_t letter : letters) {
    // Its capital letter is outside the code page.
    if (letter == u'\u00B5' || letter == u'\u0192') continue;
    const Text text(1, letter);
    EXPECT_EQ(plain.CharLowerW(text), real.CharLowerW(text)) << static_cast<unsigned>(letter);
    EXPECT_EQ(plain.CharUpperW(text), real.CharUpperW(text)) << static_cast<unsigned>(letter);
  }
}

TEST_F(PlainDoubles, NamesStandInTheProgramsOrder) {
  PlainStringOrder plain_order;
  platform::icu::IcuStringOrder real_order;
  const auto sign = [](int order) { return (order > 0) - (order < 0); };
  const std::u16string_view parts[] = {u"a",     u"B",      u"\u00E4", u"\u00C4", u"ss",        u"\u00DF",
                                       u"z",     u"\u00E9", u"1",      u"02",     u"10",        u" ",
                                       u"Radio", u"radio",  u"",       u"99",     u"4294967297"};
  for (int round = 0; round < 20000; ++round) {
    Text names[2];
    for (Text& name : names) {
      for (int at = 0; at < 3; ++at) name += parts[random() % std::size(parts)];
    }
    EXPECT_EQ(sign(plain_order.SortKey(names[0]).compare(plain_order.SortKey(names[1]))),
              sign(plain_order.StrCmpLogicalW(names[0], names[1])));
    EXPECT_EQ(sign(plain_order.StrCmpLogicalW(names[0], names[1])),
              sign(real_order.StrCmpLogicalW(names[0], names[1])))
        << plain.WideCharToMultiByte(CodePage::kUtf8, names[0]) << " | "
        << plain.WideCharToMultiByte(CodePage::kUtf8, names[1]);
  }
}

}  // namespace
}  // namespace test_support
