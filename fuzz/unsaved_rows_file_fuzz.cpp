// Feeds arbitrary files of kept rows to their reader, also such with a checksum that fits: what it accepts
// stays bounded and comes back from being written.

#include "catalogue/unsaved_rows_file.h"
#include "fuzz/fuzz_input.h"
#include "platform/icu/text_conversion.h"

namespace {

using catalogue::UnsavedCatalogue;
using fuzz::Require;

void RequireEqual(const UnsavedCatalogue& left, const UnsavedCatalogue& right) {
  Require(left.catalogue_changed == right.catalogue_changed);
  Require(left.rows.size() == right.rows.size());
  for (std::size_t row = 0; row < left.rows.size(); ++row) {
    Require(left.rows[row].row.cells == right.rows[row].row.cells);
    Require(left.rows[row].row.icon == right.rows[row].row.icon);
    Require(left.rows[row].part.cells == right.rows[row].part.cells);
    Require(left.rows[row].part.sections == right.rows[row].part.sections);
  }
}

void Check(std::string_view bytes) {
  platform::icu::IcuTextConversion conversion;
  const auto parsed = catalogue::ParseUnsavedRows(bytes, conversion);
  if (!parsed) return;
  Require(parsed->rows.size() <= bytes.size());
  const auto again =
      catalogue::ParseUnsavedRows(catalogue::FormatUnsavedRows(*parsed, conversion), conversion);
  Require(again.has_value());
  RequireEqual(*parsed, *again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::AsBytes(data, size);
  Check(input);
  Check(catalogue::WithChecksum(std::string(input)));
  Check(catalogue::WithChecksum("Funkhausplayer unsaved rows 1\nchanged 1\n" + std::string(input) + "\n"));
  return 0;
}
