#include "recorder/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace recorder {
namespace {

using Wish = CommandLine::Wish;

CommandLine Read(const std::vector<const char*>& words) { return ReadCommandLine(words); }

TEST(CommandLine, OneWordIsTheLink) {
  const CommandLine line = Read({"http://radio.example/live"});
  EXPECT_EQ(line.wish, Wish::kRecord);
  EXPECT_EQ(line.link, "http://radio.example/live");
}

TEST(CommandLine, SeveralWordsAreOneLinkWithBlanks) {
  EXPECT_EQ(Read({"/home/u/Meine", "Sender.m3u"}).link, "/home/u/Meine Sender.m3u");
}

TEST(CommandLine, WithoutAWordTheLinkIsStillToBeNamed) {
  for (const auto& words : {std::vector<const char*>{}, {""}, {" ", "  "}}) {
    EXPECT_EQ(Read(words).wish, Wish::kRecord);
    EXPECT_EQ(Read(words).link, "");
  }
}

TEST(CommandLine, BlanksAndControlsRoundTheLinkAreDropped) {
  EXPECT_EQ(Read({"", " http://h/ "}).link, "http://h/");
  EXPECT_EQ(Read({"\t", "\x7Fhttp://h/a\tb", "\r\n\x01"}).link, "http://h/a\tb");
  EXPECT_EQ(Read({"\xC3\xBC.m3u\r"}).link, "\xC3\xBC.m3u") << "bytes of letters are no controls";
  EXPECT_EQ(Read({"\r\n"}).link, "");
  EXPECT_EQ(Read({"--help\r"}).wish, Wish::kHelp);
}

TEST(CommandLine, HelpIsAWishOfItsOwn) {
  EXPECT_EQ(Read({"--help"}).wish, Wish::kHelp);
  EXPECT_EQ(Read({"-h"}).wish, Wish::kHelp);
}

TEST(CommandLine, TheTerminalMayBeChosenBeforeAndBehindTheLink) {
  EXPECT_EQ(Read({"http://h/"}).form, CommandLine::Form::kWindowIfPossible);
  for (const auto& words :
       {std::vector<const char*>{"--terminal", "http://h/"}, {"http://h/", "--terminal"}}) {
    const CommandLine line = Read(words);
    EXPECT_EQ(line.wish, Wish::kRecord);
    EXPECT_EQ(line.form, CommandLine::Form::kTerminal);
    EXPECT_EQ(line.link, "http://h/");
  }
  EXPECT_EQ(Read({"--terminal"}).form, CommandLine::Form::kTerminal);
  EXPECT_EQ(Read({"--terminal"}).wish, Wish::kRecord);
  EXPECT_EQ(Read({"--terminal"}).link, "");
  EXPECT_EQ(Read({"--terminal", "--help"}).wish, Wish::kHelp);
  EXPECT_EQ(Read({"--terminal", "--nonsense"}).wish, Wish::kWrongUse);
}

TEST(CommandLine, OtherOptionsAreWrongUse) {
  EXPECT_EQ(Read({"--version"}).wish, Wish::kWrongUse);
  EXPECT_EQ(Read({"-x", "http://h/"}).wish, Wish::kWrongUse);
  EXPECT_EQ(Read({"http://h/-x"}).wish, Wish::kRecord);
}

TEST(CommandLine, TheUsageNamesTheProgramAndItsArgument) {
  EXPECT_THAT(std::string(Usage()), testing::StartsWith("Aufruf: OZRecordFunkhaus [--terminal] [ADRESSE]\n"));
}

TEST(CommandLine, ATailIsOneLinkWithItsBlanksAndMarks) {
  EXPECT_EQ(ReadCommandTail("http://h/a  b\"c\\\" d").link, "http://h/a  b\"c\\\" d");
  EXPECT_EQ(ReadCommandTail("http://h/a\r\n").link, "http://h/a");
  EXPECT_EQ(ReadCommandTail("").wish, Wish::kRecord);
  EXPECT_EQ(ReadCommandTail("").link, "");
  EXPECT_EQ(ReadCommandTail("C:\\Meine Musik\\liste.m3u").link, "C:\\Meine Musik\\liste.m3u");
}

TEST(CommandLine, AMarkRoundTheWholeTailIsTakenOff) {
  EXPECT_EQ(ReadCommandTail("\"http://h/a b\"").link, "http://h/a b");
  EXPECT_EQ(ReadCommandTail("\"http://h/a\" \"b\"").link, "\"http://h/a\" \"b\"");
  EXPECT_EQ(ReadCommandTail("\"").link, "\"");
  EXPECT_EQ(ReadCommandTail("\"\"").link, "");
}

TEST(CommandLine, ATailCanBeAnOption) {
  EXPECT_EQ(ReadCommandTail(" --help ").wish, Wish::kHelp);
  EXPECT_EQ(ReadCommandTail("--nonsense").wish, Wish::kWrongUse);
  EXPECT_EQ(ReadCommandTail("--terminal").form, CommandLine::Form::kTerminal);
}

}  // namespace
}  // namespace recorder
