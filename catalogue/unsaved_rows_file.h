#pragma once
// The file in which unsaved rows outlive the program: formatting and parsing its text. Not when it is
// written, nor where it is (catalogue/unsaved_rows_keeper.h).

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/unsaved_rows.h"
#include "ports/text_conversion.h"

namespace catalogue {

/// What the program must remember about its catalogue when it ends without asking.
struct UnsavedCatalogue {
  bool catalogue_changed = false;
  /// In the order of the list. Titles are not kept; an icon of 0 means that the row has one.
  std::vector<UnsavedRow> rows;
};

/// More are neither written nor read, so that a foreign file cannot fill the memory.
inline constexpr std::size_t kMostKeptRows = 500'000;
inline constexpr std::size_t kLongestUnsavedRowsFile = 64U << 20U;

/// UTF-8, a line each: the format's name and version; "changed" and 0 or 1; for each row "row", 0 or 1 for
/// its icon, its name, its fields (app/state/station.h) in the order of their cells, the numbers of the cells
/// that are in the station file, and the sections that it owns, separated by tabs; finally "end" and a
/// checksum of everything before. What would break a line is escaped with "\" (\\, \t, \r, \n, \uXXXX for
/// half a pair of UTF-16). Rows beyond the limits are left out.
std::string FormatUnsavedRows(const UnsavedCatalogue& catalogue, platform::TextConversion& conversion);

/// Nothing for a file that is damaged, cut off, beyond the limits or of another version.
std::optional<UnsavedCatalogue> ParseUnsavedRows(std::string_view bytes,
                                                 platform::TextConversion& conversion);

/// `body` with the last line that belongs to it.
std::string WithChecksum(std::string body);

}  // namespace catalogue
