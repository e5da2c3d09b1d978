// The status line without a window: sentences, their arguments and their language.
#include "ui/status_line.h"

#include <gtest/gtest.h>

#include "app/status_sentences.h"
#include "tests/support/language_rig.h"

namespace ui {
namespace {

TEST(StatusLineTest, ASentenceIsShownInTheUsersLanguage) {
  const test_support::MarkingLanguage marking;
  controls::Label label;
  StatusLine(label, marking.language).Notify(app::sentences::kStopped);
  EXPECT_EQ(label.Caption(), u"<" + platform::Text(app::sentences::kStopped) + u">");
}

TEST(StatusLineTest, ArgumentsReplaceTheirNumbersAndAreNotLookedUp) {
  const test_support::MarkingLanguage marking;
  controls::Label label;
  StatusLine(label, marking.language).Notify(u"%2 von %1: 100 %, %3", {u"%2", u"drei"});
  EXPECT_EQ(label.Caption(), u"<drei von %2: 100 %, %3>");
}

TEST(StatusLineTest, EverySentenceIsInTheEnglishLanguageFile) {
  test_support::ProgramLanguage english(u"English");
  for (const platform::TextView sentence : app::sentences::kAll) {
    EXPECT_TRUE(english.Knows(platform::Text(sentence))) << english.Utf8(platform::Text(sentence));
  }
}

}  // namespace
}  // namespace ui
