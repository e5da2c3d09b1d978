#pragma once
// Which rows of the full list the station file knows. Not which of them were edited.

#include <unordered_map>

#include "controls/list_view.h"

namespace catalogue {

/// How much of a row the station file holds.
enum class RowOrigin {
  kUnsaved,      ///< nothing: it came from the dialog or an import
  kPartlySaved,  ///< single keys: one field of an unsaved row was taken over
  kSaved,        ///< the whole station
};

/// Rows that nobody marked are unsaved.
class RowOrigins {
 public:
  void MarkSaved(controls::RowId row) { origins_[row] = RowOrigin::kSaved; }

  /// A single key was written for this row.
  void MarkKeyWritten(controls::RowId row) { origins_.try_emplace(row, RowOrigin::kPartlySaved); }

  [[nodiscard]] RowOrigin Of(controls::RowId row) const {
    const auto found = origins_.find(row);
    return found == origins_.end() ? RowOrigin::kUnsaved : found->second;
  }

  void Clear() { origins_.clear(); }

 private:
  std::unordered_map<controls::RowId, RowOrigin> origins_;
};

}  // namespace catalogue
