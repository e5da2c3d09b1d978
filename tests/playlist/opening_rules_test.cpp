#include "playlist/opening_rules.h"

#include <gtest/gtest.h>

#include "playlist/web_address.h"

namespace playlist {
namespace {

using app::Text;
using controls::DropOffer;
using Kind = Opening::Kind;

TEST(OpeningRulesTest, OneFileThatIsNamedAsAListIsAList) {
  for (const Text& path :
       {Text(u"\\musik\\a.m3u"), Text(u"\\a b.M3U8"), Text(u"C:\\x.y\\a.Pls"), Text(u"a.m3u")}) {
    const auto opening = WhatToOpen({{path}, {}, {}});
    ASSERT_TRUE(opening) << std::string(path.begin(), path.end());
    EXPECT_EQ(opening->kind, Kind::kList);
    EXPECT_EQ(opening->target, path);
  }
}

TEST(OpeningRulesTest, OtherFilesAreNothing) {
  for (const Text& path : {Text(u"\\a.mp3"), Text(u"\\a.m3u.txt"), Text(u"\\m3u"), Text(u"\\a.m3u\\b"),
                           Text(u"\\liste.m3u9"), Text(u"\\.m3u"), Text(u"")}) {
    EXPECT_FALSE(WhatToOpen({{path}, {}, u"http://a/"})) << std::string(path.begin(), path.end());
  }
}

TEST(OpeningRulesTest, OneWebAddressIsALink) {
  for (const DropOffer& offer :
       {DropOffer{{}, {u"https://a/live"}, {}}, DropOffer{{}, {}, u" https://a/live\r\n"},
        DropOffer{{}, {u"https://a/live"}, u"Ein Sender"}}) {
    const auto opening = WhatToOpen(offer);
    ASSERT_TRUE(opening);
    EXPECT_EQ(opening->kind, Kind::kLink);
    EXPECT_EQ(opening->target, u"https://a/live");
  }
}

TEST(OpeningRulesTest, OtherAddressesAndTextsAreNothing) {
  for (const Text& text :
       {Text(u""), Text(u"Ein Sender"), Text(u"ftp://a/"), Text(u"mailto:a@b"), Text(u"http://"),
        Text(u"siehe http://a/"), Text(u"http://a/ http://b/"), Text(u"http://a/\nhttp://b/")}) {
    EXPECT_FALSE(WhatToOpen({{}, {}, text})) << std::string(text.begin(), text.end());
    EXPECT_FALSE(WhatToOpen({{}, {text}, {}})) << std::string(text.begin(), text.end());
  }
  EXPECT_FALSE(WhatToOpen({{}, {}, u"http://a/" + Text(kLongestAddress, u'x')}));
}

TEST(OpeningRulesTest, SeveralAtOnceAreNothing) {
  EXPECT_FALSE(WhatToOpen({{u"a.m3u", u"b.m3u"}, {}, {}}));
  EXPECT_FALSE(WhatToOpen({{}, {u"http://a/", u"http://b/"}, {}}));
  EXPECT_FALSE(WhatToOpen({{u"a.m3u"}, {u"http://b/"}, {}}));
}

TEST(OpeningRulesTest, OfferIsNamedInFewWords) {
  EXPECT_EQ(NameOfOffer({{u"\\musik\\bild.png"}, {u"http://a/"}, u"x"}), u"bild.png");
  EXPECT_EQ(NameOfOffer({{}, {u"ftp://a/"}, u"x"}), u"ftp://a/");
  EXPECT_EQ(NameOfOffer({{}, {}, u"x"}), u"x");
  EXPECT_EQ(NameOfOffer({{}, {u"ftp://" + Text(1000, u'x')}, {}}), u"ftp://" + Text(74, u'x') + u"…");
  EXPECT_EQ(NameOfOffer({{Text(256, u'x')}, {}, {}}), Text(255, u'x') + u"…");
}

TEST(OpeningRulesTest, NameOfAnOfferIsOneLineOfWholeCharacters) {
  EXPECT_EQ(NameOfOffer({{u"\\a\r\n\x1B[2J\x9Bm.png"}, {}, {}}), u"a   [2J m.png");
  EXPECT_EQ(NameOfOffer({{}, {}, Text(79, u'x') + u"\U0001F600y"}), Text(79, u'x') + u"…");
  EXPECT_EQ(NameOfOffer({{}, {}, Text(80, u'x') + u"\U0001F600"}), Text(80, u'x') + u"…");
}

}  // namespace
}  // namespace playlist
