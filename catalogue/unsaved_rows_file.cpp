#include "catalogue/unsaved_rows_file.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "app/state/station.h"
#include "app/text/numbers.h"

namespace catalogue {

using platform::CodePage;
using platform::Text;
using platform::TextView;

namespace {

constexpr std::string_view kEnd = "end ";
constexpr std::size_t kChecksumDigits = 16;
constexpr TextView kFormatName = u"Funkhausplayer unsaved rows ";
/// Each further field of a station makes a new version, because the lines change. The first had four.
constexpr std::int64_t kVersion = app::kStationFields.size() - 3;
constexpr TextView kUnchangedLine = u"changed 0";
constexpr TextView kChangedLine = u"changed 1";
constexpr TextView kRowWord = u"row";
constexpr TextView kHexDigits = u"0123456789abcdef";
/// "row", the icon, the name, the fields of the station and the cells in the station file.
constexpr std::size_t kLeastFields = app::kStationFields.size() + 4;
static_assert(app::kStationCells <= 10, "a cell's number is written as one digit");
constexpr std::size_t kSurrogateDigits = 4;

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// Public reference: the FNV-1a hash function.
std::string Checksum(std::string_view bytes) {
  std::uint64_t number = 0xcbf29ce484222325U;
  for (const char byte : bytes) number = (number ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  std::string digits(kChecksumDigits, '0');
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, number >>= 4U) {
    *digit = static_cast<char>(kHexDigits[number & 15U]);
  }
  return digits;
}

void AppendHalfPair(Text& line, char16_t unit) {
  line += u"\\u";
  for (std::size_t digit = kSurrogateDigits; digit-- > 0;) line += kHexDigits[(unit >> (4 * digit)) & 15U];
}

void AppendEscaped(Text& line, TextView text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    const bool pair = IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
    if (pair) {
      line += text.substr(at++, 2);
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      AppendHalfPair(line, unit);
    } else if (unit == u'\\') {
      line += u"\\\\";
    } else if (unit == u'\t') {
      line += u"\\t";
    } else if (unit == u'\r') {
      line += u"\\r";
    } else if (unit == u'\n') {
      line += u"\\n";
    } else {
      line += unit;
    }
  }
}

std::optional<char16_t> HalfPair(TextView digits) {
  unsigned unit = 0;  // Too few digits make no half of a pair either.
  for (const char16_t digit : digits.substr(0, kSurrogateDigits)) {
    const auto value = kHexDigits.find(digit);
    if (value == TextView::npos) return std::nullopt;
    unit = unit * 16 + static_cast<unsigned>(value);
  }
  const auto half = static_cast<char16_t>(unit);
  if (!IsHighSurrogate(half) && !IsLowSurrogate(half)) return std::nullopt;
  return half;
}

std::optional<Text> Unescaped(TextView field) {
  Text text;
  while (!field.empty()) {
    const auto plain = std::min(field.find(u'\\'), field.size());
    text += field.substr(0, plain);
    field.remove_prefix(plain);
    if (field.empty()) break;
    const char16_t letter = field.size() > 1 ? field[1] : u'\0';
    field.remove_prefix(std::min<std::size_t>(field.size(), 2));
    constexpr std::pair<char16_t, char16_t> kLetters[] = {
        {u'\\', u'\\'}, {u't', u'\t'}, {u'r', u'\r'}, {u'n', u'\n'}};
    const auto* const known = std::find_if(std::begin(kLetters), std::end(kLetters),
                                           [letter](const auto& entry) { return entry.first == letter; });
    if (known != std::end(kLetters)) {
      text += known->second;
      continue;
    }
    const auto half = letter == u'u' ? HalfPair(field) : std::nullopt;
    if (!half) return std::nullopt;
    text += *half;
    field.remove_prefix(kSurrogateDigits);
  }
  return text;
}

/// The text before the next `end`, which is removed with it; everything when there is none.
TextView Next(TextView& rest, char16_t end) {
  const TextView piece = rest.substr(0, rest.find(end));
  rest.remove_prefix(std::min(rest.size(), piece.size() + 1));
  return piece;
}

Text VersionLine() { return Text(kFormatName) + app::FormatNumber(kVersion); }

Text RowLine(const UnsavedRow& unsaved) {
  Text line(kRowWord);
  line += unsaved.row.icon < 0 ? u"\t0" : u"\t1";
  line += u'\t';
  AppendEscaped(line, unsaved.row.cells[app::kNameCell]);
  for (const app::StationField& field : app::kStationFieldsByCell) {
    line += u'\t';
    AppendEscaped(line, unsaved.row.cells[field.cell]);
  }
  line += u'\t';
  for (const app::StationCell cell : unsaved.part.cells) line += static_cast<char16_t>(u'0' + cell);
  for (const Text& section : unsaved.part.sections) {
    line += u'\t';
    AppendEscaped(line, section);
  }
  line += u'\n';
  return line;
}

std::optional<app::StationCell> CellOf(char16_t digit) {
  for (const app::StationField& field : app::kStationFields) {
    if (digit == u'0' + field.cell) return field.cell;
  }
  return std::nullopt;
}

std::optional<std::set<app::StationCell>> CellsOf(TextView digits) {
  std::set<app::StationCell> cells;
  for (const char16_t digit : digits) {
    const auto cell = CellOf(digit);
    if (!cell) return std::nullopt;
    cells.insert(*cell);
  }
  return cells;
}

/// The fields after the word "row"; `sections_left` is how many more sections the file may name.
std::optional<UnsavedRow> RowOf(TextView line, std::size_t& sections_left) {
  const auto tabs = static_cast<std::size_t>(std::count(line.begin(), line.end(), u'\t'));
  if (tabs + 1 < kLeastFields || tabs + 1 - kLeastFields > sections_left) return std::nullopt;
  if (Next(line, u'\t') != kRowWord) return std::nullopt;
  UnsavedRow unsaved;
  const TextView icon = Next(line, u'\t');
  if (icon != u"0" && icon != u"1") return std::nullopt;
  unsaved.row.icon = icon == u"1" ? 0 : -1;
  auto name = Unescaped(Next(line, u'\t'));
  if (!name) return std::nullopt;
  unsaved.row.cells.Set(app::kNameCell, *std::move(name));
  for (const app::StationField& field : app::kStationFieldsByCell) {
    auto text = Unescaped(Next(line, u'\t'));
    if (!text) return std::nullopt;
    unsaved.row.cells.Set(field.cell, *std::move(text));
  }
  auto cells = CellsOf(Next(line, u'\t'));
  if (!cells) return std::nullopt;
  unsaved.part.cells = *std::move(cells);
  for (std::size_t field = kLeastFields; field < tabs + 1; ++field, --sections_left) {
    auto section = Unescaped(Next(line, u'\t'));
    if (!section) return std::nullopt;
    unsaved.part.sections.push_back(*std::move(section));
  }
  return unsaved;
}

/// The lines before the last one, when its checksum matches them.
std::optional<std::string_view> BodyOf(std::string_view bytes) {
  const std::size_t last_line = kEnd.size() + kChecksumDigits + 1;
  if (bytes.size() > kLongestUnsavedRowsFile || bytes.size() < last_line) return std::nullopt;
  const std::string_view body = bytes.substr(0, bytes.size() - last_line);
  const std::string_view end = bytes.substr(body.size());
  const bool fits = end.starts_with(kEnd) && end.ends_with('\n') &&
                    end.substr(kEnd.size(), kChecksumDigits) == Checksum(body);
  return fits && body.ends_with('\n') ? std::optional(body) : std::nullopt;
}

}  // namespace

