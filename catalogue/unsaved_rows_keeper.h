#pragma once
// Lets the unsaved rows survive a program that ends without asking: keeps them in the program's own file and
// puts them back at the next start. Not the station file, which is written only when the user saves, nor the
// file's text.

#include <cstddef>
#include <optional>
#include <string>

#include "app/settings/settings.h"
#include "catalogue/station_file.h"
#include "catalogue/station_icons.h"
#include "catalogue/unsaved_rows.h"
#include "catalogue/unsaved_rows_file.h"
#include "controls/list_view.h"
#include "controls/timer.h"
#include "ports/environment.h"
#include "ports/files.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// Order: Restore before the list is loaded for the first time, then either Finish or Discard. In between,
/// the file reflects what is unsaved, at most kDelay after a change and at once after a write to the station
/// file; without unsaved rows there is no file. Nothing is written before or after.
class UnsavedRowsKeeper {
 public:
  static constexpr int kDelay = 500;        ///< milliseconds
  static constexpr int kRetryDelay = 2000;  ///< milliseconds, after a write that failed: the disk may be full

  struct Ports {
    platform::Files& files;
    platform::Environment& environment;
    platform::TextConversion& conversion;
  };

  /// `timer` is this object's alone; it runs only while a change waits to be written.
  UnsavedRowsKeeper(Ports ports, const StationFile& file, UnsavedRows& unsaved, controls::ListView& full,
                    const StationIcons& icons, app::Settings& settings, controls::Timer& timer);

  struct Restored {
    std::size_t rows = 0;     ///< that were put back as unsaved ones
    bool unreadable = false;  ///< there was an unreadable file; it is set aside as ".damaged"
  };
  /// Puts back what an earlier run of the program left and the station file does not contain, with the
  /// CatalogueChanged of then.
  Restored Restore();

  /// Something may have changed that neither the rows nor the list announce.
  void Note();

  /// The program ends and nobody was asked, or saving failed: keeps what is unsaved now.
  void Finish();

  /// The program ends and the user has decided about the unsaved rows: nothing is kept.
  void Discard();

 private:
  /// Distinguishes one version of the file's contents from another.
  struct Mark {
    std::size_t size = 0;
    std::size_t hash = 0;
    friend bool operator==(const Mark&, const Mark&) = default;
  };

  static Mark MarkOf(const std::string& bytes);
  [[nodiscard]] bool IsSaved(const UnsavedRow& unsaved) const;
  std::optional<UnsavedCatalogue> Read(bool& unreadable);
  void Watch();
  void WriteAfter(int delay);
  void Write();
  /// False when the file could not be written or removed.
  bool BringFileUpToDate();
  bool RemoveFile();
  void Stop();

  Ports ports_;
  const StationFile& file_;
  UnsavedRows& unsaved_;
  controls::ListView& full_;
  const StationIcons& icons_;
  app::Settings& settings_;
  controls::Timer& timer_;
  platform::Text path_;
  std::optional<Mark> in_file_;  ///< nothing: there is no file
  bool watches_ = false;         ///< between Restore and Finish or Discard
  controls::Subscription subscription_;
  controls::Subscriptions watching_;
};

}  // namespace catalogue
