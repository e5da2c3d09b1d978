#include "tests/support/program_folder.h"

#include <filesystem>

namespace test_support {

platform::Text ProgramFolder() { return std::filesystem::path(PROGRAM_FOLDER).u16string(); }

}  // namespace test_support
