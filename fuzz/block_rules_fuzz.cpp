// Feeds arbitrary title blocks to the evaluation of the three readers and of the recorder.

#include "fuzz/fuzz_input.h"
#include "stream/block_rules.h"

namespace {

using fuzz::Require;
using stream::BlockVerdict;
using stream::Text;

void CheckPiece(const Text& value) { Require(value.find_first_of(u"\n;='") == Text::npos); }

void CheckByLength(const Text& block) {
  const BlockVerdict verdict = stream::JudgeByLength(block);
  constexpr std::size_t kEarliestStart = 14;
  Require(verdict.ends_reading ? verdict.title.size() > kEarliestStart : verdict.title.empty());
  Require(verdict.title.find_first_of(u"\n'") == Text::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Text block = stream::CharactersOfSameCode(std::string(fuzz::AsBytes(data, size)));
  const bool is_empty = block.find_first_not_of(u'\n') == Text::npos;
  CheckByLength(block);
  const BlockVerdict first = stream::JudgeFirstBlock(block);
  const BlockVerdict all = stream::JudgeAllFields(block);
  Require(first.ends_reading == !is_empty && all.ends_reading == !is_empty);
  CheckPiece(first.title);
  CheckPiece(all.title);
  const Text recorded = stream::RemoveAll(block, u"\n");
  for (const stream::BlockField& field : stream::FieldsOf(recorded)) CheckPiece(field.value);
  return 0;
}
