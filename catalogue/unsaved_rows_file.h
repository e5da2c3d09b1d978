#pragma once
// The file in which unsaved rows outlive the program: its text, written and read. Not when it is written, nor
// where it lies (catalogue/unsaved_rows_keeper.h).

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/unsaved_rows.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// What the program must not forget of its catalogue when it ends unasked.
struct UnsavedCatalogue {
  bool catalogue_changed = false;
  /// In the order of the list. Titles are not kept; an icon of 0 says that the row has one.
  std::vector<UnsavedRow> rows;
};

/// More is neither written nor read, so that a file that is not ours cannot fill the memory.
inline constexpr std::size_t kMostKeptRows = 500'000;
inline constexpr std::size_t kLongestUnsavedRowsFile = 64U << 20U;

/// UTF-8, a line each: the format's name and version; "changed" and 0 or 1; for each row "row", 0 or 1 for
/// its icon, its name, its fields (app/state/station.h) in the order of their cells, the numbers of the cells
/// that the station file holds, and the sections that are its own, with tabs between; at last "end" and a
/// checksum of all before. What would break a line is written with "\" (\\, \t, \r, \n, \uXXXX for half a
/// pair of UTF-16). Rows beyond the limits are left out.
std::string FormatUnsavedRows(const UnsavedCatalogue& catalogue, platform::TextConversion& conversion);

/// Nothing for a file that is damaged, cut off, beyond the limits or of another version.
std::optional<UnsavedCatalogue> ParseUnsavedRows(std::string_view bytes,
                                                 platform::TextConversion& conversion);

/// `body` with the last line that fits it.
std::string WithChecksum(std::string body);

}  // namespace catalogue
