// The Linux program's entry.

#include "programs/linux/entrance.h"
#include "programs/linux/program.h"

int main(int argc, char** argv) {
  const Entrance entrance;
  if (const auto exit_code = entrance.ExitCode()) return *exit_code;
  return Program(argc, argv).Run(entrance.Requests());
}
