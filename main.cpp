// The Linux program's entry.

#include "program.h"

int main(int argc, char** argv) { return Program(argc, argv).Run(); }
