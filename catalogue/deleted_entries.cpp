#include "catalogue/deleted_entries.h"

#include <algorithm>
#include <utility>

#include "app/state/station.h"
#include "app/state/status_sentences.h"
#include "app/text/text_utilities.h"

namespace catalogue {

using controls::ListRow;
using controls::ListView;
using controls::RowId;
using platform::ProfileSection;
using platform::Text;

namespace {

DeletedEntry::Row RowIn(const ListView& list, RowId id) {
  const std::size_t place = list.IndexOf(id).value_or(list.Count());
  return {place < list.Count() ? list.Rows()[place] : ListRow(), place, std::nullopt};
}

bool HaveSameLines(const std::optional<ProfileSection>& one, const std::optional<ProfileSection>& other) {
  return one ? other && one->lines == other->lines : !other;
}

/// The name of the row, and of its section in the file.
const Text& NameOf(const DeletedEntry& entry) {
  return (entry.view ? *entry.view : entry.full.front()).row.cells[app::kNameCell];
}

bool IsInFile(const DeletedEntry& entry) {
  return std::any_of(entry.sections.begin(), entry.sections.end(),
                     [](const DeletedEntry::Section& section) { return section.before.has_value(); });
}

}  // namespace

DeletedEntries::DeletedEntries(controls::CommandButton& UndoDelete, app::ListPair lists,
                               const StationFile& file, app::Settings& settings, const StationStore& store,
                               UnsavedRows& unsaved, app::Notices& notices)
    : UndoDelete_(UndoDelete),
      lists_(lists),
      file_(file),
      settings_(settings),
      store_(store),
      unsaved_(unsaved),
      notices_(notices) {
  UndoDelete_.SetEnabled(false);
  subscriptions_ += UndoDelete_.Clicked.Subscribe([this] { BringBack(); });
}

DeletedEntry DeletedEntries::EntryOf(const ListView& list, RowId row, const std::vector<Text>& names) const {
  DeletedEntry entry;
  entry.changed = settings_.CatalogueChanged;
  const bool is_full = &list == &lists_.full;
  if (is_full) {
    entry.full.push_back(RowIn(list, row));
    if (!unsaved_.IsSaved(row)) entry.full.back().part = unsaved_.PartOf(row);
  } else {
    entry.view = RowIn(list, row);
    entry.filter = store_.Filter();
    entry.full = RowsThatStandFor(list.Cell(row, app::kNameCell));
  }
  for (const Text& name : names) {
    const bool is_its_own =
        !is_full || unsaved_.IsSaved(row) || unsaved_.IsOwnSection(unsaved_.PartOf(row), name);
    entry.sections.push_back({name, file_.Section(name), std::nullopt, is_its_own});
  }
  return entry;
}

/// The rows that leave the full list with the next load when that section is gone.
std::vector<DeletedEntry::Row> DeletedEntries::RowsThatStandFor(const Text& name) const {
  std::vector<DeletedEntry::Row> rows;
  for (UnsavedRow& row : unsaved_.All()) {
    if (row.part.sections.size() != 1 || !unsaved_.IsOwnSection(row.part, name)) continue;
    const std::size_t place = lists_.full.IndexOf(row.row.id).value_or(lists_.full.Count());
    rows.push_back({std::move(row.row), place, std::move(row.part)});
  }
  const RowId saved = rows.empty() ? unsaved_.RowOf(name) : RowId::kNone;
  if (saved != RowId::kNone) rows.push_back(RowIn(lists_.full, saved));
  return rows;
}

void DeletedEntries::Add(DeletedEntry entry) {
  for (DeletedEntry::Section& section : entry.sections) section.after = file_.Section(section.name);
  entries_.push_back(std::move(entry));
  UndoDelete_.SetEnabled(true);
}

void DeletedEntries::BringBack() {
  while (!entries_.empty() && !HasAPlace(entries_.back())) Drop();
  if (entries_.empty()) return;
  const DeletedEntry entry = entries_.back();
  if (!RestoreSections(entry)) return;
  Drop();

  const RowId in_full = RestoreInFullList(entry);
  const RowId in_view = RestoreInView(entry);
  lists_.Active().EnsureVisible(&lists_.Active() == &lists_.full ? in_full : in_view);
  notices_.Notify(app::sentences::kBroughtBack, {NameOf(entry)});
}

void DeletedEntries::Drop() {
  entries_.pop_back();
  UndoDelete_.SetEnabled(!entries_.empty());
}

/// A row that was imported into a filter view would have disappeared with that view.
bool DeletedEntries::HasAPlace(const DeletedEntry& entry) const {
  return !entry.full.empty() || IsInFile(entry) || IsOfThisView(entry);
}

bool DeletedEntries::IsOfThisView(const DeletedEntry& entry) const {
  return lists_.filtered.Visible() && entry.view && entry.filter == store_.Filter();
}

/// False, after a notice, when a section's name is taken or the file cannot be written; nothing is restored.
bool DeletedEntries::RestoreSections(const DeletedEntry& entry) {
  std::vector<const ProfileSection*> missing;
  for (const DeletedEntry::Section& section : entry.sections) {
    if (!section.before) continue;
    const auto now = file_.Section(section.name);
    if (HaveSameLines(now, section.after)) {
      missing.push_back(&*section.before);
    } else if (section.is_its_own && !HaveSameLines(now, section.before)) {
      notices_.Notify(app::sentences::kNameTaken, {section.name});
      return false;
    }
  }
  if (missing.empty()) return true;
  platform::WriteGroup group = file_.Group();
  for (auto section = missing.rbegin(); section != missing.rend(); ++section) {
    file_.Insert(**section);
  }
  if (group.End()) return true;
  notices_.Notify(app::sentences::kNotWritten, {app::ReadablePath(file_.Path())});
  return false;
}

RowId DeletedEntries::RestoreInFullList(const DeletedEntry& entry) {
  ListView& full = lists_.full;
  for (const DeletedEntry::Section& section : entry.sections) {
    if (section.before && section.is_its_own) unsaved_.StationWritten(section.name, RowId::kNone);
  }
  RowId last = RowId::kNone;
  for (const DeletedEntry::Row& row : entry.full) {
    last = row.row.id;
    // The list was not loaded again since a filter view deleted the entry.
    const bool is_there = full.Contains(last);
    if (!is_there) last = full.InsertRow(row.place, row.part || !entry.view ? row.row : FromFile(entry));
    if (row.part) {
      unsaved_.Mark(last, *row.part);
      if (entry.changed) settings_.CatalogueChanged = true;
    } else {
      unsaved_.Remove(last);
    }
  }
  if (!entry.full.empty() || !IsInFile(entry) || !full.Visible()) return last;
  last = full.AddRow(FromFile(entry));
  unsaved_.Remove(last);
  return last;
}

RowId DeletedEntries::RestoreInView(const DeletedEntry& entry) {
  ListView& view = lists_.filtered;
  if (!view.Visible()) return RowId::kNone;
  if (IsOfThisView(entry)) return view.InsertRow(entry.view->place, entry.view->row);
  return IsInFile(entry) && store_.BelongsToView(NameOf(entry)) ? view.AddRow(FromFile(entry)) : RowId::kNone;
}

ListRow DeletedEntries::FromFile(const DeletedEntry& entry) const { return store_.ReadRow(NameOf(entry)); }

}  // namespace catalogue
