#include "stream/block_rules.h"

#include <cstddef>

#include "app/text/text_helpers.h"

namespace stream {
namespace {

constexpr TextView kLineFeed = u"\n";
constexpr TextView kApostrophe = u"'";

BlockField FieldFrom(TextView piece, BlockField::Kind kind) {
  BlockField field;
  field.kind = kind;
  field.raw = PieceOf(piece, u'=', 1).value_or(TextView());
  field.value = RemoveAll(field.raw, kApostrophe);
  return field;
}

}  // namespace

Text CharactersOfSameCode(const std::string& block) {
  Text text;
  for (const char byte : block) text += static_cast<char16_t>(static_cast<unsigned char>(byte));
  return text;
}

std::vector<BlockField> FieldsOf(TextView block) {
  std::vector<BlockField> fields;
  for (const Text& piece : app::Split(block, u";")) {
    if (ContainsIgnoringCase(piece, u"StreamTitle")) {
      fields.push_back(FieldFrom(piece, BlockField::Kind::kTitle));
    } else if (ContainsIgnoringCase(piece, u"StreamUrl")) {
      fields.push_back(FieldFrom(piece, BlockField::Kind::kWebAddress));
    }
  }
  return fields;
}

BlockVerdict JudgeByLength(TextView block) {
  constexpr TextView kField = u"StreamTitle='";
  const Text text = RemoveAll(block, kLineFeed);
  const std::size_t field = text.find(kField);
  if (field == Text::npos) return {};
  const std::size_t start = field + kField.size();
  const std::size_t end = text.find(kApostrophe, start);
  if (end == Text::npos) return {};
  // The rule compares a position counted from 1 with a length; both sides are kept as they are.
  const std::size_t start_from_one = start + 1;
  const std::size_t length = end - start;
  if (start_from_one >= length) return {};
  return {true, text.substr(start, length)};
}

BlockVerdict JudgeFirstBlock(TextView block) {
  const Text text = RemoveAll(block, kLineFeed);
  if (text.empty()) return {};
  for (const BlockField& field : FieldsOf(text)) {
    if (field.kind == BlockField::Kind::kTitle && !field.raw.empty()) return {true, field.value};
  }
  return {true, {}};
}

BlockVerdict JudgeAllFields(TextView block) {
  const Text text = RemoveAll(block, kLineFeed);
  if (text.empty()) return {};
  BlockVerdict verdict{true, {}};
  for (const BlockField& field : FieldsOf(text)) {
    if (field.kind == BlockField::Kind::kTitle && !field.value.empty()) verdict.title = field.value;
  }
  return verdict;
}

}  // namespace stream
