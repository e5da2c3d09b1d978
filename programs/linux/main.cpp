// The Linux program's entry.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>

#include "platform/posix/start_argument.h"
#include "programs/linux/entrance.h"
#include "programs/linux/program.h"
#include "window/command_line.h"

namespace {

constexpr int kWrongUse = 2;

int Print(const std::string& text) {
  const bool is_written = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
  return is_written ? EXIT_SUCCESS : EXIT_FAILURE;
}

int TellWrongUse(const std::string& problem) {
  std::fprintf(stderr, "%s\n\n%s", problem.c_str(), std::string(window::Usage()).c_str());
  return kWrongUse;
}

int Run(int argc, char** argv, const std::string& argument) {
  const Entrance entrance(argument);
  if (const auto exit_code = entrance.ExitCode()) return *exit_code;
  return Program(argc, argv).Run(entrance.Requests(), argument);
}

}  // namespace

int main(int argc, char** argv) {
  using Wish = window::CommandLine::Wish;
  const auto words =
      std::span<const char* const>(argv, static_cast<std::size_t>(argc)).subspan(argc > 0 ? 1 : 0);
  const window::CommandLine line = window::ReadCommandLine(words);
  switch (line.wish) {
    case Wish::kHelp:
      return Print(std::string(window::Usage()));
    case Wish::kVersion:
      return Print("Funkhausplayer " FUNKHAUS_VERSION "\n");
    case Wish::kWrongUse:
      return TellWrongUse(line.problem);
    case Wish::kRun:
      break;
  }
  return Run(argc, argv, platform::posix::StartArgument(line.argument, platform::posix::WorkingFolder()));
}
