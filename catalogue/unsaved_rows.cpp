#include "catalogue/unsaved_rows.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "catalogue/stored_name.h"

namespace catalogue {

using controls::ListRow;
using controls::RowId;
using platform::Text;
using platform::TextView;

namespace {

/// The part of a row that is no longer saved: it owned its section with every cell in it.
PartInFile WholeStation(const Text& name) {
  PartInFile part;
  for (const app::StationField& field : app::kStationFields) part.cells.insert(field.cell);
  part.sections.push_back(name);
  return part;
}

}  // namespace

UnsavedRows::UnsavedRows(controls::ListView& full, platform::TextConversion& conversion)
    : full_(full), conversion_(conversion) {
  subscriptions_ += full_.RowsAdded.Subscribe([this](std::size_t first, std::size_t count) {
    for (std::size_t index = first; index < first + count; ++index) parts_.try_emplace(full_.RowAt(index));
  });
  subscriptions_ += full_.RowsReset.Subscribe([this] {
    if (full_.Count() > 0) return;
    parts_.clear();
    overwritten_.clear();
  });
}

PartInFile UnsavedRows::PartOf(RowId row) const {
  const auto found = parts_.find(row);
  return found == parts_.end() ? PartInFile() : found->second;
}

RowId UnsavedRows::RowOf(const Text& name) const {
  const Text stored = Stored(name);
  for (const ListRow& row : full_.Rows()) {
    if (IsSaved(row.id) ? IsNamed(row.id, stored) : Owns(PartOf(row.id), stored)) return row.id;
  }
  return RowId::kNone;
}

RowId UnsavedRows::RowOfAnyList(const Text& name) {
  const RowId listed = RowOf(name);
  const auto found = std::find_if(waiting_.begin(), waiting_.end(), [&](const UnsavedRow& unsaved) {
    return Owns(unsaved.part, Stored(name));
  });
  if (listed != RowId::kNone || found == waiting_.end()) return listed;
  PutBack({*found});
  waiting_.erase(found);
  return full_.RowAt(full_.Count() - 1);
}

std::vector<Text> UnsavedRows::LeftSections(RowId row) const {
  std::vector<Text> sections = PartOf(row).sections;
  std::erase_if(sections, [&](const Text& section) { return IsNamed(row, Stored(section)); });
  return sections;
}

std::vector<UnsavedRow> UnsavedRows::All() const {
  std::vector<UnsavedRow> rows;
  for (const ListRow& row : full_.Rows()) {
    const auto found = parts_.find(row.id);
    if (found != parts_.end()) rows.push_back({row, found->second});
  }
  rows.insert(rows.end(), waiting_.begin(), waiting_.end());
  return rows;
}

void UnsavedRows::PutBack(std::vector<UnsavedRow> rows) {
  const std::size_t first = full_.Count();
  std::vector<ListRow> list_rows(rows.size());
  std::transform(rows.begin(), rows.end(), list_rows.begin(),
                 [](UnsavedRow& unsaved) { return std::move(unsaved.row); });
  full_.AddRows(std::move(list_rows));
  for (std::size_t index = 0; index < rows.size(); ++index) {
    Mark(full_.RowAt(first + index), std::move(rows[index].part));
  }
}

void UnsavedRows::Mark(RowId row, PartInFile part) {
  parts_[row] = std::move(part);
  overwritten_.erase(row);
}

void UnsavedRows::Remove(RowId row) {
  parts_.erase(row);
  overwritten_.erase(row);
}

PartInFile& UnsavedRows::MakeUnsaved(RowId row, PartInFile part) {
  if (!Contains(row)) Mark(row, overwritten_.contains(row) ? PartInFile() : std::move(part));
  return parts_[row];
}

/// Any saved row of that name.
void UnsavedRows::MarkOverwritten(const Text& stored) {
  for (const ListRow& row : full_.Rows()) {
    if (!Contains(row.id) && IsNamed(row.id, stored)) overwritten_.insert(row.id);
  }
}

void UnsavedRows::Clear() {
  parts_.clear();
  overwritten_.clear();
  waiting_.clear();
}

void UnsavedRows::ListIsEmptied() {
  for (const ListRow& row : full_.Rows()) StationNotDeleted(row.id);
}

void UnsavedRows::CellWritten(RowId row, app::StationCell cell, SectionWas was) {
  const auto found = parts_.find(row);
  if (found == parts_.end()) return;
  PartInFile& part = found->second;
  part.cells.insert(cell);
  const Text& name = full_.Cell(row, app::kNameCell);
  if (was == SectionWas::kMissing && !Owns(part, Stored(name))) part.sections.push_back(name);
  Changed.Raise();
}

void UnsavedRows::CellWrittenInView(const Text& name, app::StationCell cell, const Text& value) {
  const Text stored = Stored(name);
  for (auto& [row, part] : parts_) {
    if (!Owns(part, stored)) continue;
    full_.SetCell(row, cell, value);
    if (IsNamed(row, stored)) part.cells.insert(cell);
  }
  for (UnsavedRow& unsaved : waiting_) {
    if (Owns(unsaved.part, stored)) unsaved.row.cells.Set(cell, value);
  }
  Changed.Raise();
}

void UnsavedRows::CellNotWritten(RowId row, app::StationCell cell) {
  MakeUnsaved(row, WholeStation(full_.Cell(row, app::kNameCell))).cells.erase(cell);
  Changed.Raise();
}

void UnsavedRows::StationNotWritten(RowId row, const Text& old_name) {
  MakeUnsaved(row, WholeStation(old_name)).cells.clear();
  Changed.Raise();
}

void UnsavedRows::StationWritten(const Text& name, RowId row) {
  const Text stored = Stored(name);
  MarkOverwritten(stored);
  for (auto& [other, part] : parts_) {
    if (other == row || (part.cells.empty() && part.sections.empty())) continue;
    Disown(part, stored);
    // What was written singly is overwritten.
    if (IsNamed(other, stored)) part.cells.clear();
  }
  std::erase_if(waiting_, [&](UnsavedRow& unsaved) {
    return Disown(unsaved.part, stored) && unsaved.part.sections.empty();
  });
  if (row != RowId::kNone && stored.empty()) Mark(row, {{}, {name}});
  if (row != RowId::kNone && !stored.empty()) Remove(row);
  Changed.Raise();
}

void UnsavedRows::ListWritten() {
  parts_.clear();
  overwritten_.clear();
  std::set<Text> written;
  for (auto row = full_.Rows().rbegin(); row != full_.Rows().rend(); ++row) {
    const Text& name = row->cells[app::kNameCell];
    const Text stored = Stored(name);
    const bool is_last = written.insert(stored).second;
    if (stored.empty()) {
      Mark(row->id, {{}, {name}});
    } else if (!is_last) {
      overwritten_.insert(row->id);
    }
  }
  std::erase_if(waiting_, [&](UnsavedRow& unsaved) {
    std::erase_if(unsaved.part.sections,
                  [&](const Text& section) { return written.contains(Stored(section)); });
    return unsaved.part.sections.empty();
  });
  Changed.Raise();
}

bool UnsavedRows::StationDeleted(const Text& name, RowId row) {
  const Text stored = Stored(name);
  bool any = false;
  for (const ListRow& other : full_.Rows()) {
    if (other.id == row || Contains(other.id) || !IsNamed(other.id, stored)) continue;
    MakeUnsaved(other.id, {{}, {other.cells[app::kNameCell]}});
    any = true;
  }
  if (any) Changed.Raise();
  return any;
}

void UnsavedRows::StationNotDeleted(RowId row) {
  const auto index = full_.IndexOf(row);
  const PartInFile part = PartOf(row);
  if (index && !part.sections.empty()) waiting_.push_back({full_.Rows()[*index], part});
}

void UnsavedRows::StationDeletedInView(const Text& name) {
  const Text stored = Stored(name);
  for (auto entry = parts_.begin(); entry != parts_.end();) {
    const bool dropped = Disown(entry->second, stored) && entry->second.sections.empty();
    entry = dropped ? parts_.erase(entry) : std::next(entry);
  }
  std::erase_if(waiting_, [&](UnsavedRow& unsaved) {
    return Disown(unsaved.part, stored) && unsaved.part.sections.empty();
  });
  Changed.Raise();
}

bool UnsavedRows::AreOneSection(const Text& name, const Text& other) const {
  return Stored(name) == Stored(other);
}

Text UnsavedRows::Stored(TextView name) const { return StoredName(conversion_, name); }

bool UnsavedRows::IsNamed(RowId row, const Text& stored) const {
  return Stored(full_.Cell(row, app::kNameCell)) == stored;
}

bool UnsavedRows::Owns(const PartInFile& part, const Text& stored) const {
  return std::any_of(part.sections.begin(), part.sections.end(),
                     [&](const Text& section) { return Stored(section) == stored; });
}

bool UnsavedRows::Disown(PartInFile& part, const Text& stored) const {
  return std::erase_if(part.sections, [&](const Text& section) { return Stored(section) == stored; }) > 0;
}

}  // namespace catalogue
