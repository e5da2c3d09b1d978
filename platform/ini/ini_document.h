#pragma once
// One INI file in memory: bytes in, values read and changed, bytes out; what is not changed keeps its bytes.
// Not for the disk: loading, locking and replacing are platform/ini/ini_file.h.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/ini/ini_codec.h"
#include "platform/ini/ini_line.h"
#include "ports/private_profile.h"
#include "ports/text.h"
#include "ports/text_conversion.h"

namespace platform::ini {

/// A larger file is not read, and no change may make a file larger than this.
inline constexpr std::size_t kLargestIniFile = std::size_t{64} * 1024 * 1024;

/// What a change did to a document.
enum class IniChange {
  kNone,    ///< the document was already like that
  kMade,    ///< its bytes changed
  kRefused  ///< a line that says this cannot be written; nothing changed
};

/// Names and values end at a NUL, lose CR and LF, and names also the blanks at their ends. Of equal names the
/// first counts. The headers are found at once, the keys of a section when it is first used.
///
///     buffer_    the bytes as they came  |  lines written since
///                   ^            ^                  ^
///                   | Piece      | Piece            | Piece: begin and size
///                   |            |                  |
///     sections_  [0] no header  [1] "[a]" ------> [3] "[A]"         in file order; equal names are linked
///                   |            |   next_equal                     by next_equal, the first one counts
///                   |            |
///                   |            +-- body: not made yet (body_size bytes behind the header), or
///                   |                items  kOther "; x"  kKey "k=1"  kBlank  kGone  kKey "K=2"
///                   |                keys   "k" -> first and last of its chain of items
///                   +-- body: what stands before the first header
///     names_     "a" -> first and last of its chain of sections
///
/// A change appends its line to the buffer and lets the piece point there; Bytes() puts the pieces together
/// again in order. When most of the buffer is waste it is rebuilt.
class IniDocument {
 public:
  /// No bytes make an empty document, which is code page 1252 with CR LF. At most kLargestIniFile bytes.
  /// The conversion must outlive the document.
  IniDocument(TextConversion& conversion, std::string bytes);

  /// The value without the quotes around it; nothing when the section or the key is missing.
  std::optional<Text> Value(TextView section, TextView key);

  /// Replaces the value, or adds the key after the section's last line that is not blank, or adds the section
  /// at the end. Refused for a key that could not be read back from the line (with "=" in it, say), and when
  /// the file could become too large.
  IniChange SetValue(TextView section, TextView key, TextView value);

  /// Deletes the first such key; its section's header stays.
  IniChange DeleteKey(TextView section, TextView key);

  /// Deletes the first such section: its header and every line up to the next header.
  IniChange DeleteSection(TextView section);

  /// The first such section with all its lines.
  [[nodiscard]] std::optional<ProfileSection> CopySection(TextView section);

  /// Puts a copied section before the first one named `next`, or else at the end. Refused when its lines do
  /// not begin with a header, and when the file could become too large.
  IniChange InsertSection(const ProfileSection& section);

  /// All names in file order, equal and empty ones included.
  [[nodiscard]] std::vector<Text> SectionNames() const;

  [[nodiscard]] std::string Bytes() const;

 private:
  /// A run of bytes in the buffer.
  struct Piece {
    std::uint32_t begin = 0;
    std::uint32_t size = 0;
  };
  enum class ItemKind : std::uint8_t { kKey, kOther, kBlank, kGone };
  /// One key's line, or neighbouring lines without keys: all blank, or ending with one that is not.
  struct Item {
    Piece piece;
    std::uint32_t next_equal = kNoIndex;
    ItemKind kind = ItemKind::kOther;
  };
  /// The items (or sections) of one name, in file order, linked by next_equal.
  struct Chain {
    std::uint32_t first = kNoIndex;
    std::uint32_t last = kNoIndex;
  };
  using NameIndex = std::unordered_map<Text, Chain>;
  struct Body {
    std::vector<Item> items;
    NameIndex keys;
  };
  /// The first section has no header and no name: it is what comes before the first header.
  struct Section {
    Piece header;
    std::uint32_t body_size = 0;  ///< bytes after the header, while `body` is not made
    std::uint32_t next_equal = kNoIndex;
    std::unique_ptr<Body> body;
  };
  static constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;

  /// Enters element `at` of `elements` under `name`.
  template <typename Element>
  static void Link(NameIndex& index, Text name, std::vector<Element>& elements, std::size_t at) {
    const auto number = static_cast<std::uint32_t>(at);
    const auto [place, is_new] = index.try_emplace(std::move(name), Chain{number, number});
    if (is_new) return;
    elements[place->second.last].next_equal = number;
    place->second.last = number;
  }
  /// Takes the first element out of the index; the next equal one takes its place.
  template <typename Element>
  static void UnlinkFirst(NameIndex& index, const Text& name, const std::vector<Element>& elements) {
    const auto place = index.find(name);
    place->second.first = elements[place->second.first].next_equal;
    if (place->second.first == kNoIndex) index.erase(place);
  }

  void FindSections();
  Body& LoadBody(Section& section);
  void AddLine(Body& body, Piece line, const IniLine& read) const;
  [[nodiscard]] Section* FindSection(const Text& name);
  [[nodiscard]] Item* FindKey(Section& section, Text key);
  [[nodiscard]] static Text OneLine(TextView text);
  [[nodiscard]] static bool IsPlain(TextView text);
  [[nodiscard]] Text Name(TextView asked) const;

  IniChange ReplaceValue(Item& item, const Text& value);
  void AddKey(Section& section, const Text& key, const Text& line);
  Section& AddSection(const Text& name);
  Section& LastSection();
  [[nodiscard]] std::string BytesOf(const Section& section) const;
  void EndLastLine(Section& section);
  void EndLine(Piece& piece);
  std::optional<Item> TakeBlankTail(Body& body);
  [[nodiscard]] bool HasRoomFor(std::size_t units) const;

  [[nodiscard]] std::string_view View(Piece piece) const;
  [[nodiscard]] IniLine Read(Piece line, Text& content) const;
  Piece Store(std::string_view bytes);
  void Replace(Piece& piece, std::string_view bytes);
  void CompactIfWasteful();
  void MakeAnew(std::string bytes);

  TextConversion* conversion_;
  IniCodec codec_;
  std::string buffer_;  ///< the bytes as they came, then every line that was written since
  std::string line_end_;
  std::vector<Section> sections_;
  NameIndex names_;
  Text last_name_;  ///< by which a section was found last: its keys are often read in turn
  std::uint32_t last_section_ = kNoIndex;  ///< that section
  std::size_t size_ = 0;                   ///< of the document, in bytes
};

}  // namespace platform::ini
