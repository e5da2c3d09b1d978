#include "app/forms/window_memory.h"

#include <charconv>
#include <span>
#include <system_error>

namespace app {

namespace {

// One line each; "maximized" and the columns' lines may be missing.
constexpr std::string_view kFirstLine = "Funkhausplayer window 1";
constexpr std::string_view kPlace = "place";
constexpr std::string_view kMaximized = "maximized";
constexpr std::string_view kColumn = "column";

/// No desktop reaches further.
constexpr int kFurthest = 100000;
constexpr int kMostColumns = 100;

using Words = std::vector<std::string_view>;

/// What stands before, between and behind the separators.
Words PiecesOf(std::string_view text, char separator) {
  Words pieces;
  for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.push_back(text);
  return pieces;
}

std::optional<int> NumberIn(std::string_view word, int least, int most) {
  int number = 0;
  const char* const end = word.data() + word.size();
  const auto [stopped, error] = std::from_chars(word.data(), end, number);
  if (error != std::errc() || stopped != end || number < least || number > most) return std::nullopt;
  return number;
}

bool ReadPlace(std::span<const std::string_view> words, WindowMemory& memory) {
  if (words.size() != 4 || memory.place) return false;
  const auto left = NumberIn(words[0], -kFurthest, kFurthest);
  const auto top = NumberIn(words[1], -kFurthest, kFurthest);
  const auto width = NumberIn(words[2], 1, kFurthest);
  const auto height = NumberIn(words[3], 1, kFurthest);
  if (!left || !top || !width || !height) return false;
  memory.place = {*left, *top, *width, *height};
  return true;
}

bool ReadColumn(std::span<const std::string_view> words, WindowMemory& memory) {
  if (words.size() != 3 || words[0].empty() || memory.columns.size() >= kMostColumns) return false;
  const auto column = NumberIn(words[1], 0, kMostColumns);
  const auto width = NumberIn(words[2], controls::kNarrowestColumn, controls::kWidestColumn);
  if (!column || !width) return false;
  memory.columns.push_back({std::string(words[0]), static_cast<std::size_t>(*column), *width});
  return true;
}

bool ReadLine(std::string_view line, WindowMemory& memory) {
  const Words words = PiecesOf(line, ' ');
  const std::span more = std::span(words).subspan(1);
  if (words[0] == kPlace) return ReadPlace(more, memory);
  if (words[0] == kColumn) return ReadColumn(more, memory);
  if (line != kMaximized || memory.maximized) return false;
  return memory.maximized = true;
}

std::string Line(std::string_view first, const std::vector<std::string>& more) {
  std::string line(first);
  for (const std::string& word : more) line += " " + word;
  return line + "\n";
}

}  // namespace

std::string FormatWindowMemory(const WindowMemory& memory) {
  std::string bytes = Line(kFirstLine, {});
  if (const auto& place = memory.place) {
    bytes += Line(kPlace, {std::to_string(place->left), std::to_string(place->top),
                           std::to_string(place->width), std::to_string(place->height)});
  }
  if (memory.maximized) bytes += Line(kMaximized, {});
  for (const RememberedColumn& column : memory.columns) {
    bytes += Line(kColumn, {column.list, std::to_string(column.column), std::to_string(column.width)});
  }
  return bytes;
}

std::optional<WindowMemory> ParseWindowMemory(std::string_view bytes) {
  // The end of the last line shows that the file is whole.
  if (bytes.size() > kLongestWindowMemory || !bytes.ends_with('\n')) return std::nullopt;
  bytes.remove_suffix(1);
  const Words lines = PiecesOf(bytes, '\n');
  if (lines[0] != kFirstLine) return std::nullopt;
  WindowMemory memory;
  for (const std::string_view line : std::span(lines).subspan(1)) {
    if (!ReadLine(line, memory)) return std::nullopt;
  }
  return memory;
}

std::vector<RememberedColumn> UsersColumns(const Inventory& inventory) {
  std::vector<RememberedColumn> columns;
  for (const FormControl& entry : inventory) {
    const auto* list = As<controls::ListView>(entry);
    if (list == nullptr) continue;
    for (std::size_t column = 0; column < list->Columns().size(); ++column) {
      const auto width = list->Columns()[column].users_width;
      if (width) columns.push_back({entry.name, column, *width});
    }
  }
  return columns;
}

void RestoreColumns(const Inventory& inventory, const std::vector<RememberedColumn>& columns) {
  for (const FormControl& entry : inventory) {
    auto* list = As<controls::ListView>(entry);
    if (list == nullptr) continue;
    for (const RememberedColumn& column : columns) {
      if (column.list == entry.name) list->DragColumn(column.column, column.width);
    }
  }
}

}  // namespace app
