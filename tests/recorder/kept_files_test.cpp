#include "recorder/kept_files.h"

#include <gtest/gtest.h>

#include "tests/recorder/recorder_rig.h"

namespace recorder {
namespace {

using platform::RecordFile;

class KeptFilesOverMemory : public testing::Test {
 protected:
  bool Write(RecordFile file, const std::string& bytes) {
    return kept_.WriteBytes(file, std::as_bytes(std::span(bytes.data(), bytes.size())));
  }
  RecordFile Open(const Text& name) { return kept_.OpenBinary(u"C:\\Musik", name); }

  test_support::MemoryRecordFiles below_;
  FilesOfRecording files_{below_};
  KeptFiles kept_{below_, files_};
};

TEST_F(KeptFilesOverMemory, MakesAFileWithItsFirstByte) {
  const RecordFile file = Open(u"Eins.mp3");
  EXPECT_TRUE(kept_.Flush(file));
  kept_.Close(file);
  EXPECT_TRUE(below_.files.empty());
  EXPECT_TRUE(Write(Open(u"Zwei.mp3"), "2"));
  EXPECT_EQ(below_.files.size(), 1U);
  EXPECT_EQ(kept_.Files(), 1U);
}

TEST_F(KeptFilesOverMemory, ReopeningTheSameNameContinuesUntilTheConnectionEnds) {
  Write(Open(u"Eins.mp3"), "1");
  kept_.Close(Open(u"Eins.mp3"));
  Write(Open(u"Eins.mp3"), "2");
  kept_.EndConnection();
  Write(Open(u"Eins.mp3"), "3");
  EXPECT_EQ(below_.files[u"Eins.mp3"], "12");
  EXPECT_EQ(below_.files[u"Eins (2).mp3"], "3");
  EXPECT_EQ(kept_.Bytes(), 3U);
}

TEST_F(KeptFilesOverMemory, AFileOfAnEarlierConnectionTakesNoMoreBytes) {
  const RecordFile file = Open(u"Eins.mp3");
  Write(file, "1");
  kept_.EndConnection();
  EXPECT_FALSE(Write(file, "late"));
  EXPECT_EQ(below_.files[u"Eins.mp3"], "1");
  EXPECT_EQ(below_.files.size(), 1U);
}

TEST_F(KeptFilesOverMemory, ItsEndClosesTheFileBelow) {
  {
    KeptFiles shortly(below_, files_);
    const RecordFile file = shortly.OpenBinary(u"C:\\Musik", u"Eins.mp3");
    EXPECT_TRUE(shortly.WriteBytes(file, std::as_bytes(std::span("1", 1))));
    EXPECT_EQ(below_.OpenFiles(), 1U);
  }
  EXPECT_EQ(below_.OpenFiles(), 0U);
}

TEST_F(KeptFilesOverMemory, ClosesTheFileBelowWhenAnotherBegins) {
  const RecordFile first = Open(u"Eins.mp3");
  Write(first, "1");
  Write(Open(u"Zwei.mp3"), "2");
  EXPECT_EQ(below_.OpenFiles(), 1U);
  EXPECT_FALSE(Write(first, "late"));
  EXPECT_FALSE(kept_.Flush(first));
  kept_.EndConnection();
  EXPECT_EQ(below_.OpenFiles(), 0U);
}

TEST_F(KeptFilesOverMemory, BeginsAnotherFileWhenTheUserTookItAway) {
  const RecordFile file = Open(u"Eins.mp3");
  Write(file, "1");
  below_.files.clear();
  below_.flush_fails = true;
  EXPECT_TRUE(kept_.Flush(file));
  EXPECT_EQ(below_.OpenFiles(), 0U) << "the file that was taken away is not kept open";
  EXPECT_TRUE(Write(file, "2"));
  EXPECT_EQ(below_.files[u"Eins.mp3"], "2");
  EXPECT_EQ(kept_.GetFailure(), KeptFiles::Failure::kNone);
}

TEST_F(KeptFilesOverMemory, ANameThatAnotherProgramTakesInThatMomentIsLeftToIt) {
  below_.on_create = [this](const Text& name) {
    if (name == u"Eins.mp3" || name == u"Eins (2).mp3") below_.files[name] = "another's";
  };
  EXPECT_TRUE(Write(Open(u"Eins.mp3"), "1"));
  EXPECT_EQ(below_.files[u"Eins.mp3"], "another's");
  EXPECT_EQ(below_.files[u"Eins (2).mp3"], "another's");
  EXPECT_EQ(below_.files[u"Eins (3).mp3"], "1");
}

TEST_F(KeptFilesOverMemory, ANameThatAnEntryOfAnyKindHasIsTaken) {
  below_.files[u"Eins.mp3"];
  EXPECT_TRUE(Write(Open(u"Eins.mp3"), "1"));
  EXPECT_EQ(below_.files[u"Eins.mp3"], "");
  EXPECT_EQ(below_.files[u"Eins (2).mp3"], "1");
}

TEST_F(KeptFilesOverMemory, NoNameBeginsWithADot) {
  Write(Open(u"...Eins.mp3"), "1");
  Write(Open(u"...Eins.mp3"), "2");
  Write(Open(u".mp3"), "3");
  EXPECT_EQ(below_.files[u"_..Eins.mp3"], "12");
  EXPECT_EQ(below_.files[u"_mp3"], "3");
}

TEST_F(KeptFilesOverMemory, AskedForANewFileItGivesOneToo) {
  const platform::NewRecordFile made = kept_.CreateBinary(u"C:\\Musik", u"Eins.mp3");
  EXPECT_TRUE(Write(made.file, "1"));
  EXPECT_EQ(below_.files[u"Eins.mp3"], "1");
}

TEST_F(KeptFilesOverMemory, ReportsThatAFileCannotBeMade) {
  below_.refused = {u"Eins.mp3"};
  EXPECT_FALSE(Write(Open(u"Eins.mp3"), "1"));
  EXPECT_EQ(kept_.GetFailure(), KeptFiles::Failure::kNotMade);
}

TEST_F(KeptFilesOverMemory, AFullDiskAtAFlushIsAFailure) {
  const RecordFile file = Open(u"Eins.mp3");
  Write(file, "1");
  below_.flush_fails = true;
  EXPECT_FALSE(kept_.Flush(file));
  EXPECT_EQ(kept_.GetFailure(), KeptFiles::Failure::kNotWritten);
}

TEST_F(KeptFilesOverMemory, AFullDiskInTheMiddleOfAFileIsAFailureAndKeepsTheRest) {
  below_.free_bytes = 2;
  EXPECT_FALSE(Write(Open(u"Eins.mp3"), "1234"));
  EXPECT_EQ(kept_.GetFailure(), KeptFiles::Failure::kNotWritten);
  EXPECT_EQ(below_.files[u"Eins.mp3"], "12");
}

TEST_F(KeptFilesOverMemory, LeavesRoomForTheNumber) { EXPECT_EQ(kept_.LongestFileName(u"C:\\Musik"), 247U); }

TEST(NumberedName, PutsTheNumberBeforeTheExtensionOfARecording) {
  EXPECT_EQ(NumberedName(u"Eins.mp3", 2), u"Eins (2).mp3");
  EXPECT_EQ(NumberedName(u"Eins.m4a", 13), u"Eins (13).m4a");
  EXPECT_EQ(NumberedName(u"Dr. Hook", 2), u"Dr. Hook (2)");
}

}  // namespace
}  // namespace recorder
