#pragma once
// Port: questions that the system's own windows ask the user: message boxes and file dialogs.
// Not for the program's own windows.

#include <cstdint>

#include "ports/text.h"

namespace platform {

/// Style bits of a message box and its answers, with the values of the platform's own operation.
enum MessageBoxStyle : std::uint32_t {
  kMbOk = 0,
  kMbOkCancel = 1,
  kMbYesNoCancel = 3,
  kMbYesNo = 4,
  kMbIconCritical = 16,
  kMbIconQuestion = 32,
  kMbIconExclamation = 48,
  kMbIconInformation = 64,
};

enum class MessageBoxAnswer : std::int32_t { kOk = 1, kCancel = 2, kYes = 6, kNo = 7 };

inline constexpr std::uint32_t kOfnReadOnly = 1;          ///< OFN_READONLY
inline constexpr std::uint32_t kOfnFileMustExist = 4096;  ///< OFN_FILEMUSTEXIST
inline constexpr std::uint32_t kOfnOverwritePrompt = 2;   ///< OFN_OVERWRITEPROMPT

/// The record of a file dialog (OPENFILENAMEW).
struct OpenFileName {
  std::uint32_t struct_size = 0;  ///< lStructSize
  std::uint32_t owner = 0;        ///< 0 none, 1 the main window
  Text filter;                    ///< pairs of description and pattern, each ended by NUL, two at the end
  Text file;                      ///< in: the default name, then NULs up to the capacity; out: the path, NUL
  Text initial_folder;
  Text title;
  Text default_extension;  ///< added when the user typed no extension
  std::uint32_t flags = 0;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;

  /// Shows a box and waits for the answer; timers keep running. An empty caption gives the program's name.
  virtual MessageBoxAnswer MessageBoxW(const Text& text, const Text& caption, std::uint32_t style) = 0;

  /// True when the user chose a file; `dialog.file` then begins with its full path and a NUL. A path that
  /// does not fit is a failure.
  virtual bool GetOpenFileNameW(OpenFileName& dialog) = 0;
  virtual bool GetSaveFileNameW(OpenFileName& dialog) = 0;
};

}  // namespace platform
