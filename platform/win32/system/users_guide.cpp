#include "platform/win32/system/users_guide.h"

#include "platform/win32/base/windows_api.h"

#include "platform/win32/base/wide.h"

namespace platform::win32 {

Text UsersGuide(const Text& program_folder) {
  // Otherwise it would be looked for in the root of the current drive.
  if (program_folder.empty()) return {};
  const Text guide = program_folder + (program_folder.ends_with(u'\\') ? u"" : u"\\") + u"Handbuch.html";
  const DWORD attributes = ::GetFileAttributesW(Wide(guide));
  const bool is_file = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
  return is_file ? guide : Text();
}

}  // namespace platform::win32
