#pragma once
// Where the build put the programs and the language files. Not for scratch files.

#include "ports/text.h"

namespace test_support {

platform::Text ProgramFolder();

}  // namespace test_support
