#pragma once
// Asking the user for a file's path, to open or to save. Not for reading or writing the file.

#include <cstdint>

#include "app/text/text.h"
#include "ports/dialogs.h"

namespace playlist {

using app::Text;
using app::TextView;

inline constexpr std::uint32_t kMainWindow = 1;

/// What a file dialog is to show.
struct FileDialogParams {
  std::uint32_t owner = kMainWindow;  ///< 0 none, kMainWindow
  Text title;                         ///< empty for the system's own
  Text filter;                        ///< pairs of description and pattern, everything separated by "|"
  std::uint32_t flags = 0;            ///< platform::kOfn... bits
  Text default_extension;             ///< without a dot, added to a name that has none
  Text initial_folder;                ///< empty for the system's choice
  Text default_file_name;
};

/// The full path that the user chose; empty when the user cancelled or the path was too long for the
/// dialog's buffer.
[[nodiscard]] Text ShowOpenFileDialog(platform::Dialogs& dialogs, const FileDialogParams& params);
[[nodiscard]] Text ShowSaveFileDialog(platform::Dialogs& dialogs, const FileDialogParams& params);

}  // namespace playlist
