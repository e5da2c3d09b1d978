// The whole program, each case in a process of its own: cases make copies of their process, which must not
// have the threads that an earlier case left in it, and some use what a process has once.
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/child_process.h"

namespace {

constexpr char kThisProgram[] = "/proc/self/exe";

/// A case has been named, as CTest does.
bool NamesOneCase(const std::string& filter) { return filter.find_first_of("*?:-") == std::string::npos; }

std::vector<std::string> SelectedCases(const std::string& filter) {
  std::istringstream list(
      test_support::RunProgram({kThisProgram, "--gtest_list_tests", "--gtest_filter=" + filter}).output);
  std::vector<std::string> cases;
  std::string suite;
  for (std::string line; std::getline(list, line);) {
    const bool is_case = line.starts_with("  ");
    std::istringstream words(line);
    std::string name;
    words >> name;
    if (!is_case) suite = name;
    if (is_case) cases.push_back(suite + name);
  }
  return cases;
}

bool Passes(std::vector<char*> arguments, const std::string& name) {
  std::string only = "--gtest_filter=" + name;
  arguments.push_back(only.data());
  arguments.push_back(nullptr);
  pid_t child = -1;
  if (::posix_spawn(&child, kThisProgram, nullptr, nullptr, arguments.data(), environ) != 0) return false;
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<char*> given(arguments, arguments + count);
  testing::InitGoogleTest(&count, arguments);
  const std::string filter = GTEST_FLAG_GET(filter);
  if (GTEST_FLAG_GET(list_tests) || NamesOneCase(filter)) return RUN_ALL_TESTS();
  int failed = 0;
  const auto cases = SelectedCases(filter);
  for (const std::string& name : cases) {
    if (Passes(given, name)) continue;
    std::printf("FAILED: %s\n", name.c_str());
    ++failed;
  }
  std::printf("%zu cases, %d failed\n", cases.size(), failed);
  return failed == 0 && !cases.empty() ? 0 : 1;
}
