#pragma once
// Port: converts paths between the program's text and the system's own file names, without loss.
// Not for taking paths apart; that is app/text/text_utilities.h.

#include <string>
#include <vector>

#include "ports/text.h"

namespace platform {

class NativePaths {
 public:
  virtual ~NativePaths() = default;

  /// A system file name as text. What the text form could not distinguish from its own "\" separator, or
  /// could not decode, is kept in code units that ToNative turns back.
  virtual Text FromNative(const std::string& native) = 0;

  /// The system's file name for a path: "\" becomes the system's separator.
  virtual std::string ToNative(const Text& path) = 0;

  /// Like ToNative, for what is looked for, listed or read but never written: where the letter case of the
  /// program's own data does not matter, it gives the name that exists.
  virtual std::string ToNativeForReading(const Text& path) = 0;

  /// The system's folders whose entries together are those of a folder that is listed; at least one. Where
  /// they are several, an entry counts only when ToNativeForReading finds it by its name: of entries that
  /// differ at most by what does not count, one folder's wins.
  virtual std::vector<std::string> ToNativeForListing(const Text& folder) {
    return {ToNativeForReading(folder)};
  }
};

}  // namespace platform
