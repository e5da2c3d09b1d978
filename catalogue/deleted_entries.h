#pragma once
// The entries that were deleted since the program started, and the restoring of the last of them.
// Not the deleting (catalogue/station_writer.h).

#include <cstddef>
#include <optional>
#include <vector>

#include "app/settings/settings.h"
#include "app/state/list_pair.h"
#include "app/state/notices.h"
#include "catalogue/station_file.h"
#include "catalogue/station_store.h"
#include "catalogue/unsaved_rows.h"
#include "controls/captioned.h"
#include "controls/list_view.h"
#include "ports/private_profile.h"

namespace catalogue {

/// What is needed to restore an entry: its rows in the lists and its sections in the file.
struct DeletedEntry {
  struct Row {
    controls::ListRow row;
    std::size_t place = 0;
    std::optional<PartInFile> part;  ///< of an unsaved row of the full list
  };
  struct Section {
    platform::Text name;
    std::optional<platform::ProfileSection> before;
    std::optional<platform::ProfileSection> after;  ///< an equal section further down
    bool is_its_own = true;                         ///< false: another row's, deleted with this one
  };

  std::vector<Row> full;    ///< in the full list
  std::optional<Row> view;  ///< in the filter view in which it was deleted
  platform::Text filter;    ///< of that view
  std::vector<Section> sections;
  bool changed = false;  ///< whether the catalogue counted as changed
};

class DeletedEntries {
 public:
  /// `UndoDelete` is enabled while there is an entry to restore.
  DeletedEntries(controls::CommandButton& UndoDelete, app::ListPair lists, const StationFile& file,
                 app::Settings& settings, const StationStore& store, UnsavedRows& unsaved,
                 app::Notices& notices);

  /// The entry of a row that is about to be deleted, whose sections in the file are `names`.
  [[nodiscard]] DeletedEntry EntryOf(const controls::ListView& list, controls::RowId row,
                                     const std::vector<platform::Text>& names) const;
  /// The entry is deleted now.
  void Add(DeletedEntry entry);

  /// Restores the last deleted entry: its section with every line, its row in its place. When another station
  /// has its name now, or the file cannot be written, a notice reports it and the entry is kept here.
  void BringBack();

 private:
  [[nodiscard]] std::vector<DeletedEntry::Row> RowsThatStandFor(const platform::Text& name) const;
  void Drop();
  [[nodiscard]] bool HasAPlace(const DeletedEntry& entry) const;
  [[nodiscard]] bool IsOfThisView(const DeletedEntry& entry) const;
  [[nodiscard]] bool RestoreSections(const DeletedEntry& entry);
  controls::RowId RestoreInFullList(const DeletedEntry& entry);
  controls::RowId RestoreInView(const DeletedEntry& entry);
  [[nodiscard]] controls::ListRow FromFile(const DeletedEntry& entry) const;

  controls::CommandButton& UndoDelete_;
  app::ListPair lists_;
  const StationFile& file_;
  app::Settings& settings_;
  const StationStore& store_;
  UnsavedRows& unsaved_;
  app::Notices& notices_;
  std::vector<DeletedEntry> entries_;
  controls::Subscriptions subscriptions_;
};

}  // namespace catalogue
