#include "window/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace window {
namespace {

using Wish = CommandLine::Wish;

CommandLine Read(const std::vector<const char*>& words) { return ReadCommandLine(words); }

TEST(CommandLineTest, WithoutWordsTheProgramRunsAndOpensNothing) {
  EXPECT_EQ(Read({}).wish, Wish::kRun);
  EXPECT_EQ(Read({}).argument, "");
  EXPECT_EQ(Read({""}).wish, Wish::kRun);
}

TEST(CommandLineTest, OneWordIsWhatIsOpened) {
  for (const char* word : {"liste.m3u", "/a b/c", "http://a/", "-", "file:///a"}) {
    EXPECT_EQ(Read({word}).wish, Wish::kRun);
    EXPECT_EQ(Read({word}).argument, word);
  }
}

TEST(CommandLineTest, HelpAndVersionCountBesideAnArgument) {
  EXPECT_EQ(Read({"--help"}).wish, Wish::kHelp);
  EXPECT_EQ(Read({"-h"}).wish, Wish::kHelp);
  EXPECT_EQ(Read({"a.m3u", "--help", "--unbekannt"}).wish, Wish::kHelp);
  EXPECT_EQ(Read({"--version"}).wish, Wish::kVersion);
}

TEST(CommandLineTest, UnknownOptionIsNamed) {
  const CommandLine line = Read({"a.m3u", "--laut"});
  EXPECT_EQ(line.wish, Wish::kWrongUse);
  EXPECT_EQ(line.problem, "Die Option --laut gibt es nicht.");
  EXPECT_EQ(Read({"-v"}).wish, Wish::kWrongUse);
  EXPECT_EQ(Read({"--help=ja"}).wish, Wish::kWrongUse);
}

TEST(CommandLineTest, NothingOfAWordControlsTheTerminal) {
  const std::string problem = Read({"-\x1B]0;x\a\x9B\xC2\x9B\nrm"}).problem;
  EXPECT_EQ(problem, "Die Option -?]0;x?????rm gibt es nicht.");
  EXPECT_EQ(Read({("-" + std::string(1000, 'x')).c_str()}).problem,
            "Die Option -" + std::string(79, 'x') + " gibt es nicht.");
}

TEST(CommandLineTest, BehindTwoDashesNothingIsAnOption) {
  EXPECT_EQ(Read({"--", "--help"}).wish, Wish::kRun);
  EXPECT_EQ(Read({"--", "--help"}).argument, "--help");
  EXPECT_EQ(Read({"--", "--"}).argument, "--");
  EXPECT_EQ(Read({"--", "-session"}).argument, "-session");
  EXPECT_EQ(Read({"--"}).argument, "");
}

TEST(CommandLineTest, SecondWordIsRefused) {
  EXPECT_EQ(Read({"a.m3u", "b.m3u"}).wish, Wish::kWrongUse);
  EXPECT_EQ(Read({"a.m3u", "b.m3u"}).problem, "Es kann nur eine Datei oder Adresse geöffnet werden.");
  EXPECT_EQ(Read({"--", "a", "b"}).wish, Wish::kWrongUse);
}

TEST(CommandLineTest, ArgumentIsOfBoundedLength) {
  const std::string longest(kLongestArgument, 'x');
  EXPECT_EQ(Read({longest.c_str()}).argument, longest);
  EXPECT_EQ(Read({(longest + "x").c_str()}).wish, Wish::kWrongUse);
}

TEST(CommandLineTest, SessionManagersWordsArePassedOver) {
  EXPECT_EQ(Read({"-session", "1028_17"}).wish, Wish::kRun);
  EXPECT_EQ(Read({"-session", "1028_17"}).argument, "");
  EXPECT_EQ(Read({"-session", "1028_17", "a.m3u"}).argument, "a.m3u");
  EXPECT_EQ(Read({"-session"}).wish, Wish::kRun);
}

TEST(CommandLineTest, HelpNamesEveryOption) {
  for (const char* option : {"DATEI", "ADRESSE", "--help", "-h", "--version", "M3U", "PLS"}) {
    EXPECT_NE(Usage().find(option), std::string_view::npos) << option;
  }
}

}  // namespace
}  // namespace window
