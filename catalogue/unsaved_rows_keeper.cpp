#include "catalogue/unsaved_rows_keeper.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "app/state/station.h"
#include "app/state/station_row.h"

namespace catalogue {

using platform::Text;

UnsavedRowsKeeper::UnsavedRowsKeeper(Ports ports, const StationFile& file, UnsavedRows& unsaved,
                                     controls::ListView& full, const StationIcons& icons,
                                     app::Settings& settings, controls::Timer& timer)
    : ports_(ports),
      file_(file),
      unsaved_(unsaved),
      full_(full),
      icons_(icons),
      settings_(settings),
      timer_(timer) {
  // Writing the file touches nothing that a wait for a server relies on, and rows are entered before it.
  timer_.SetTicksWhilePainting(true);
  subscription_ = timer_.Ticked.Subscribe([this] { Write(); });
}

UnsavedRowsKeeper::Restored UnsavedRowsKeeper::Restore() {
  path_ = ports_.environment.StateFile(settings_.SettingsFolder + settings_.StationFileName, u".unsaved");
  Restored restored;
  if (auto kept = Read(restored.unreadable)) {
    std::erase_if(kept->rows, [this](const UnsavedRow& row) { return IsSaved(row); });
    restored.rows = kept->rows.size();
    settings_.CatalogueChanged = kept->catalogue_changed && restored.rows > 0;
    for (UnsavedRow& unsaved : kept->rows) {
      if (unsaved.row.icon >= 0) unsaved.row.icon = icons_.IconOf(unsaved.row.cells[app::kNameCell]);
    }
    unsaved_.PutBack(std::move(kept->rows));
  }
  Watch();
  return restored;
}

/// A program that was killed as soon as it had saved could no longer remove the rows from its own file.
bool UnsavedRowsKeeper::IsSaved(const UnsavedRow& unsaved) const {
  const Text& name = unsaved.row.cells[app::kNameCell];
  const bool can_be_listed = !unsaved_.AreOneSection(name, u"");
  const bool left_another = std::ranges::any_of(unsaved.part.sections, [&](const Text& section) {
    return !unsaved_.AreOneSection(section, name) && file_.Contains(section);
  });
  return can_be_listed && !left_another && file_.Holds(app::StationOf(unsaved.row.cells));
}

std::optional<UnsavedCatalogue> UnsavedRowsKeeper::Read(bool& unreadable) {
  const auto bytes = ports_.files.ReadWholeFile(path_, kLongestUnsavedRowsFile);
  if (!bytes && !ports_.files.PathFileExistsW(path_)) return std::nullopt;
  if (bytes) {
    if (auto kept = ParseUnsavedRows(*bytes, ports_.conversion)) {
      in_file_ = MarkOf(*bytes);
      return kept;
    }
  }
  unreadable = true;
  ports_.files.MoveFileExW(path_, path_ + u".damaged");
  return std::nullopt;
}

void UnsavedRowsKeeper::Watch() {
  watching_ += full_.RowsAdded.Subscribe([this](std::size_t, std::size_t) { Note(); });
  watching_ += full_.RowRemoved.Subscribe([this](std::size_t) { Note(); });
  watching_ += full_.RowsReset.Subscribe([this] { Note(); });
  watching_ += full_.RowChanged.Subscribe([this](std::size_t index) {
    if (unsaved_.Contains(full_.RowAt(index))) Note();
  });
  // The station file has just changed; the two must not contradict each other for longer than necessary. The
  // rest of the same step, above all the flag, may follow.
  watching_ += unsaved_.Changed.Subscribe([this] {
    Write();
    Note();
  });
  watches_ = true;
}

void UnsavedRowsKeeper::Note() {
  if (watches_) WriteAfter(kDelay);
}

void UnsavedRowsKeeper::WriteAfter(int delay) {
  timer_.SetInterval(delay);
  timer_.SetEnabled(true);
}

void UnsavedRowsKeeper::Write() {
  timer_.SetEnabled(false);
  if (!BringFileUpToDate()) WriteAfter(kRetryDelay);
}

bool UnsavedRowsKeeper::BringFileUpToDate() {
  const UnsavedCatalogue catalogue{settings_.CatalogueChanged, unsaved_.All()};
  if (catalogue.rows.empty()) return RemoveFile();
  const std::string bytes = FormatUnsavedRows(catalogue, ports_.conversion);
  const Mark mark = MarkOf(bytes);
  if (in_file_ == mark) return true;
  if (!ports_.files.WriteWholeFile(path_, bytes)) return false;
  in_file_ = mark;
  return true;
}

bool UnsavedRowsKeeper::RemoveFile() {
  if (!in_file_) return true;
  const bool is_gone = ports_.files.DeleteFileW(path_) || !ports_.files.PathFileExistsW(path_);
  if (is_gone) in_file_.reset();
  return !in_file_;
}

void UnsavedRowsKeeper::Finish() {
  if (watches_) Write();
  Stop();
}

void UnsavedRowsKeeper::Discard() {
  if (watches_) RemoveFile();
  Stop();
}

void UnsavedRowsKeeper::Stop() {
  timer_.SetEnabled(false);
  watching_.Clear();
  watches_ = false;
}

UnsavedRowsKeeper::Mark UnsavedRowsKeeper::MarkOf(const std::string& bytes) {
  return {bytes.size(), std::hash<std::string_view>()(bytes)};
}

}  // namespace catalogue
