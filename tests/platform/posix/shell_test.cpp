#include "platform/posix/shell.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "platform/posix/file_descriptor.h"
#include "platform/posix/native_paths.h"
#include "tests/support/temp_folder.h"

namespace platform::posix {
namespace {

/// Programs under test are little scripts that send a report through a pipe of the scratch folder.
class ShellTest : public testing::Test {
 protected:
  ShellTest() {
    EXPECT_EQ(::mkfifo((folder.Path() / "report").c_str(), 0600), 0);
    // Reading and writing, so that the pipe does not end between two reports.
    report = FileDescriptor(::open((folder.Path() / "report").c_str(), O_RDWR | O_CLOEXEC));
    ::setenv("PATH", (folder.Path() / "bin").c_str(), 1);
  }

  void GivenProgram(const std::string& name, const std::string& body = R"(out="$0|$#"
for argument in "$@"; do out="$out|$argument"; done)") {
    const auto path =
        folder.Write(name, "#!/bin/sh\nPATH=/usr/bin:/bin\n" + body + "\nprintf '%s\\n' \"$out.\" > '" +
                               (folder.Path() / "report").string() + "'\n");
    ASSERT_EQ(::chmod(path.c_str(), 0755), 0);
  }

  /// What a script reports: everything up to ".\n"; empty when nothing comes within ten seconds.
  std::string Report() {
    std::string text;
    pollfd wait{report.Get(), POLLIN, 0};
    while (!text.ends_with(".\n")) {
      if (::poll(&wait, 1, 10000) != 1) return "";
      char buffer[4096];
      const ssize_t count = ::read(report.Get(), buffer, sizeof buffer);
      if (count <= 0) return "";
      text.append(buffer, static_cast<std::size_t>(count));
    }
    return text.substr(0, text.size() - 2);
  }
  /// The report of `program` that ran with these arguments.
  std::string Ran(const std::string& program, const std::string& arguments) const {
    return (folder.Path() / program).string() + "|" + arguments;
  }

  bool Execute(const Text& file, const Text& parameters = u"", const Text& verb = u"open",
               const Text& where = u"") {
    return shell.ShellExecuteW(0, verb, file, parameters, where, kSwShowNormal);
  }