std::string WithChecksum(std::string body) {
  const std::string checksum = Checksum(body);
  return std::move(body) + std::string(kEnd) + checksum + "\n";
}

std::string FormatUnsavedRows(const UnsavedCatalogue& catalogue, platform::TextConversion& conversion) {
  constexpr std::size_t kLastLine = 32;
  const Text head =
      VersionLine() + u'\n' + Text(catalogue.catalogue_changed ? kChangedLine : kUnchangedLine) + u'\n';
  std::string body = conversion.WideCharToMultiByte(CodePage::kUtf8, head);
  std::size_t rows = 0;
  std::size_t sections = 0;
  for (const UnsavedRow& unsaved : catalogue.rows) {
    sections += unsaved.part.sections.size();
    if (++rows > kMostKeptRows || sections > kMostKeptRows) break;
    const std::string line = conversion.WideCharToMultiByte(CodePage::kUtf8, RowLine(unsaved));
    if (body.size() + line.size() > kLongestUnsavedRowsFile - kLastLine) break;
    body += line;
  }
  return WithChecksum(std::move(body));
}

std::optional<UnsavedCatalogue> ParseUnsavedRows(std::string_view bytes,
                                                 platform::TextConversion& conversion) {
  const auto body = BodyOf(bytes);
  if (!body) return std::nullopt;
  const Text text = conversion.MultiByteToWideChar(CodePage::kUtf8, *body);
  TextView rest = text;
  if (Next(rest, u'\n') != VersionLine()) return std::nullopt;
  const TextView changed = Next(rest, u'\n');
  if (changed != kChangedLine && changed != kUnchangedLine) return std::nullopt;
  UnsavedCatalogue catalogue{changed == kChangedLine, {}};
  std::size_t sections_left = kMostKeptRows;
  while (!rest.empty()) {
    auto row = RowOf(Next(rest, u'\n'), sections_left);
    if (!row || catalogue.rows.size() == kMostKeptRows) return std::nullopt;
    catalogue.rows.push_back(*std::move(row));
  }
  return catalogue;
}

}  // namespace catalogue
