#include "recorder/record_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/recorder/recorder_rig.h"

namespace recorder {
namespace {

class Window : public testing::Test {
 protected:
  Window() { rig_.StationSends("----" + TitleOf("Eins\x1B") + "1111"); }

  RecorderRig rig_;
  app::RecordForm form_;
  test_support::FakeShell shell_;
  RecordControl control_{form_,
                         rig_.recording,
                         rig_.files,
                         shell_,
                         {.folder = u"file:///musik", .guide = u"file:///handbuch.md"}};
};

TEST_F(Window, AsksForAnAddressFirst) {
  EXPECT_FALSE(form_.start.Enabled());
  EXPECT_FALSE(form_.stop.Enabled());
  form_.address.SetText(u" \t\r\n");
  EXPECT_FALSE(form_.start.Enabled());
  form_.address.SetText(kLink);
  EXPECT_TRUE(form_.start.Enabled());
  EXPECT_EQ(form_.state.Caption(), u"Bereit");
}

TEST_F(Window, ShowsStationTitleTimeAndWhatWasWritten) {
  control_.Start(kLink);
  EXPECT_EQ(form_.address.GetText(), kLink);
  EXPECT_EQ(form_.station.Caption(), u"Radio Eins");
  EXPECT_EQ(form_.title.Caption(), u"Eins ");
  EXPECT_EQ(form_.time.Caption(), u"00:00:01");
  EXPECT_EQ(form_.written.Caption(), u"4 Byte, 1 Datei");
  EXPECT_EQ(form_.state.Caption(), u"Aufnahme beendet");
}

TEST_F(Window, ALineEndThatCameAlongWithTheAddressIsNoPartOfIt) {
  form_.address.SetText(u"\t" + kLink + u"\r\n");
  form_.start.Click();
  EXPECT_THAT(rig_.internet.calls, testing::Contains(testing::HasSubstr("InternetOpenUrlW(4, " +
                                                                        test_support::Ascii(kLink) + ", ")));
  EXPECT_THAT(rig_.requests.calls, testing::Contains("Open(GET, " + test_support::Ascii(kLink) + ", True)"));
  EXPECT_EQ(form_.state.Caption(), u"Aufnahme beendet");
}

TEST_F(Window, GuideIsOpenedByTheDesktop) {
  form_.show_guide.Click();
  ASSERT_EQ(shell_.launches.size(), 1U);
  EXPECT_EQ(shell_.launches[0].file, u"file:///handbuch.md");
  EXPECT_EQ(form_.state.Caption(), u"Bereit");
}

TEST_F(Window, GuideThatIsMissingOrCannotBeOpenedIsReported) {
  shell_.starts = false;
  form_.show_guide.Click();
  EXPECT_EQ(form_.state.Caption(), u"Das Handbuch ließ sich nicht öffnen: file:///handbuch.md");
  form_.address.SetText(kLink);
  EXPECT_EQ(form_.state.Caption(), u"Bereit") << "until the state is shown again";
  shell_.launches.clear();
  app::RecordForm form;
  const RecordControl without(form, rig_.recording, rig_.files, shell_, {.folder = u"", .guide = u""});
  form.show_guide.Click();
  EXPECT_EQ(form.state.Caption(), u"Das Handbuch ist nicht installiert.");
  EXPECT_TRUE(shell_.launches.empty());
}

TEST_F(Window, StopEndsAWait) {
  EXPECT_TRUE(form_.stop.EndsWaiting());
  EXPECT_FALSE(form_.start.EndsWaiting());
}

TEST_F(Window, StopEndsTheRecordingAndAllowsAnother) {
  bool was_enabled = false;
  rig_.loop.on_pump = [&] {
    was_enabled = form_.stop.Enabled() && !form_.start.Enabled() && !form_.address.Enabled();
    form_.stop.Click();
  };
  form_.address.SetText(kLink);
  form_.start.Click();
  EXPECT_TRUE(was_enabled);
  EXPECT_FALSE(rig_.recording.Running());
  EXPECT_TRUE(form_.start.Enabled());
  EXPECT_TRUE(form_.address.Enabled());
  EXPECT_FALSE(form_.stop.Enabled());
}

TEST_F(Window, ClosingEndsTheRecordingCleanly) {
  rig_.loop.on_pump = [&] { form_.form.Close(); };
  control_.Start(kLink);
  EXPECT_TRUE(form_.form.IsClosed());
  EXPECT_EQ(rig_.File(u"Eins_.mp3"), "1111");
  EXPECT_EQ(rig_.record_files.OpenFiles(), 0U);
  EXPECT_EQ(rig_.internet.OpenHandles(), 0U);
  const auto calls = rig_.internet.calls.size();
  form_.start.Click();
  EXPECT_EQ(rig_.internet.calls.size(), calls) << "nothing begins in a closed window";
}

TEST_F(Window, OpensTheFolderAndMakesItBefore) {
  form_.open_folder.Click();
  ASSERT_EQ(shell_.launches.size(), 1U);
  EXPECT_EQ(shell_.launches[0].verb, u"open");
  EXPECT_EQ(shell_.launches[0].file, u"file:///musik");
  EXPECT_TRUE(rig_.files.PathFileExistsW(u"C:\\Musik\\Aufnahmen"));
}

}  // namespace
}  // namespace recorder