  test_support::TempFolder folder;
  FileDescriptor report;
  PosixNativePaths paths;
  PosixShell shell{paths};
};

TEST_F(ShellTest, AddressesAreOpenedByTheDesktop) {
  GivenProgram("bin/xdg-open");
  for (const Text address : {u"https://example.org/?a=1&b=\\x y", u"HTTP://h", u"x-a+b.1://y"}) {
    EXPECT_TRUE(Execute(address));
    EXPECT_EQ(Report(), Ran("bin/xdg-open", "1|" + std::string(address.begin(), address.end())));
  }
}

TEST_F(ShellTest, AnAddressIsAFailureWhenTheDesktopCannotOpenIt) {
  EXPECT_FALSE(Execute(u"https://example.org/"));
}

TEST_F(ShellTest, TheVolumeMixerIsTheFirstMixerThatIsFound) {
  EXPECT_FALSE(Execute(u"sndvol.exe"));
  GivenProgram("bin/gnome-control-center");
  EXPECT_TRUE(Execute(u"sndvol.exe"));
  EXPECT_EQ(Report(), Ran("bin/gnome-control-center", "1|sound"));
  GivenProgram("bin/kcmshell5");
  EXPECT_TRUE(Execute(u"sndvol.exe"));
  EXPECT_EQ(Report(), Ran("bin/kcmshell5", "1|kcm_pulseaudio"));
  GivenProgram("bin/pavucontrol-qt");
  EXPECT_TRUE(Execute(u"SndVol.exe"));
  EXPECT_EQ(Report(), Ran("bin/pavucontrol-qt", "0"));
  GivenProgram("bin/pavucontrol");
  EXPECT_TRUE(Execute(u"sndvol.exe"));
  EXPECT_EQ(Report(), Ran("bin/pavucontrol", "0"));
}

TEST_F(ShellTest, AProgramFileReceivesItsParametersAsOneArgument) {
  GivenProgram("tool");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool", u"http://h/a b \"c\" \\d ü", u""));
  EXPECT_EQ(Report(), Ran("tool", "1|http://h/a b \"c\" \\d \xC3\xBC"));
}

TEST_F(ShellTest, EmptyParametersAreNoArgument) {
  GivenProgram("tool");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool"));
  EXPECT_EQ(Report(), Ran("tool", "0"));
}

TEST_F(ShellTest, WithoutTheExeTheNameWithoutThatEndingIsTried) {
  GivenProgram("OZRecordFunkhaus");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\OZRecordFunkhaus.exe", u"x"));
  EXPECT_EQ(Report(), Ran("OZRecordFunkhaus", "1|x"));
  GivenProgram("OZRecordFunkhaus.exe");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\OZRecordFunkhaus.exe", u"x"));
  EXPECT_EQ(Report(), Ran("OZRecordFunkhaus.exe", "1|x"));
}

TEST_F(ShellTest, ABareNameIsLookedForInPath) {
  GivenProgram("bin/tool");
  EXPECT_TRUE(Execute(u"tool.exe", u"x"));
  EXPECT_EQ(Report(), Ran("bin/tool", "1|x"));
}

TEST_F(ShellTest, WhatCannotBeExecutedIsAFailure) {
  folder.Write("text", "no program");
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\missing.exe"));
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\text"));
  ASSERT_EQ(::chmod((folder.Path() / "text").c_str(), 0755), 0);
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\text"));
  EXPECT_FALSE(Execute(folder.TextPath()));
  EXPECT_FALSE(Execute(u""));
  EXPECT_FALSE(Execute(Text(u"a\0b", 3)));
}

TEST_F(ShellTest, OnlyTheVerbOpenAndTheDefaultActionAreKnown) {
  GivenProgram("tool");
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\tool", u"", u"print"));
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool", u"", u""));
  EXPECT_EQ(Report(), Ran("tool", "0"));
}

TEST_F(ShellTest, TheFolderIsTheProcesssWorkingFolder) {
  GivenProgram("tool", "out=$(pwd)");
  std::filesystem::create_directory(folder.Path() / "work");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool", u"", u"", folder.TextPath() + u"\\work"));
  EXPECT_EQ(Report(), folder.Path() / "work");
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\tool", u"", u"", folder.TextPath() + u"\\missing"));
}

TEST_F(ShellTest, TheProcessHasASessionOfItsOwn) {
  GivenProgram("tool", "out=$(cut -d ' ' -f 6 /proc/$$/stat)");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool"));
  const std::string session = Report();
  EXPECT_NE(session, "");
  EXPECT_NE(session, std::to_string(::getsid(0)));
}

TEST_F(ShellTest, TheProcessHasNoFilesOfTheProgram) {
  GivenProgram("tool", "out=$(ls -l /proc/$$/fd)");
  const FileDescriptor inherited(::open(folder.Write("secret", "").c_str(), O_RDONLY));
  ASSERT_TRUE(inherited.IsOpen());
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool"));
  const std::string files = Report();
  for (const std::string standard : {"0", "1", "2"}) {
    EXPECT_NE(files.find(" " + standard + " -> /dev/null"), std::string::npos) << files;
  }
  EXPECT_EQ(files.find("secret"), std::string::npos) << files;
  EXPECT_EQ(files.find("report"), std::string::npos) << files;
}

TEST_F(ShellTest, TheProcessStartsWithTheUsualSignals) {
  GivenProgram("tool", "out=$(grep -E '^Sig(Blk|Ign)' /proc/$$/status | tr '\\n\\t' '  ')");
  sigset_t blocked;
  sigset_t before;
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGUSR1);
  ::sigprocmask(SIG_BLOCK, &blocked, &before);
  const auto old_handler = ::signal(SIGPIPE, SIG_IGN);
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool"));
  EXPECT_EQ(Report(), "SigBlk: 0000000000000000 SigIgn: 0000000000000000 ");
  ::signal(SIGPIPE, old_handler);
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(ShellTest, NoZombieIsLeft) {
  GivenProgram("tool");
  EXPECT_TRUE(Execute(folder.TextPath() + u"\\tool"));
  EXPECT_FALSE(Execute(folder.TextPath() + u"\\missing"));
  EXPECT_EQ(Report(), Ran("tool", "0"));
  EXPECT_EQ(::waitpid(-1, nullptr, 0), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(ShellTest, RelativeFoldersOfPathAreNotSearched) {
  GivenProgram("bin/tool");
  std::filesystem::current_path(folder.Path());
  ::setenv("PATH", "bin::.", 1);
  EXPECT_FALSE(Execute(u"tool"));
  ::setenv("PATH", (":/missing:" + (folder.Path() / "bin").string()).c_str(), 1);
  EXPECT_TRUE(Execute(u"tool"));
  EXPECT_EQ(Report(), Ran("bin/tool", "0"));
  std::filesystem::current_path("/");
}

}  // namespace
}  // namespace platform::posix
